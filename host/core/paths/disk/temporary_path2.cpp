#include "kelvaris/system/io/temporary_path2.h"

#include "host/core/errors/make_error.h"
#include "host/core/errors/rollback.h"
#include "host/core/paths/disk/native_path.h"
#include "host/core/paths/disk/scratch_file.h"
#include "host/core/paths/disk/system_calls.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/system_error.h"

#include <fcntl.h>

#include <cerrno>
#include <exception>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace Kelvaris::System::IO {

namespace {

/// What is made there is found again wherever the program goes. A "/" at the end stays only for the root.
std::string absoluteTemporaryDirectory()
{
    std::string directory = Disk::temporaryDirectory();
    std::error_code none; // a current directory that is gone: the system tells of it when the directory is made
    if (const std::filesystem::path absolute = std::filesystem::absolute(directory, none); !none)
        directory = absolute.native();
    while (directory.size() > 1 && directory.ends_with('/'))
        directory.pop_back();
    return directory;
}

} // namespace

TemporaryPath2::TemporaryPath2(FilePath2 path) noexcept : m_path{std::move(path)} {}

TemporaryPath2::TemporaryPath2(TemporaryPath2&& other) noexcept : m_path{std::exchange(other.m_path, {})} {}

TemporaryPath2& TemporaryPath2::operator=(TemporaryPath2&& other) noexcept
{
    if (this == &other)
        return *this;
    removeDirectory();
    m_path = std::exchange(other.m_path, {});
    return *this;
}

TemporaryPath2::~TemporaryPath2()
{
    removeDirectory();
}

Expected<TemporaryPath2, ErrorCode2> TemporaryPath2::createTemporaryDirectory()
{
    return Text::withinMemory([]() -> Expected<TemporaryPath2, ErrorCode2> {
        const std::string parent = absoluteTemporaryDirectory();
        std::string path = parent + (parent.ends_with('/') ? "" : "/") + "hollerwick-XXXXXX";
        if (!Text::isValidUtf8(path))
            return Errors::makeError(CoreError::invalidText, Text::displayed(path));
        if (Disk::SystemCalls::makeTemporaryDirectory(path.data()) != 0)
            return Errors::systemError(errno, Text::displayed(parent), "no directory can be made there");
        Errors::Rollback remove{[&] { Disk::SystemCalls::removeAt(AT_FDCWD, path.c_str(), AT_REMOVEDIR); }};
        TemporaryPath2 made{FilePath2{Text::toString2(path)}};
        remove.dismiss();
        return made;
    });
}

Expected<FilePath2, ErrorCode2> TemporaryPath2::detach() &&
{
    if (!(m_path != FilePath2{}))
        return Errors::makeError(CoreError::noFileName, "a temporary directory", "it was given up already");
    return std::exchange(m_path, {});
}

void TemporaryPath2::removeDirectory() noexcept
try {
    const auto native = Disk::nativePath(std::exchange(m_path, {}));
    std::error_code ignored; // there is nobody to tell, and the system empties that directory too
    if (native && !native->empty())
        std::filesystem::remove_all(*native, ignored);
} catch (const std::exception&) {
    // no memory: the same
    return;
}

} // namespace Kelvaris::System::IO
