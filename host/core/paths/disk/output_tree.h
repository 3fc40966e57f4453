#pragma once

#include "host/core/paths/disk/byte_sink.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Kelvaris::System::Disk {

/// New files below one directory: all of them or none.
///
/// Every destination is checked before the first byte is written. Links below the root are never followed, files that
/// exist are never overwritten, and unless all ends with `keep`, exactly what was made is removed again.
class KELVARIS_CORE_API OutputTree
{
public:
    /// A path below the root as the names on the way, UTF-8; the last one is the file.
    using Destination = std::vector<std::string>;

    /// Writes a file's bytes to the sink that it is given.
    using Producer = std::function<Expected<void, ErrorCode2>(const ByteSink&)>;

    /// Checks all destinations; writes nothing.
    /// @param root  made, with the directories above it, when the first file is written or all is kept
    /// @return  opc 24 when a destination has no names, or one that is "", "." or "..", holds "/" or a NUL, is no
    ///          UTF-8, or is longer than the platform allows, alone or as a path, or when a link or a file stands where
    ///          a directory is needed; opc 25 when it exists; opc 26 when two are equal or one lies below another; else
    ///          the system's error
    static Expected<OutputTree, ErrorCode2> plan(const FilePath2& root, std::vector<Destination> destinations);

    OutputTree(OutputTree&&) noexcept;
    OutputTree& operator=(OutputTree&&) = delete;

    /// Removes what was made, unless it was kept.
    ~OutputTree();

    /// Makes the file of destination `index`, and the directories on the way, and fills it.
    /// @return  the error of `produce`, opc 24 and 25 for what has changed since the check, or the system's error
    Expected<void, ErrorCode2> write(std::size_t index, const Producer& produce);

    /// Makes the root even when there was nothing to write, and lets go of what was made.
    Expected<void, ErrorCode2> keep();

private:
    class Data;

    explicit OutputTree(std::unique_ptr<Data> data) noexcept;

    std::unique_ptr<Data> m_data;
};

} // namespace Kelvaris::System::Disk
