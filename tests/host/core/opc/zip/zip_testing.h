#pragma once

#include "host/core/opc/zip/archive.h"

#include "tests/host/core/opc/zip/raw_archive.h"
#include "tests/host/core/paths/disk/disk_testing.h"
#include "tests/support/noise.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Opens an archive in memory. It is called "test.zip".
Kelvaris::System::Expected<Kelvaris::System::IO::OpcPackaging::Zip::ArchivePtr, Kelvaris::System::ErrorCode2>
openBytes(std::string_view bytes);

Kelvaris::System::IO::OpcPackaging::Zip::ArchivePtr openFile(const std::filesystem::path& path);

/// Opens the bytes and reads every entry, in memory and as a stream.
/// @return  "ok", or what the first failure says; both ways must say the same
std::string verdict(std::string_view bytes);

/// "name=content" of each entry, in order.
std::vector<std::string> contents(const Kelvaris::System::IO::OpcPackaging::Zip::Archive& archive);

/// An entry, piece by piece.
Kelvaris::System::Expected<std::string, Kelvaris::System::ErrorCode2>
streamed(const Kelvaris::System::IO::OpcPackaging::Zip::Archive& archive, std::size_t index);
