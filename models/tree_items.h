#pragma once

#include "models/path_elements.h"

#include <QtCore/QString>

#include <algorithm>
#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

/// What the items of the trees over packages have in common. The trees differ in what stands where, so that each has
/// items of its own.
namespace TreeItems {

/// The position of the item that `child` points to, -1 when it is not among `items`.
template <class Item, class Child>
int positionOf(const std::vector<std::shared_ptr<Item>>& items, const Child* child)
{
    const auto place =
        std::find_if(items.begin(), items.end(), [child](const auto& item) { return item.get() == child; });
    return place == items.end() ? -1 : static_cast<int>(place - items.begin());
}

/// A name to look up without regard to case, as `QString::compare` sees it: letter by letter.
struct NameInAnyCase
{
    QString text;

    friend bool operator<(const NameInAnyCase& left, const NameInAnyCase& right)
    {
        return left.text.compare(right.text, Qt::CaseInsensitive) < 0;
    }
};

/// The directories of one parent by name: what `directory` finds without a search over all entries, which takes
/// minutes in a package with tens of thousands of them. In order and not by a hash: the names come from strangers, and
/// for the hash of a QString it is easy to find as many as one likes that it cannot tell apart.
template <class Directory, class Name = QString>
using DirectoriesByName = std::map<Name, Directory*>;

/// The directory of that name; `make` is called for a new one when there is none.
template <class Directory, class Name, class Make>
Directory* findOrMake(DirectoriesByName<Directory, Name>& known, const Name& name, Make make)
{
    Directory*& directory = known[name];
    if (directory == nullptr)
        directory = make();
    return directory;
}

/// `item` and the items above it, the topmost first.
template <class Item>
std::vector<const Item*> lineOf(const Item* item)
{
    std::vector<const Item*> line;
    for (; item != nullptr; item = item->parent())
        line.push_back(item);
    std::reverse(line.begin(), line.end());
    return line;
}

/// Lets go of `items` and of all below them, one after the other. A part's name can be 32,000 directories deep, and if
/// each let go of the next one, the stack would end first.
/// @param takeBelow  gives the items directly below one and leaves it without them
template <class Item, class TakeBelow>
void release(std::vector<std::shared_ptr<Item>> items, TakeBelow takeBelow)
{
    while (!items.empty()) {
        const std::shared_ptr<Item> item = std::move(items.back());
        items.pop_back();
        for (auto& below : takeBelow(*item))
            items.push_back(std::move(below));
    }
}

/// Goes down from `start` by the elements of `path`, asking each directory for the next one with `directory(name)`,
/// which makes what is not there yet. The empty path gives `start`.
template <class Directory>
Directory* directoryBelow(Directory* start, std::wstring_view path)
{
    for (const QString& name : PathElements::elements(path))
        start = start->directory(name);
    return start;
}

} // namespace TreeItems
