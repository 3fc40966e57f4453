#pragma once

#include "host/core/text/name_index.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// The names of a package's parts, none equivalent to (M1.12) or derived from (M1.11) another, whatever their order.
///
/// They are kept as a tree of segments: adding takes time for the length of the name, not for the names that are there,
/// and a name of 30,000 directories takes no more than its bytes and 30,000 small records.
class KELVARIS_CORE_API PartNameSet
{
public:
    /// Of an empty set.
    void reserve(std::size_t count);

    /// What an error is about; made for errors alone.
    using Subject = std::function<std::string()>;

    /// @param name  a valid part name
    /// @return  opc 4  an equivalent name is there
    ///          opc 5  the name continues one that is there, or one that is there continues it
    Expected<void, ErrorCode2> add(std::string_view name, const Subject& subject);

    /// The same for a name whose key is known already.
    Expected<void, ErrorCode2> addKey(std::string_view key, std::string_view name, const Subject& subject);

    /// Does nothing for a name that is not there.
    void remove(std::string_view name);

    bool contains(std::string_view name) const;
    std::size_t size() const noexcept { return m_size; }

private:
    using NodeId = std::uint64_t;
    static constexpr NodeId top = 0;

    using Place = Text::NameIndex::Place;

    /// A name, or a directory of names.
    struct Node
    {
        NodeId directory; ///< in which it stands
        std::string segment;
        NodeId id;
        std::size_t below; ///< names and directories that stand directly in it; 0 for a name
    };

    /// @return  null when there is none
    const Node* find(NodeId directory, std::string_view segment) const;

    Place placeOf(NodeId directory, std::string_view segment) const;
    std::size_t hashAt(Place place) const;
    void addNode(Node node);
    void removeNode(const Node& node);
    void enter(NodeId directory, std::string_view segments);
    void leave(NodeId directory, std::string_view segments);

    std::vector<Node> m_nodes; ///< in no order
    Text::NameIndex m_index;
    NodeId m_lastId = top;
    std::size_t m_size = 0;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
