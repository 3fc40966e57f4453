#include "kelvaris/system/io/bundle/example_part.h"

#include "host/core/bundle/bundle_package.h"
#include "host/core/opc/package_access.h"
#include "host/core/text/memory_guard.h"

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::OpcPackage;
using OpcPackaging::detail::PackageAccess;
using OpcPackaging::detail::PackageReference;

namespace {

OpcPackaging::OpcPackageRef exampleInside(const OpcPackaging::OpcPackagePart& part)
{
    return PackageAccess::reference(
        std::make_shared<PackageReference>(PackageAccess::data(part), PackageAccess::record(part)));
}

} // namespace

ExamplePart::ExamplePart(const OpcPackaging::OpcPackagePart& part) : AbstractBundlePart{part, exampleInside(part)} {}

ExamplePart::ExamplePart(const ExamplePart&) = default;
ExamplePart::ExamplePart(ExamplePart&&) noexcept = default;
ExamplePart& ExamplePart::operator=(const ExamplePart&) = default;
ExamplePart& ExamplePart::operator=(ExamplePart&&) noexcept = default;
ExamplePart::~ExamplePart() = default;

Expected<ExampleBundle, ErrorCode2> ExamplePart::bundle() const
{
    return Text::withinMemory([this]() -> Expected<ExampleBundle, ErrorCode2> {
        auto package = PackageAccess::data(part())->openNested(*PackageAccess::record(part()));
        if (!package)
            return package.error();
        if (auto required = detail::requireKind(**package, detail::BundleKind::example); !required)
            return required.error();
        return ExampleBundle{OpcPackage{std::move(*package)}};
    });
}

} // namespace Kelvaris::System::IO::Bundle
