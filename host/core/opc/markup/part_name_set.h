#pragma once

#include "host/core/text/name_hash.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// The names of a package's parts, none equivalent to (M1.12) or derived from (M1.11) another, whatever their order.
///
/// They are kept as a tree of segments: adding takes time for the length of the name, not for the names that are there,
/// and a name of 30,000 directories takes no more than its bytes and 30,000 small records.
class KELVARIS_CORE_API PartNameSet
{
public:
    void reserve(std::size_t count) { m_nodes.reserve(count); }

    /// @param name     a valid part name
    /// @param subject  what an error is about
    /// @return  opc 4  an equivalent name is there
    ///          opc 5  the name continues one that is there, or one that is there continues it
    Expected<void, ErrorCode2> add(std::string_view name, std::string_view subject);

    /// The same for a name whose key is known already.
    Expected<void, ErrorCode2> addKey(std::string_view key, std::string_view name, std::string_view subject);

    /// Does nothing for a name that is not there.
    void remove(std::string_view name);

    bool contains(std::string_view name) const;
    std::size_t size() const noexcept { return m_size; }

private:
    using NodeId = std::uint64_t;
    static constexpr NodeId top = 0;

    /// Where a segment stands, for looking it up.
    struct PlaceView
    {
        NodeId directory;
        std::string_view segment;
    };

    struct Place
    {
        NodeId directory;
        std::string segment;

        operator PlaceView() const noexcept { return {directory, segment}; }
    };

    struct PlaceHash
    {
        using is_transparent = void;

        // without noexcept, as NameHash
        std::size_t operator()(const PlaceView& place) const;
    };

    struct SamePlace
    {
        using is_transparent = void;

        bool operator()(const PlaceView& one, const PlaceView& other) const noexcept
        {
            return one.directory == other.directory && one.segment == other.segment;
        }
    };

    /// A name, or a directory of names.
    struct Node
    {
        NodeId id;
        std::size_t below; ///< names and directories that stand directly in it; 0 for a name
    };

    using Nodes = std::unordered_map<Place, Node, PlaceHash, SamePlace>;

    void enter(NodeId directory, std::string_view segments);
    void leave(NodeId directory, std::string_view segments);

    Nodes m_nodes;
    NodeId m_lastId = top;
    std::size_t m_size = 0;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
