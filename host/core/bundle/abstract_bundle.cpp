#include "kelvaris/system/io/bundle/abstract_bundle.h"

#include "host/core/opc/package_access.h"
#include "host/core/text/memory_guard.h"

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::OpcPackage;
using OpcPackaging::detail::PackageAccess;

AbstractBundle::AbstractBundle(OpcPackage package) noexcept : m_package{std::move(package)} {}

AbstractBundle::AbstractBundle(AbstractBundle&&) noexcept = default;
AbstractBundle& AbstractBundle::operator=(AbstractBundle&&) noexcept = default;
AbstractBundle::~AbstractBundle() = default;

Expected<String2, ErrorCode2> AbstractBundle::title() const
{
    return PackageAccess::data(m_package)->properties().title();
}

Expected<String2, ErrorCode2> AbstractBundle::description() const
{
    return PackageAccess::data(m_package)->properties().description();
}

Expected<StringVector2, ErrorCode2> AbstractBundle::keywords() const
{
    return PackageAccess::data(m_package)->properties().keywords();
}

Expected<void, ErrorCode2> AbstractBundle::setTitle(const String2& title)
{
    return m_package.packageProperties().setTitle(title);
}

Expected<void, ErrorCode2> AbstractBundle::setDescription(const String2& description)
{
    return m_package.packageProperties().setDescription(description);
}

Expected<void, ErrorCode2> AbstractBundle::setKeywords(const StringVector2& keywords)
{
    return m_package.packageProperties().setKeywords(keywords);
}

Expected<OpcPackaging::OpcPackagePart, ErrorCode2>
AbstractBundle::part(const OpcPackaging::OpcPackageRelationship& relationship) const
{
    return m_package.partFromRelationship(relationship);
}

Expected<void, ErrorCode2> AbstractBundle::writeToFile(const FilePath2& path)
{
    return Text::withinMemory([&] { return PackageAccess::data(m_package)->write(path); });
}

} // namespace Kelvaris::System::IO::Bundle
