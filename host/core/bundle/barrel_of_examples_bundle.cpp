#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"

#include "host/core/bundle/bundle_layout.h"
#include "host/core/bundle/bundle_package.h"
#include "host/core/errors/error_words.h"
#include "host/core/errors/make_error.h"
#include "host/core/errors/rollback.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/package_access.h"
#include "host/core/paths/disk/native_path.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"

#include <algorithm>

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::OpcPackage;
using OpcPackaging::OpcPackageCompressionType;
using OpcPackaging::OpcPackagePartUri;
using OpcPackaging::detail::PackageAccess;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::Result;

namespace {

/// Looks at the bytes that were taken in, and not at the file once more: what is checked is what is stored.
Result<> requireExample(PackageData& barrel, const OpcPackaging::Zip::Payload& bytes, const FilePath2& file)
{
    auto example =
        bytes.openNested(Disk::displayedPath(file)).andThen([&](const OpcPackaging::Zip::ByteSourcePtr& source) {
            return PackageData::openSource(source, barrel.depth() + 1, nullptr, barrel.nestedReadings());
        });
    const Result<> required =
        example ? detail::requireKind(**example, detail::BundleKind::example) : Result<>{example.error()};
    if (required)
        return {};
    return Errors::makeError(BundleError::notAnExample, {}, Errors::reasonFrom(required.error()));
}

} // namespace

BarrelOfExamplesBundle::BarrelOfExamplesBundle(OpcPackage package) noexcept : AbstractBundle{std::move(package)} {}

BarrelOfExamplesBundle::BarrelOfExamplesBundle(BarrelOfExamplesBundle&&) noexcept = default;
BarrelOfExamplesBundle& BarrelOfExamplesBundle::operator=(BarrelOfExamplesBundle&&) noexcept = default;
BarrelOfExamplesBundle::~BarrelOfExamplesBundle() = default;

Expected<BarrelOfExamplesBundle, ErrorCode2> BarrelOfExamplesBundle::create()
{
    auto package = detail::createBundle(detail::BundleKind::barrelOfExamples);
    if (!package)
        return package.error();
    return BarrelOfExamplesBundle{std::move(*package)};
}

Expected<BarrelOfExamplesBundle, ErrorCode2> BarrelOfExamplesBundle::open(const FilePath2& path)
{
    auto package = detail::openBundle(path, detail::BundleKind::barrelOfExamples);
    if (!package)
        return package.error();
    return BarrelOfExamplesBundle{std::move(*package)};
}

Expected<ExamplePart, ErrorCode2> BarrelOfExamplesBundle::addExample(const FilePath2& exampleFile,
                                                                     const OpcPackagePartUri& uri)
{
    return Text::withinMemory([&]() -> Expected<ExamplePart, ErrorCode2> {
        const detail::PackagePtr& data = PackageAccess::data(package());
        if (auto name = uri.toString(); !name)
            return name.error();
        auto bytes = data->parts().items().takeFile(exampleFile, OpcPackageCompressionType::none);
        if (!bytes)
            return bytes.error();
        if (auto required = requireExample(*data, **bytes, exampleFile); !required)
            return required.error();
        auto part = detail::addRelatedPart(*data, uri, Layout::exampleMediaType, std::move(*bytes),
                                           Layout::exampleRelationship);
        if (!part)
            return part.error();
        Errors::Rollback takeBack{[&] { detail::dropRelatedPart(*data, *part); }};
        (*part)->compression = OpcPackageCompressionType::none;
        ExamplePart example{PackageAccess::part(data, *part)};
        takeBack.dismiss();
        return example;
    });
}

Expected<ExamplePart, ErrorCode2> BarrelOfExamplesBundle::example(const OpcPackagePartUri& uri) const
{
    return Text::withinMemory([&]() -> Expected<ExamplePart, ErrorCode2> {
        auto found = package().part(uri);
        if (!found)
            return found.error();
        return ExamplePart{*found};
    });
}

Expected<ExamplePart, ErrorCode2>
BarrelOfExamplesBundle::example(const OpcPackaging::OpcPackageRelationship& relationship) const
{
    return Text::withinMemory([&]() -> Expected<ExamplePart, ErrorCode2> {
        auto found = part(relationship);
        if (!found)
            return found.error();
        return ExamplePart{*found};
    });
}

Expected<OpcPackaging::OpcPackageRelationshipCollection, ErrorCode2>
BarrelOfExamplesBundle::exampleRelationships() const
{
    return Text::withinMemory(
        [this] { return package().relationshipsByType(Text::toString2(Layout::exampleRelationship)); });
}

std::uint64_t BarrelOfExamplesBundle::numberExamples() const
{
    const auto count = Text::withinMemory([this]() -> Result<std::uint64_t> {
        auto relationships = PackageAccess::data(package())->relationships().of(OpcPackaging::Markup::packageSource);
        if (!relationships)
            return relationships.error();
        return static_cast<std::uint64_t>(std::ranges::count((*relationships)->all(), Layout::exampleRelationship,
                                                             &OpcPackaging::Markup::Relationship::type));
    });
    return count.valueOr(0);
}

} // namespace Kelvaris::System::IO::Bundle
