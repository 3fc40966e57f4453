#include "kelvaris/system/io/temporary_path2.h"

#include "host/core/errors/make_error.h"
#include "host/core/paths/disk/native_path.h"
#include "host/core/paths/disk/scratch_file.h"
#include "host/core/paths/disk/system_calls.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/system_error.h"

#include <cerrno>
#include <exception>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace Kelvaris::System::IO {

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
    std::string pattern = Disk::temporaryDirectory() + "/hollerwick-XXXXXX";
    if (!Text::isValidUtf8(pattern))
        return Errors::makeError(CoreError::invalidText, Text::displayed(pattern));
    if (Disk::SystemCalls::makeTemporaryDirectory(pattern.data()) != 0)
        return Errors::systemError(errno, Text::displayed(Disk::temporaryDirectory()),
                                   "no directory can be made there");
    return TemporaryPath2{FilePath2{Text::toString2(pattern)}};
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
