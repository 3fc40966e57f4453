#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/date_time.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/string2.h"
#include "kelvaris/system/string_vector2.h"

namespace Kelvaris::System::IO::OpcPackaging {

namespace detail {
class PackageData;
}

/// The core properties of a package. The package owns the object.
///
/// A getter reads the core properties part on first use. It answers
///     opc 21                 when the package does not hold the property
///     opc 15, 16, 19, 20     when the core properties part, or what leads to it, breaks a rule
///
/// A setter changes the package in memory; setting the empty text, no keyword or no time removes the property. It
/// answers what a getter answers when the present part cannot be read, and changes nothing then. A package without a
/// core properties part gets one with the first property that is set to something, and no date is touched on the way.
///
/// Keywords stand in the file as one text, separated by "; ".
class KELVARIS_CORE_API OpcPackageProperties
{
public:
    /// For the host's own use. `package` outlives this object.
    explicit OpcPackageProperties(detail::PackageData& package) noexcept : m_package{package} {}

    OpcPackageProperties(const OpcPackageProperties&) = delete;
    OpcPackageProperties& operator=(const OpcPackageProperties&) = delete;

    Expected<String2, ErrorCode2> category() const;
    Expected<void, ErrorCode2> setCategory(const String2& category);

    Expected<String2, ErrorCode2> contentStatus() const;
    Expected<void, ErrorCode2> setContentStatus(const String2& contentStatus);

    Expected<DateTime, ErrorCode2> created() const;
    Expected<void, ErrorCode2> setCreated(const DateTime& created);

    Expected<String2, ErrorCode2> creator() const;
    Expected<void, ErrorCode2> setCreator(const String2& creator);

    Expected<String2, ErrorCode2> description() const;
    Expected<void, ErrorCode2> setDescription(const String2& description);

    Expected<String2, ErrorCode2> identifier() const;
    Expected<void, ErrorCode2> setIdentifier(const String2& identifier);

    Expected<StringVector2, ErrorCode2> keywords() const;
    Expected<void, ErrorCode2> setKeywords(const StringVector2& keywords);

    Expected<String2, ErrorCode2> language() const;
    Expected<void, ErrorCode2> setLanguage(const String2& language);

    Expected<String2, ErrorCode2> lastModifiedBy() const;
    Expected<void, ErrorCode2> setLastModifiedBy(const String2& lastModifiedBy);

    Expected<DateTime, ErrorCode2> lastPrinted() const;
    Expected<void, ErrorCode2> setLastPrinted(const DateTime& lastPrinted);

    Expected<DateTime, ErrorCode2> modified() const;
    Expected<void, ErrorCode2> setModified(const DateTime& modified);

    Expected<String2, ErrorCode2> revision() const;
    Expected<void, ErrorCode2> setRevision(const String2& revision);

    Expected<String2, ErrorCode2> subject() const;
    Expected<void, ErrorCode2> setSubject(const String2& subject);

    Expected<String2, ErrorCode2> title() const;
    Expected<void, ErrorCode2> setTitle(const String2& title);

    Expected<String2, ErrorCode2> version() const;
    Expected<void, ErrorCode2> setVersion(const String2& version);

private:
    detail::PackageData& m_package;
};

} // namespace Kelvaris::System::IO::OpcPackaging
