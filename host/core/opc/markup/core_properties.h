#pragma once

#include "host/core/opc/fault_log.h"
#include "host/core/opc/markup/text_edits.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// The properties of the standard. `contentType` is one of its 1st edition alone: read and carried, never written anew.
enum class CoreProperty {
    category,
    contentStatus,
    contentType,
    created,
    creator,
    description,
    identifier,
    keywords,
    language,
    lastModifiedBy,
    lastPrinted,
    modified,
    revision,
    subject,
    title,
    version,
};

inline constexpr std::size_t corePropertyCount = 16;

/// The element that holds a property.
struct CorePropertyName
{
    std::string_view namespaceUri;
    std::string_view name;
};
KELVARIS_CORE_API const CorePropertyName& nameOf(CoreProperty property) noexcept;

/// Whether it is a date: `created`, `modified` and `lastPrinted`.
KELVARIS_CORE_API bool isDate(CoreProperty property) noexcept;

/// The core properties of a package (M4.2 to M4.5).
class KELVARIS_CORE_API CoreProperties
{
public:
    /// None.
    CoreProperties();

    /// @param subject  what an error is about: "file: /docProps/core.xml"
    /// @return  opc 19  M4.2 to M4.5, a property that stands twice, a date that is none
    ///          opc 15, 16, 23  see `parseXml`; opc 15 for another schema (M1.20)
    static Expected<CoreProperties, ErrorCode2> parse(std::span<const std::byte> bytes, std::string_view subject,
                                                      FaultLog* faults = nullptr);

    /// The property's text; an empty one for an empty element, nothing when the document has none.
    ///
    /// Keywords are one text: the element's own and that of each `value` child, without the white space around them,
    /// separated by "; ". Dates are texts that `DateTime::fromXSDDateTime` reads. Any other text is as it stands.
    const std::optional<std::string>& text(CoreProperty property) const noexcept;

    /// Sets a property, in the place where it stands or behind all others; the rest of the document stays as it stands.
    /// Languages that were told of keywords are dropped with the old keywords.
    ///
    /// @return  opc 19  `text` is no date where one is wanted, or holds a character that XML cannot
    Expected<void, ErrorCode2> set(CoreProperty property, std::string_view text);

    /// Does nothing when the document has none.
    void remove(CoreProperty property);

    bool isChanged() const noexcept { return m_isChanged; }

    /// The document as UTF-8. What was read and not changed stands as it stood, byte for byte.
    std::string serialised() const;

private:
    struct Entry
    {
        std::optional<std::string> text;
        TextRange range; ///< where it was read; empty when it was not
        bool isChanged = false;
    };

    friend class CorePropertiesReader;

    Entry& entry(CoreProperty property) noexcept { return m_entries[static_cast<std::size_t>(property)]; }
    std::string elementText(CoreProperty property) const;

    std::array<Entry, corePropertyCount> m_entries;
    std::string m_text;
    TextRange m_endTag;
    std::string m_prefix;           ///< of the root, with its colon
    std::string m_dublinCorePrefix; ///< without a colon, as the root declares it; empty when it does not
    std::string m_termsPrefix;      ///< the same
    std::string m_schemaPrefix;     ///< the same, of xsi:type
    bool m_isChanged = false;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
