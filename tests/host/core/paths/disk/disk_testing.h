#pragma once

#include "kelvaris/system/core_error.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"
#include "tests/support/environment_variable.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Between the standard library's paths and texts, which tests speak, and ours.
Kelvaris::System::FilePath2 filePath(const std::filesystem::path& path);
std::filesystem::path stdPath(const Kelvaris::System::FilePath2& path);
std::span<const std::byte> bytesOf(std::string_view text);
std::string textOf(std::span<const std::byte> bytes);
std::string messageOf(const Kelvaris::System::ErrorCode2& error);

Kelvaris::System::ErrorCode2 code(Kelvaris::System::CoreError value);
Kelvaris::System::ErrorCode2 code(Kelvaris::System::IO::OpcPackaging::OpcError value);
Kelvaris::System::ErrorCode2 systemCode(int number);

/// The names of what stands in a directory and below, in order; directories end in "/".
std::vector<std::string> listing(const std::filesystem::path& directory);

/// "no error", or what it says: for messages of tests and for comparisons that read by themselves.
template <class T>
std::string outcome(const Kelvaris::System::Expected<T, Kelvaris::System::ErrorCode2>& result)
{
    return result ? "no error" : messageOf(result.error());
}

/// Runs `body` in a process of its own, so that limits and kills stay there.
/// @return  what `body` returned, 0 to 255, or -1 when a signal ended it
int inChild(const std::function<int()>& body);
