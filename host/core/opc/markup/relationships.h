#pragma once

#include "host/core/opc/fault_log.h"
#include "host/core/opc/markup/text_edits.h"
#include "host/core/text/name_index.h"
#include "host/core/text/shared_text.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/io/opc_packaging/opc_enums.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

struct Relationship
{
    std::string id;
    Text::SharedText type;
    std::string target; ///< as it was read; `resolveTarget` says where an internal one leads
    OpcTargetMode mode = OpcTargetMode::internal;
    TextRange range; ///< where it stands in the document that was read; empty for a new one
};

/// The relationships of one source: a relationships part (M1.25 to M1.33).
class KELVARIS_CORE_API Relationships
{
public:
    /// None.
    Relationships();

    /// Reads a relationships part. Markup compatibility is processed (M1.19, M1.31).
    ///
    /// @param source   the name of the part that the relationships belong to; "/" for the package
    /// @param subject  what an error is about: "file: /_rels/.rels"
    /// @return  opc 17  M1.25 to M1.29
    ///          opc 18  an id stands twice (M1.26)
    ///          opc 15, 16, 23  see `parseXml`; opc 15 for another schema (M1.20, M1.21)
    static Expected<Relationships, ErrorCode2> parse(std::span<const std::byte> bytes, std::string_view source,
                                                     std::string_view subject, FaultLog* faults = nullptr);

    /// In the order of the document, new ones behind. Valid until the next change.
    const std::vector<Relationship>& all() const noexcept { return m_relationships; }

    /// @return  null when there is none
    const Relationship* find(std::string_view id) const;

    /// Adds one with the first free id of "rId1", "rId2", ...
    ///
    /// @param source  as for `parse`
    /// @return  the new one, valid until the next change
    ///          opc 17  the type is no URI, an internal target is no part's name or one of relationships
    Expected<const Relationship*, ErrorCode2> add(std::string_view source, std::string_view type,
                                                  std::string_view target, OpcTargetMode mode);

    /// Does nothing when there is none of that id. The order of the others stays; takes time for all of them.
    void remove(std::string_view id);

    bool isChanged() const noexcept { return m_isChanged; }

    /// The document as UTF-8. What was read and not changed stands as it stood, byte for byte; but a document with
    /// markup compatibility is written anew without it (M1.31).
    std::string serialised() const;

    /// What was put up with, a sentence each: targets that are no URI, or no part's name.
    const std::vector<std::string>& diagnostics() const noexcept { return m_diagnostics; }

private:
    friend class RelationshipsReader;

    /// A package has many relationships and few types of them, mostly one after the other.
    Text::SharedText lastType() const
    {
        return m_relationships.empty() ? Text::SharedText{} : m_relationships.back().type;
    }
    auto idAt() const noexcept
    {
        return [this](Text::NameIndex::Place place) -> std::string_view { return m_relationships[place].id; };
    }

    std::string writtenAnew() const;

    /// @return  false when its id is there; then `relationship` is as it was
    bool enter(Relationship& relationship);

    std::vector<Relationship> m_relationships;
    Text::NameIndex m_index; ///< of their ids
    std::vector<std::string> m_diagnostics;
    std::vector<TextRange> m_erased;
    std::string m_text;
    TextRange m_endTag;
    std::string m_prefix; ///< of the elements, with its colon
    std::size_t m_firstFreeNumber = 1;
    bool m_hasCompatibility = false;
    bool m_isChanged = false;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
