#pragma once

#include "host/core/opc/package_data.h"
#include "tests/host/core/opc/package_file.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What opening a package and walking all of it comes to: the rule that is broken, or nothing.
using PackageVerdict = std::optional<Kelvaris::System::ErrorCode2>;

PackageVerdict verdictOn(
    const Kelvaris::System::IO::OpcPackaging::detail::Result<Kelvaris::System::IO::OpcPackaging::detail::PackagePtr>&
        package);

PackageVerdict verdictOnFile(const std::filesystem::path& path);
PackageVerdict verdictInMemory(const std::filesystem::path& path);

/// On the file as a part of another package, which is written into `folder`.
PackageVerdict verdictOnNested(const std::filesystem::path& path, const TemporaryFolder& folder);

/// The sentence of a refusal, "opens" without one.
std::string textOf(const PackageVerdict& verdict);

/// Expects that `saved` holds each entry of `original` as it stands there: in its place, with its directory record but
/// for the offset, and its local header, bytes and descriptor.
void expectSameEntries(const std::filesystem::path& saved, const std::filesystem::path& original);
