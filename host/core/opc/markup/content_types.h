#pragma once

#include "host/core/opc/fault_log.h"
#include "host/core/opc/markup/text_edits.h"
#include "host/core/opc/markup/xml_document.h"
#include "host/core/text/name_index.h"
#include "host/core/text/shared_text.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// The text of a media type, as it is written; many parts share it.
using MediaType = Text::SharedText;

/// Which media type each part has: the content-types stream (M2.1 to M2.10).
class KELVARIS_CORE_API ContentTypes
{
public:
    /// Whether items without a content type have that extension: they would become parts by a Default for it.
    enum class ExtensionUse { free, taken };

    /// A new package's: relationships have their type by the extension "rels".
    ContentTypes();

    /// @param subject  what an error is about: "file: [Content_Types].xml"
    /// @return  opc 13  M2.5 to M2.10
    ///          opc 14  M1.13 to M1.15, M1.22
    ///          opc 15, 16, 23  see `parseXml`; opc 15 for another schema (M1.20, M1.21)
    static Expected<ContentTypes, ErrorCode2> parse(std::span<const std::byte> bytes, std::string_view subject,
                                                    FaultLog* faults = nullptr);

    /// The media type of a part: that of its Override, else that of its extension (M2.9). Nothing for an item that is
    /// no part.
    std::optional<MediaType> typeOf(std::string_view partName) const;

    /// The same for the key of a name.
    std::optional<MediaType> typeOfKey(std::string_view key) const;

    /// Gives a part a media type: by a Default that says so already, by a new Default when `use` allows it, else by an
    /// Override (M2.8). A type that the part had is replaced.
    ///
    /// @param partName  valid
    /// @return  `type`
    ///          opc 14  it is no media type
    Expected<MediaType, ErrorCode2> set(std::string_view partName, std::string_view type, ExtensionUse use);

    /// Forgets the Override of a part; Defaults stay. Does nothing when there is none.
    void remove(std::string_view partName);

    /// The names that have an Override, folded and in their order.
    std::vector<std::string> overriddenNames() const;

    bool isChanged() const noexcept { return m_isChanged; }

    /// The document as UTF-8. What was read and not changed stands as it stood, byte for byte.
    std::string serialised() const;

private:
    struct Entry
    {
        std::string key;
        MediaType type;
        TextRange range;         ///< in `m_text`; empty for an entry that was not read
        std::uint32_t added = 0; ///< its place in `m_added` when it was not read
    };

    /// An element that the document does not have yet.
    struct Added
    {
        std::string name; ///< as it is written; empty when it was taken back
        MediaType type;
        bool isDefault = false;
    };

    class Entries
    {
    public:
        const Entry* find(std::string_view key) const;

        /// @return  false when there is one of that key
        bool add(Entry entry);

        /// @param entry  one of these
        void remove(const Entry& entry);

        void reserve(std::size_t count);
        const std::vector<Entry>& all() const noexcept { return m_entries; }

    private:
        auto keyAt() const noexcept
        {
            return [this](Text::NameIndex::Place place) -> std::string_view { return m_entries[place].key; };
        }

        std::vector<Entry> m_entries; ///< in no order
        Text::NameIndex m_index;      ///< of their keys
    };

    struct Empty
    {
    };

    friend class ContentTypesReader;

    explicit ContentTypes(Empty) noexcept {}

    /// @return  false when there is an equal one
    bool enterRead(Entries& entries, std::string_view name, const XmlElement& element);
    void addNew(bool isDefault, std::string_view name, std::string_view key, const MediaType& type);
    void removeOverride(const Entry& entry);
    void takeBack(std::uint32_t place) noexcept;
    void appendElement(std::string& text, const Added& added, RepeatedAttribute& type) const;

    std::string m_text;
    TextRange m_endTag;
    std::string m_prefix; ///< of the elements, with its colon
    Entries m_defaults;   ///< by folded extension
    Entries m_overrides;  ///< by folded part name
    std::vector<Added> m_added;
    std::vector<TextRange> m_erased;
    MediaType m_lastType; ///< that was set
    bool m_isChanged = false;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
