#include "kelvaris/system/io/opc_packaging/opc_package_properties.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/package_data.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::OpcPackaging {

namespace {

using detail::PackageData;
using detail::Result;
using Markup::CoreProperty;

Result<String2> readText(PackageData& package, CoreProperty property)
{
    return Text::withinMemory([&]() -> Result<String2> {
        auto text = package.core().text(property);
        if (!text)
            return text.error();
        if (!text->has_value())
            return Errors::makeError(OpcError::propertyNotSet, package.displayName());
        return Text::toString2(std::string_view{**text});
    });
}

Result<> writeText(PackageData& package, CoreProperty property, std::string_view text)
{
    return Text::withinMemory([&] { return package.core().set(property, text); });
}

Result<DateTime> readTime(PackageData& package, CoreProperty property)
{
    return readText(package, property).andThen([](const String2& text) { return DateTime::fromXSDDateTime(text); });
}

Result<> writeTime(PackageData& package, CoreProperty property, const DateTime& time)
{
    return time.toXSDDateTime().andThen(
        [&](const String2& text) { return writeText(package, property, Text::narrow(text)); });
}

std::string joined(const StringVector2& keywords)
{
    std::string text;
    for (std::size_t index = 0; index < keywords.size(); ++index) {
        const std::string_view keyword = Text::narrow(keywords.data()[index]);
        if (!text.empty() && !keyword.empty())
            text += "; ";
        text += keyword;
    }
    return text;
}

} // namespace

Expected<String2, ErrorCode2> OpcPackageProperties::category() const
{
    return readText(m_package, CoreProperty::category);
}

Expected<void, ErrorCode2> OpcPackageProperties::setCategory(const String2& category)
{
    return writeText(m_package, CoreProperty::category, Text::narrow(category));
}

Expected<String2, ErrorCode2> OpcPackageProperties::contentStatus() const
{
    return readText(m_package, CoreProperty::contentStatus);
}

Expected<void, ErrorCode2> OpcPackageProperties::setContentStatus(const String2& contentStatus)
{
    return writeText(m_package, CoreProperty::contentStatus, Text::narrow(contentStatus));
}

Expected<DateTime, ErrorCode2> OpcPackageProperties::created() const
{
    return readTime(m_package, CoreProperty::created);
}

Expected<void, ErrorCode2> OpcPackageProperties::setCreated(const DateTime& created)
{
    return writeTime(m_package, CoreProperty::created, created);
}

Expected<String2, ErrorCode2> OpcPackageProperties::creator() const
{
    return readText(m_package, CoreProperty::creator);
}

Expected<void, ErrorCode2> OpcPackageProperties::setCreator(const String2& creator)
{
    return writeText(m_package, CoreProperty::creator, Text::narrow(creator));
}

Expected<String2, ErrorCode2> OpcPackageProperties::description() const
{
    return readText(m_package, CoreProperty::description);
}

Expected<void, ErrorCode2> OpcPackageProperties::setDescription(const String2& description)
{
    return writeText(m_package, CoreProperty::description, Text::narrow(description));
}

Expected<String2, ErrorCode2> OpcPackageProperties::identifier() const
{
    return readText(m_package, CoreProperty::identifier);
}

Expected<void, ErrorCode2> OpcPackageProperties::setIdentifier(const String2& identifier)
{
    return writeText(m_package, CoreProperty::identifier, Text::narrow(identifier));
}

Expected<StringVector2, ErrorCode2> OpcPackageProperties::keywords() const
{
    return readText(m_package, CoreProperty::keywords).andThen([](const String2& text) { return text.split(u8';'); });
}

Expected<void, ErrorCode2> OpcPackageProperties::setKeywords(const StringVector2& keywords)
{
    return Text::withinMemory([&] { return m_package.core().set(CoreProperty::keywords, joined(keywords)); });
}

Expected<String2, ErrorCode2> OpcPackageProperties::language() const
{
    return readText(m_package, CoreProperty::language);
}

Expected<void, ErrorCode2> OpcPackageProperties::setLanguage(const String2& language)
{
    return writeText(m_package, CoreProperty::language, Text::narrow(language));
}

Expected<String2, ErrorCode2> OpcPackageProperties::lastModifiedBy() const
{
    return readText(m_package, CoreProperty::lastModifiedBy);
}

Expected<void, ErrorCode2> OpcPackageProperties::setLastModifiedBy(const String2& lastModifiedBy)
{
    return writeText(m_package, CoreProperty::lastModifiedBy, Text::narrow(lastModifiedBy));
}

Expected<DateTime, ErrorCode2> OpcPackageProperties::lastPrinted() const
{
    return readTime(m_package, CoreProperty::lastPrinted);
}

Expected<void, ErrorCode2> OpcPackageProperties::setLastPrinted(const DateTime& lastPrinted)
{
    return writeTime(m_package, CoreProperty::lastPrinted, lastPrinted);
}

Expected<DateTime, ErrorCode2> OpcPackageProperties::modified() const
{
    return readTime(m_package, CoreProperty::modified);
}

Expected<void, ErrorCode2> OpcPackageProperties::setModified(const DateTime& modified)
{
    return writeTime(m_package, CoreProperty::modified, modified);
}

Expected<String2, ErrorCode2> OpcPackageProperties::revision() const
{
    return readText(m_package, CoreProperty::revision);
}

Expected<void, ErrorCode2> OpcPackageProperties::setRevision(const String2& revision)
{
    return writeText(m_package, CoreProperty::revision, Text::narrow(revision));
}

Expected<String2, ErrorCode2> OpcPackageProperties::subject() const
{
    return readText(m_package, CoreProperty::subject);
}

Expected<void, ErrorCode2> OpcPackageProperties::setSubject(const String2& subject)
{
    return writeText(m_package, CoreProperty::subject, Text::narrow(subject));
}

Expected<String2, ErrorCode2> OpcPackageProperties::title() const
{
    return readText(m_package, CoreProperty::title);
}

Expected<void, ErrorCode2> OpcPackageProperties::setTitle(const String2& title)
{
    return writeText(m_package, CoreProperty::title, Text::narrow(title));
}

Expected<String2, ErrorCode2> OpcPackageProperties::version() const
{
    return readText(m_package, CoreProperty::version);
}

Expected<void, ErrorCode2> OpcPackageProperties::setVersion(const String2& version)
{
    return writeText(m_package, CoreProperty::version, Text::narrow(version));
}

} // namespace Kelvaris::System::IO::OpcPackaging
