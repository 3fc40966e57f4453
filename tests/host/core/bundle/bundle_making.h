#pragma once

#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "tests/host/core/opc/package_file.h"
#include "tests/host/core/opc/package_walks.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Adds a file with these bytes to an example, as "/content/..." of the raw path.
void addText(Kelvaris::System::IO::Bundle::ExampleBundle& example, const TemporaryFolder& folder, std::string_view path,
             std::string_view bytes);

/// Writes an example of that title with the files "amp.kvsch" and "sub/amp.txt", and gives its path.
std::filesystem::path writeExample(const TemporaryFolder& folder, std::string_view fileName, std::string_view title);

/// The files below a directory, their paths relative to it with "/", sorted.
std::vector<std::string> filesBelow(const std::filesystem::path& directory);

/// Opens the file as it would be if nothing but its bytes were there, and walks all of it.
void expectVerified(const std::filesystem::path& path);
