#pragma once

#include "host/core/text/name_hash.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace Kelvaris::System::Text {

/// Finds the places of names in a list that its owner keeps. Few names are compared one after the other, which is done
/// before one of them is hashed; for more there is a table of keyed hashes (see `NameHash`), which holds places and no
/// names, and asks for no memory of its own for each.
///
/// Every name stands once. What happens to the list is told here at once, before the next question.
class NameIndex
{
public:
    using Place = std::uint32_t;
    static constexpr Place none = std::numeric_limits<Place>::max();

    /// @param nameAt  returns the name at a place
    /// @return  the place, or `none`
    template <class NameAt>
    Place find(std::string_view name, const NameAt& nameAt) const
    {
        return findBy([&] { return NameHash{}(name); }, [&](Place place) { return nameAt(place) == name; });
    }

    /// The same for names that are more than a text.
    /// @param hash     returns the hash of what is looked for
    /// @param matches  whether that stands at a place
    template <class Hash, class Matches>
    Place findBy(const Hash& hash, const Matches& matches) const
    {
        if (m_slots.empty())
            return findCompared(matches);
        return findSlot(tagOf(hash()), matches).place;
    }

    /// A name has been put at the list's end.
    /// @return  `none`, or where it stands already; then nothing has happened, and the owner takes it away again
    template <class NameAt>
    Place add(const NameAt& nameAt)
    {
        const std::string_view name = nameAt(m_count);
        return addBy([&](Place place) { return NameHash{}(nameAt(place)); },
                     [&](Place place) { return nameAt(place) == name; });
    }

    /// @param hashAt   returns the hash of what stands at a place
    /// @param matches  whether what stands there is what was put at the end
    template <class HashAt, class Matches>
    Place addBy(const HashAt& hashAt, const Matches& matches)
    {
        if (m_slots.empty() && m_count < mostCompared) {
            const Place twin = findCompared(matches);
            m_count += twin == none ? 1 : 0;
            return twin;
        }
        if (2 * (std::size_t{m_count} + 1) > m_slots.size())
            grow(hashAt);
        const Tag tag = tagOf(hashAt(m_count));
        const Place twin = findSlot(tag, matches).place;
        if (twin == none)
            enter(m_slots, {tag, m_count++});
        return twin;
    }

    /// The name at a place is about to go, and that at the list's end to take its place.
    template <class HashAt>
    void removeBy(Place place, const HashAt& hashAt)
    {
        --m_count;
        if (m_slots.empty())
            return;
        free(slotOf(tagOf(hashAt(place)), place));
        if (place != m_count)
            m_slots[slotOf(tagOf(hashAt(m_count)), m_count)].place = place;
    }

    /// The name at a place is about to go, and those behind to move up. Takes time for all of them.
    template <class NameAt>
    void removeInOrder(Place place, const NameAt& nameAt)
    {
        --m_count;
        if (m_slots.empty())
            return;
        free(slotOf(tagOf(NameHash{}(nameAt(place))), place));
        for (Slot& slot : m_slots) {
            if (slot.place != none && slot.place > place)
                --slot.place;
        }
    }

    /// Of an index without names.
    void reserve(std::size_t count)
    {
        if (count > mostCompared)
            m_slots.assign(std::bit_ceil(2 * count), {});
    }

private:
    static constexpr Place mostCompared = 16;

    using Tag = std::uint32_t;

    struct Slot
    {
        Tag tag = 0;
        Place place = none;
    };

    /// None, or a power of two, at least half of them free.
    using Slots = std::vector<Slot>;

    static Tag tagOf(std::size_t hash) noexcept { return static_cast<Tag>(hash); }

    static void enter(Slots& slots, Slot slot) noexcept
    {
        std::size_t at = slot.tag & (slots.size() - 1);
        while (slots[at].place != none)
            at = (at + 1) & (slots.size() - 1);
        slots[at] = slot;
    }

    template <class Matches>
    Place findCompared(const Matches& matches) const
    {
        for (Place place = 0; place < m_count; ++place) {
            if (matches(place))
                return place;
        }
        return none;
    }

    template <class Matches>
    Slot findSlot(Tag tag, const Matches& matches) const
    {
        for (std::size_t at = homeOf(tag);; at = next(at)) {
            const Slot slot = m_slots[at];
            if (slot.place == none || (slot.tag == tag && matches(slot.place)))
                return slot;
        }
    }

    std::size_t slotOf(Tag tag, Place place) const noexcept
    {
        std::size_t at = homeOf(tag);
        while (m_slots[at].place != place)
            at = next(at);
        return at;
    }

    std::size_t homeOf(Tag tag) const noexcept { return tag & (m_slots.size() - 1); }
    std::size_t next(std::size_t at) const noexcept { return (at + 1) & (m_slots.size() - 1); }

    /// Those behind that would not be found any more move up.
    void free(std::size_t gap) noexcept
    {
        for (std::size_t at = next(gap); m_slots[at].place != none; at = next(at)) {
            const std::size_t fromHome = (at - homeOf(m_slots[at].tag)) & (m_slots.size() - 1);
            const std::size_t fromGap = (at - gap) & (m_slots.size() - 1);
            if (fromHome < fromGap)
                continue;
            m_slots[gap] = m_slots[at];
            gap = at;
        }
        m_slots[gap] = {};
    }

    template <class HashAt>
    void grow(const HashAt& hashAt)
    {
        Slots grown(std::bit_ceil(2 * (std::size_t{m_count} + 1)));
        for (const Slot& slot : m_slots) {
            if (slot.place != none)
                enter(grown, slot);
        }
        for (Place place = 0; m_slots.empty() && place < m_count; ++place)
            enter(grown, {tagOf(hashAt(place)), place});
        m_slots.swap(grown);
    }

    Slots m_slots; ///< empty while names are compared
    Place m_count = 0;
};

} // namespace Kelvaris::System::Text
