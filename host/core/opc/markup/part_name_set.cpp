#include "host/core/opc/markup/part_name_set.h"

#include "host/core/errors/rollback.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/markup/rule_error.h"

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

/// The segments of a name, one after the other.
class Segments
{
public:
    explicit Segments(std::string_view text) noexcept : m_left{text} {}

    bool atEnd() const noexcept { return m_left.empty(); }
    std::string_view left() const noexcept { return m_left; }

    std::string_view next() noexcept
    {
        const std::string_view segment = m_left.substr(0, m_left.find('/'));
        m_left.remove_prefix(segment.size() == m_left.size() ? segment.size() : segment.size() + 1);
        return segment;
    }

private:
    std::string_view m_left;
};

std::string_view withoutSlash(std::string_view key) noexcept
{
    return key.empty() ? key : key.substr(1);
}

/// What a stranger chooses is hashed with the secret; the numbers of directories only tell equal segments apart.
std::size_t hashOf(std::uint64_t directory, std::string_view segment)
{
    constexpr std::uint64_t spread = 0x9e3779b97f4a7c15U;
    return Text::NameHash{}(segment) ^ (directory * spread);
}

ErrorCode2 derivedName(std::string_view subject, std::string_view longer, std::string_view shorter)
{
    return ruleError(OpcError::derivedPartName, subject, "M1.11",
                     "the part name " + inQuotes(longer) + " continues the part name " + inQuotes(shorter));
}

} // namespace

void PartNameSet::reserve(std::size_t count)
{
    m_nodes.reserve(count);
    m_index.reserve(count);
}

PartNameSet::Place PartNameSet::placeOf(NodeId directory, std::string_view segment) const
{
    return m_index.findBy(
        [&] { return hashOf(directory, segment); },
        [&](Place place) { return m_nodes[place].directory == directory && m_nodes[place].segment == segment; });
}

const PartNameSet::Node* PartNameSet::find(NodeId directory, std::string_view segment) const
{
    const Place place = placeOf(directory, segment);
    return place == Text::NameIndex::none ? nullptr : &m_nodes[place];
}

std::size_t PartNameSet::hashAt(Place place) const
{
    return hashOf(m_nodes[place].directory, m_nodes[place].segment);
}

void PartNameSet::addNode(Node node)
{
    m_nodes.push_back(std::move(node));
    Errors::Rollback forget{[this] { m_nodes.pop_back(); }};
    m_index.addBy([this](Place place) { return hashAt(place); }, [](Place) { return false; });
    forget.dismiss();
}

void PartNameSet::removeNode(const Node& node)
{
    const auto place = static_cast<Place>(&node - m_nodes.data());
    m_index.removeBy(place, [this](Place at) { return hashAt(at); });
    if (&node != &m_nodes.back())
        m_nodes[place] = std::move(m_nodes.back());
    m_nodes.pop_back();
}

Expected<void, ErrorCode2> PartNameSet::add(std::string_view name, const Subject& subject)
{
    return addKey(partNameKey(name), name, subject);
}

Expected<void, ErrorCode2> PartNameSet::addKey(std::string_view key, std::string_view name, const Subject& subject)
{
    Segments segments{withoutSlash(key)};
    NodeId directory = top;
    Place above = Text::NameIndex::none;
    while (true) {
        const std::string_view left = segments.left();
        const Place place = placeOf(directory, segments.next());
        if (place == Text::NameIndex::none) {
            enter(directory, left);
            if (above != Text::NameIndex::none)
                ++m_nodes[above].below;
            ++m_size;
            return {};
        }
        const bool isName = m_nodes[place].below == 0;
        if (isName && !segments.atEnd())
            return derivedName(subject(), name, key.substr(0, key.size() - segments.left().size() - 1));
        if (isName)
            return ruleError(OpcError::partExists, subject(), "M1.12",
                             "the part name " + inQuotes(name) + " is there already, in this or another case");
        if (segments.atEnd())
            return derivedName(subject(), std::string{name} + "/...", name);
        above = place;
        directory = m_nodes[place].id;
    }
}

/// A name that shares no more than the directory with the others.
void PartNameSet::enter(NodeId directory, std::string_view segments)
{
    Errors::Rollback forget{[&] { leave(directory, segments); }};
    NodeId parent = directory;
    for (Segments rest{segments}; !rest.atEnd();) {
        const std::string_view segment = rest.next();
        addNode({parent, std::string{segment}, m_lastId + 1, rest.atEnd() ? 0U : 1U});
        parent = ++m_lastId;
    }
    forget.dismiss();
}

/// The opposite, as far as the segments are there.
void PartNameSet::leave(NodeId directory, std::string_view segments)
{
    for (Segments rest{segments}; !rest.atEnd();) {
        const Node* const found = find(directory, rest.next());
        if (found == nullptr)
            return;
        directory = found->id;
        removeNode(*found);
    }
}

void PartNameSet::remove(std::string_view name)
{
    const std::string key = partNameKey(name);
    // from the last directory on that others share, nothing of the name stays
    NodeId shared = top;
    std::string_view own = withoutSlash(key);
    Place lastShared = Text::NameIndex::none;
    NodeId directory = top;
    for (Segments segments{own};;) {
        const Place place = placeOf(directory, segments.next());
        if (place == Text::NameIndex::none || (segments.atEnd() && m_nodes[place].below != 0))
            return;
        if (segments.atEnd())
            break;
        directory = m_nodes[place].id;
        if (m_nodes[place].below > 1) {
            lastShared = place;
            shared = directory;
            own = segments.left();
        }
    }
    if (lastShared != Text::NameIndex::none)
        --m_nodes[lastShared].below;
    leave(shared, own);
    --m_size;
}

bool PartNameSet::contains(std::string_view name) const
{
    const std::string key = partNameKey(name);
    NodeId directory = top;
    for (Segments segments{withoutSlash(key)};;) {
        const Node* const found = find(directory, segments.next());
        if (found == nullptr)
            return false;
        if (segments.atEnd())
            return found->below == 0;
        directory = found->id;
    }
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
