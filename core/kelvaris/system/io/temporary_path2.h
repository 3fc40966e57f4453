#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"

namespace Kelvaris::System::IO {

/// Owns a temporary directory and removes it with everything in it, unless it was detached.
class KELVARIS_CORE_API TemporaryPath2
{
public:
    /// Makes a new, empty directory that only this user can enter, below the system's directory for temporary files
    /// (`TMPDIR`, else "/tmp"). Its path is absolute.
    /// @return  the system's error when it cannot be made
    static Expected<TemporaryPath2, ErrorCode2> createTemporaryDirectory();

    TemporaryPath2(const TemporaryPath2&) = delete;
    TemporaryPath2(TemporaryPath2&& other) noexcept;
    TemporaryPath2& operator=(const TemporaryPath2&) = delete;
    TemporaryPath2& operator=(TemporaryPath2&& other) noexcept;
    ~TemporaryPath2();

    /// Where the directory is; the empty path after `detach()`.
    const FilePath2& path() const noexcept { return m_path; }

    /// Gives the directory up: it stays, and is the caller's from now on.
    /// @return  core 2 when there is no directory left to give up
    Expected<FilePath2, ErrorCode2> detach() &&;

private:
    explicit TemporaryPath2(FilePath2 path) noexcept;

    void removeDirectory() noexcept;

    FilePath2 m_path;
};

} // namespace Kelvaris::System::IO
