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

ErrorCode2 derivedName(std::string_view subject, std::string_view longer, std::string_view shorter)
{
    return ruleError(OpcError::derivedPartName, subject, "M1.11",
                     "the part name " + inQuotes(longer) + " continues the part name " + inQuotes(shorter));
}

} // namespace

std::size_t PartNameSet::PlaceHash::operator()(const PlaceView& place) const
{
    // what a stranger chooses is hashed with the secret; the numbers of directories only tell equal segments apart
    constexpr std::uint64_t spread = 0x9e3779b97f4a7c15U;
    return Text::NameHash{}(place.segment) ^ (place.directory * spread);
}

Expected<void, ErrorCode2> PartNameSet::add(std::string_view name, std::string_view subject)
{
    return addKey(partNameKey(name), name, subject);
}

Expected<void, ErrorCode2> PartNameSet::addKey(std::string_view key, std::string_view name, std::string_view subject)
{
    Segments segments{withoutSlash(key)};
    NodeId directory = top;
    Node* above = nullptr;
    while (true) {
        const std::string_view left = segments.left();
        const auto found = m_nodes.find(PlaceView{directory, segments.next()});
        if (found == m_nodes.end()) {
            enter(directory, left);
            if (above != nullptr)
                ++above->below;
            ++m_size;
            return {};
        }
        const bool isName = found->second.below == 0;
        if (isName && !segments.atEnd())
            return derivedName(subject, name, key.substr(0, key.size() - segments.left().size() - 1));
        if (isName)
            return ruleError(OpcError::partExists, subject, "M1.12",
                             "the part name " + inQuotes(name) + " is there already, in this or another case");
        if (segments.atEnd())
            return derivedName(subject, std::string{name} + "/...", name);
        above = &found->second;
        directory = above->id;
    }
}

/// A name that shares no more than the directory with the others.
void PartNameSet::enter(NodeId directory, std::string_view segments)
{
    Errors::Rollback forget{[&] { leave(directory, segments); }};
    NodeId parent = directory;
    for (Segments rest{segments}; !rest.atEnd();) {
        const std::string_view segment = rest.next();
        const Node node{m_lastId + 1, rest.atEnd() ? 0U : 1U};
        m_nodes.emplace(Place{parent, std::string{segment}}, node);
        parent = ++m_lastId;
    }
    forget.dismiss();
}

/// The opposite, as far as the segments are there.
void PartNameSet::leave(NodeId directory, std::string_view segments)
{
    for (Segments rest{segments}; !rest.atEnd();) {
        const auto found = m_nodes.find(PlaceView{directory, rest.next()});
        if (found == m_nodes.end())
            return;
        directory = found->second.id;
        m_nodes.erase(found);
    }
}

void PartNameSet::remove(std::string_view name)
{
    const std::string key = partNameKey(name);
    // from the last directory on that others share, nothing of the name stays
    NodeId shared = top;
    std::string_view own = withoutSlash(key);
    Node* lastShared = nullptr;
    NodeId directory = top;
    for (Segments segments{own};;) {
        const auto found = m_nodes.find(PlaceView{directory, segments.next()});
        if (found == m_nodes.end() || (segments.atEnd() && found->second.below != 0))
            return;
        if (segments.atEnd())
            break;
        directory = found->second.id;
        if (found->second.below > 1) {
            lastShared = &found->second;
            shared = directory;
            own = segments.left();
        }
    }
    leave(shared, own);
    if (lastShared != nullptr)
        --lastShared->below;
    --m_size;
}

bool PartNameSet::contains(std::string_view name) const
{
    const std::string key = partNameKey(name);
    NodeId directory = top;
    for (Segments segments{withoutSlash(key)};;) {
        const auto found = m_nodes.find(PlaceView{directory, segments.next()});
        if (found == m_nodes.end())
            return false;
        if (segments.atEnd())
            return found->second.below == 0;
        directory = found->second.id;
    }
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
