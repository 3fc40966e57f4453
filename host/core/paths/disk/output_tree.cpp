#include "host/core/paths/disk/output_tree.h"

#include "host/core/errors/make_error.h"
#include "host/core/paths/disk/directory_walker.h"
#include "host/core/paths/disk/native_path.h"
#include "host/core/paths/disk/system_calls.h"
#include "host/core/text/text_view.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <numeric>
#include <span>
#include <utility>

namespace Kelvaris::System::Disk {

using IO::OpcPackaging::OpcError;

namespace {

constexpr std::string_view notWritten = "cannot be written";

bool isSafeName(const std::string& name)
{
    return !name.empty() && name != "." && name != ".." && name.size() <= NAME_MAX &&
           name.find('/') == std::string::npos && name.find('\0') == std::string::npos && Text::isValidUtf8(name);
}

bool beginsWith(const OutputTree::Destination& destination, const OutputTree::Destination& beginning)
{
    return beginning.size() <= destination.size() &&
           std::equal(beginning.begin(), beginning.end(), destination.begin());
}

ErrorCode2 notMade(int error, const std::string& subject)
{
    if (error == EEXIST)
        return Errors::makeError(OpcError::destinationExists, subject);
    // what file systems say of a name that they cannot hold
    if (error == ENAMETOOLONG || error == EILSEQ || error == EINVAL)
        return Errors::makeError(OpcError::unsafeDestination, subject);
    return Errors::systemError(error, subject, notWritten);
}

Expected<void, ErrorCode2> writeAll(const FileHandle& file, std::uint64_t& position, std::span<const std::byte> bytes,
                                    const std::string& subject)
{
    while (!bytes.empty()) {
        const ssize_t count = SystemCalls::writeAt(file.get(), bytes, position);
        if (count < 0)
            return Errors::systemError(errno, subject, notWritten);
        position += static_cast<std::uint64_t>(count);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return {};
}

} // namespace

class OutputTree::Data
{
public:
    Data(DirectoryWalker walker, std::vector<Destination> destinations)
        : m_destinations{std::move(destinations)}, m_walker{std::move(walker)}
    {
    }
    Data(const Data&) = delete;
    Data& operator=(const Data&) = delete;
    ~Data()
    {
        for (auto it = m_files.rbegin(); it != m_files.rend(); ++it)
            m_walker.removeFile(m_destinations[*it]);
        m_walker.removeMadeDirectories();
    }

    Expected<void, ErrorCode2> check();
    Expected<void, ErrorCode2> write(std::size_t index, const Producer& produce);
    Expected<void, ErrorCode2> keep();

private:
    Expected<void, ErrorCode2> checkNames() const;
    Expected<void, ErrorCode2> checkClashes(std::span<const std::size_t> order) const;
    Expected<void, ErrorCode2> checkIsNew(const Destination& destination);

    std::vector<Destination> m_destinations;
    DirectoryWalker m_walker;
    std::vector<std::size_t> m_files; ///< the destinations that were made
};

Expected<void, ErrorCode2> OutputTree::Data::checkNames() const
{
    for (const Destination& destination : m_destinations) {
        if (destination.empty() || !std::all_of(destination.begin(), destination.end(), isSafeName) ||
            m_walker.pathLength(destination) >= PATH_MAX)
            return Errors::makeError(OpcError::unsafeDestination, m_walker.describe(destination));
    }
    return {};
}

Expected<void, ErrorCode2> OutputTree::Data::checkClashes(std::span<const std::size_t> order) const
{
    for (std::size_t i = 1; i < order.size(); ++i) {
        const Destination& previous = m_destinations[order[i - 1]];
        const Destination& destination = m_destinations[order[i]];
        if (!beginsWith(destination, previous))
            continue;
        if (destination.size() == previous.size())
            return Errors::makeError(OpcError::destinationClash, m_walker.describe(destination));
        return Errors::makeError(OpcError::destinationClash, m_walker.describe(previous),
                                 "it is needed as a file, and as a directory for " + m_walker.describe(destination));
    }
    return {};
}

Expected<void, ErrorCode2> OutputTree::Data::checkIsNew(const Destination& destination)
{
    const auto found = m_walker.enter(std::span{destination}.first(destination.size() - 1));
    if (!found)
        return found.error();
    if (!*found)
        return {};
    struct stat status
    {
    };
    if (SystemCalls::statusAt(m_walker.directory(), destination.back().c_str(), status) == 0)
        return Errors::makeError(OpcError::destinationExists, m_walker.describe(destination));
    if (errno == ENOENT)
        return {};
    return notMade(errno, m_walker.describe(destination));
}

Expected<void, ErrorCode2> OutputTree::Data::check()
{
    if (auto safe = checkNames(); !safe)
        return safe;
    // In this order what clashes stands side by side, and each directory is entered once.
    std::vector<std::size_t> order(m_destinations.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(),
              [this](std::size_t left, std::size_t right) { return m_destinations[left] < m_destinations[right]; });
    if (auto distinct = checkClashes(order); !distinct)
        return distinct;
    for (const std::size_t index : order) {
        if (auto isNew = checkIsNew(m_destinations[index]); !isNew)
            return isNew;
    }
    return {};
}

Expected<void, ErrorCode2> OutputTree::Data::write(std::size_t index, const Producer& produce)
{
    const Destination& destination = m_destinations.at(index);
    const std::string subject = m_walker.describe(destination);
    if (auto made = m_walker.make(std::span{destination}.first(destination.size() - 1)); !made)
        return made;
    m_files.push_back(index); // remembered first: once it is made, no lack of memory may make us forget it
    const FileHandle file{SystemCalls::openAt(m_walker.directory(), destination.back().c_str(),
                                              O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0666)};
    if (!file) {
        const int error = errno;
        m_files.pop_back();
        return notMade(error, subject);
    }
    std::uint64_t position = 0;
    return produce([&](std::span<const std::byte> bytes) { return writeAll(file, position, bytes, subject); });
}

Expected<void, ErrorCode2> OutputTree::Data::keep()
{
    if (auto made = m_walker.make({}); !made)
        return made;
    m_files.clear();
    m_walker.keepMadeDirectories();
    return {};
}

OutputTree::OutputTree(std::unique_ptr<Data> data) noexcept : m_data{std::move(data)} {}
OutputTree::OutputTree(OutputTree&&) noexcept = default;
OutputTree::~OutputTree() = default;

Expected<OutputTree, ErrorCode2> OutputTree::plan(const FilePath2& root, std::vector<Destination> destinations)
{
    auto native = nativePath(root);
    if (!native)
        return native.error();
    auto walker = DirectoryWalker::open(*std::move(native), displayedPath(root));
    if (!walker)
        return walker.error();
    auto data = std::make_unique<Data>(*std::move(walker), std::move(destinations));
    if (auto checked = data->check(); !checked)
        return checked.error();
    return OutputTree{std::move(data)};
}

Expected<void, ErrorCode2> OutputTree::write(std::size_t index, const Producer& produce)
{
    return m_data->write(index, produce);
}

Expected<void, ErrorCode2> OutputTree::keep()
{
    return m_data->keep();
}

} // namespace Kelvaris::System::Disk
