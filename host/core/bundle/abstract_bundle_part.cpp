#include "kelvaris/system/io/bundle/abstract_bundle_part.h"

#include "host/core/opc/package_access.h"
#include "host/core/text/memory_guard.h"

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::detail::PackageAccess;

AbstractBundlePart::AbstractBundlePart(OpcPackaging::OpcPackagePart part, OpcPackaging::OpcPackageRef package) noexcept
    : m_part{std::move(part)}, m_package{std::move(package)}
{
}

AbstractBundlePart::AbstractBundlePart(const AbstractBundlePart&) = default;
AbstractBundlePart::AbstractBundlePart(AbstractBundlePart&&) noexcept = default;
AbstractBundlePart& AbstractBundlePart::operator=(const AbstractBundlePart&) = default;
AbstractBundlePart& AbstractBundlePart::operator=(AbstractBundlePart&&) noexcept = default;
AbstractBundlePart::~AbstractBundlePart() = default;

Expected<OpcPackaging::OpcPackagePartUri, ErrorCode2> AbstractBundlePart::uri() const
{
    return m_part.uri();
}

Expected<ByteArray2, ErrorCode2> AbstractBundlePart::content() const
{
    return Text::withinMemory([this]() -> Expected<ByteArray2, ErrorCode2> {
        auto bytes = PackageAccess::data(m_part)->parts().read(*PackageAccess::record(m_part));
        if (!bytes)
            return bytes.error();
        return ByteArray2{std::move(*bytes)};
    });
}

} // namespace Kelvaris::System::IO::Bundle
