#include "host/core/paths/disk/directory_walker.h"

#include "host/core/errors/make_error.h"
#include "host/core/paths/disk/system_calls.h"
#include "host/core/text/text_view.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace Kelvaris::System::Disk {

using IO::OpcPackaging::OpcError;

namespace {

constexpr int directoryFlags = O_PATH | O_DIRECTORY;

bool isSame(DirectoryWalker::Names left, DirectoryWalker::Names right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end());
}

/// "a/b/c/" -> "a/b"; empty when there is nothing above.
std::string parentOf(const std::string& path)
{
    const std::size_t end = path.find_last_not_of('/');
    const std::size_t separator = end == std::string::npos ? end : path.rfind('/', end);
    if (separator == std::string::npos)
        return {};
    const std::size_t last = path.find_last_not_of('/', separator);
    return last == std::string::npos ? std::string{"/"} : path.substr(0, last + 1);
}

} // namespace

DirectoryWalker::DirectoryWalker(std::string root, std::string displayName)
    : m_rootPath{std::move(root)}, m_displayName{std::move(displayName)}
{
}

Expected<DirectoryWalker, ErrorCode2> DirectoryWalker::open(std::string root, std::string displayName)
{
    DirectoryWalker walker{std::move(root), std::move(displayName)};
    walker.m_root = FileHandle{SystemCalls::open(walker.m_rootPath.c_str(), directoryFlags)};
    if (!walker.m_root && (errno != ENOENT || walker.m_rootPath.empty()))
        return Errors::systemError(errno, walker.m_displayName, "cannot be opened");
    walker.m_isThere = static_cast<bool>(walker.m_root);
    return walker;
}

std::string DirectoryWalker::describe(Names names) const
{
    std::string text = m_displayName;
    for (const std::string& name : names) {
        if (!text.ends_with('/'))
            text += '/';
        text += Text::displayed(name);
    }
    return text;
}

std::size_t DirectoryWalker::pathLength(Names names) const
{
    std::size_t length = m_rootPath.size();
    for (const std::string& name : names)
        length += 1 + name.size();
    return length;
}

ErrorCode2 DirectoryWalker::blocked(int error, int directory, Names names) const
{
    struct stat status
    {
    };
    if (error == ENAMETOOLONG || error == EILSEQ || error == EINVAL)
        return Errors::makeError(OpcError::unsafeDestination, describe(names));
    if ((error != ENOTDIR && error != ELOOP) || SystemCalls::statusAt(directory, names.back().c_str(), status) != 0)
        return Errors::systemError(error, describe(names), "cannot be made");
    if (S_ISLNK(status.st_mode))
        return Errors::makeError(OpcError::unsafeDestination, describe(names),
                                 "a link stands where a directory is needed");
    return Errors::makeError(OpcError::destinationExists, describe(names), "a directory is needed there");
}

Expected<bool, ErrorCode2> DirectoryWalker::step(FileHandle& here, Names names, bool makeMissing)
{
    const int above = here ? here.get() : m_root.get();
    const char* name = names.back().c_str();
    FileHandle next{SystemCalls::openAt(above, name, directoryFlags | O_NOFOLLOW)};
    if (!next && errno == ENOENT && !makeMissing)
        return false;
    if (!next && errno == ENOENT) {
        // remembered first: once it is made, no lack of memory may make us forget it
        m_madeBelow.push_back(names);
        const int error = SystemCalls::makeDirectoryAt(above, name) == 0 ? 0 : errno;
        if (error != 0)
            m_madeBelow.pop_back();
        if (error != 0 && error != EEXIST)
            return blocked(error, above, names);
        next = FileHandle{SystemCalls::openAt(above, name, directoryFlags | O_NOFOLLOW)};
    }
    if (!next)
        return blocked(errno, above, names);
    here = std::move(next);
    return true;
}

Expected<bool, ErrorCode2> DirectoryWalker::walk(Names names, bool makeMissing)
{
    FileHandle here;
    for (std::size_t depth = 1; depth <= names.size(); ++depth) {
        auto entered = step(here, names.first(depth), makeMissing);
        if (!entered || !*entered)
            return entered;
    }
    m_here = std::move(here);
    return true;
}

Expected<bool, ErrorCode2> DirectoryWalker::enter(Names names)
{
    if (!m_root)
        return false;
    if (isSame(names, m_place))
        return m_isThere;
    auto found = walk(names, false);
    m_isThere = found.valueOr(false);
    m_place = names;
    return found;
}

Expected<void, ErrorCode2> DirectoryWalker::make(Names names)
{
    if (auto made = makeRoot(); !made)
        return made;
    if (m_isThere && isSame(names, m_place))
        return {};
    const auto made = walk(names, true);
    m_isThere = made.hasValue();
    m_place = names;
    if (!made)
        return made.error();
    return {};
}

Expected<void, ErrorCode2> DirectoryWalker::makeRoot()
{
    if (m_root)
        return {};
    std::vector<std::string> missing{m_rootPath};
    struct stat status
    {
    };
    for (std::string above = parentOf(m_rootPath); !above.empty(); above = parentOf(above)) {
        if (SystemCalls::statusAt(AT_FDCWD, above.c_str(), status) == 0)
            break;
        if (errno != ENOENT)
            return Errors::systemError(errno, m_displayName, "cannot be made");
        missing.push_back(above);
    }
    for (; !missing.empty(); missing.pop_back()) {
        m_madeAbove.push_back(missing.back());
        const int error = SystemCalls::makeDirectory(missing.back().c_str()) == 0 ? 0 : errno;
        if (error != 0)
            m_madeAbove.pop_back();
        if (error != 0 && error != EEXIST)
            return Errors::systemError(error, m_displayName, "cannot be made");
    }
    m_root = FileHandle{SystemCalls::open(m_rootPath.c_str(), directoryFlags)};
    if (!m_root)
        return Errors::systemError(errno, m_displayName, "cannot be opened");
    m_isThere = m_place.empty();
    return {};
}

FileHandle DirectoryWalker::openForRemoval(Names names) const noexcept
{
    FileHandle here{SystemCalls::openForRemoval(m_root.get(), ".", directoryFlags)};
    for (auto name = names.begin(); here && name != names.end(); ++name)
        here = FileHandle{SystemCalls::openForRemoval(here.get(), name->c_str(), directoryFlags | O_NOFOLLOW)};
    return here;
}

void DirectoryWalker::removeFile(Names names) noexcept
{
    if (const FileHandle parent = openForRemoval(names.first(names.size() - 1)))
        SystemCalls::removeAt(parent.get(), names.back().c_str(), 0);
}

void DirectoryWalker::removeMadeDirectories() noexcept
{
    FileHandle parent;
    Names place;
    for (auto it = m_madeBelow.rbegin(); it != m_madeBelow.rend(); ++it) {
        const Names above = it->first(it->size() - 1);
        // mostly the way leads from a directory to the one above, and walking from the root would cost depth squared
        if (parent && isSame(place, *it))
            parent = FileHandle{SystemCalls::openForRemoval(parent.get(), "..", directoryFlags)};
        else if (!parent || !isSame(place, above))
            parent = openForRemoval(above);
        place = above;
        if (parent)
            SystemCalls::removeAt(parent.get(), it->back().c_str(), AT_REMOVEDIR);
    }
    for (auto it = m_madeAbove.rbegin(); it != m_madeAbove.rend(); ++it)
        SystemCalls::removeAt(AT_FDCWD, it->c_str(), AT_REMOVEDIR);
    keepMadeDirectories();
}

void DirectoryWalker::keepMadeDirectories() noexcept
{
    m_madeBelow.clear();
    m_madeAbove.clear();
}

} // namespace Kelvaris::System::Disk
