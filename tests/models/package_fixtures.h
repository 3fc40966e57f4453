#pragma once

#include "host/core/opc/package_inspection.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/io/bundle/content_bundle.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "kelvaris/system/string2.h"
#include "tests/support/temporary_folder.h"

#include <QtCore/QString>

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

inline constexpr const char8_t* contentRelationship =
    u8"http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content";

Kelvaris::System::FilePath2 toPath(const std::filesystem::path& path);

Kelvaris::System::String2 utf8(const QString& text);

/// The message of an error, for what a test prints.
QString messageOf(const Kelvaris::System::ErrorCode2& error);

/// Part names as they stand ("/content/a%20b.txt") or raw paths ("content/a b.txt").
using PartNames = std::vector<const wchar_t*>;

/// Adds a small file under each name as a content part.
void addContent(Kelvaris::System::IO::Bundle::ContentBundle& bundle, const PartNames& names);

std::shared_ptr<Kelvaris::System::IO::Bundle::ContentBundle> contentBundle(const PartNames& names);
std::shared_ptr<Kelvaris::System::IO::Bundle::ExampleBundle> exampleBundle(const PartNames& names);

/// Text of which each compression makes another number of bytes.
std::string compressibleText();

/// Saves the bundle into the folder and gives what the file holds of a part; fails the test when that is nothing.
Kelvaris::System::IO::OpcPackaging::InspectedEntry savedEntry(Kelvaris::System::IO::Bundle::ContentBundle& bundle,
                                                              const TemporaryFolder& folder, std::string_view partName);

/// Writes an example bundle with that title and content.
Kelvaris::System::FilePath2 writeExample(const TemporaryFolder& folder, const char* fileName, const QString& title,
                                         const PartNames& names);

/// A barrel of these example files, under "/examples/0.zip" and so on.
std::unique_ptr<Kelvaris::System::IO::Bundle::BarrelOfExamplesBundle>
barrelOf(std::initializer_list<Kelvaris::System::FilePath2> examples);
