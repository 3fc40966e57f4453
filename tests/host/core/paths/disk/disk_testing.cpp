#include "tests/host/core/paths/disk/disk_testing.h"

#include "host/core/text/text_view.h"
#include "kelvaris/system/error_category2.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

using namespace Kelvaris::System;
namespace fs = std::filesystem;

FilePath2 filePath(const fs::path& path)
{
    const std::u8string text = path.u8string();
    return {text.data(), text.size()};
}

fs::path stdPath(const FilePath2& path)
{
    return Text::toUtf8(path.c_str()); // the standard library's conversion would ask the locale
}

std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span{text});
}

std::string textOf(std::span<const std::byte> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string messageOf(const ErrorCode2& error)
{
    const Kelvaris::System::detail::StringIntermediary text{error};
    return {text.data(), text.length()};
}

ErrorCode2 code(CoreError value)
{
    return {static_cast<int>(value), core_error_category()};
}

ErrorCode2 code(IO::OpcPackaging::OpcError value)
{
    return {static_cast<int>(value), IO::OpcPackaging::opc_error_category()};
}

ErrorCode2 systemCode(int number)
{
    return {number, system_error_category()};
}

std::vector<std::string> listing(const fs::path& directory)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator{directory}) {
        const bool isDirectory = entry.is_directory() && !entry.is_symlink();
        names.push_back(entry.path().lexically_relative(directory).string() + (isDirectory ? "/" : ""));
    }
    std::sort(names.begin(), names.end());
    return names;
}

int inChild(const std::function<int()>& body)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(body());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
