#pragma once

#include "host/core/opc/zip/payload_store.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/bundle/bundle_error.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"
#include "kelvaris/system/string2.h"
#include "tests/support/temporary_folder.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

Kelvaris::System::FilePath2 toFilePath2(const std::filesystem::path& path);
std::string toStdString(const Kelvaris::System::String2& text);
Kelvaris::System::String2 toString2(std::string_view text);

/// Codes to compare errors with.
Kelvaris::System::ErrorCode2 code(Kelvaris::System::IO::OpcPackaging::OpcError value);
Kelvaris::System::ErrorCode2 code(Kelvaris::System::IO::Bundle::BundleError value);

/// A ZIP file made entry by entry, so that a test can break any rule of packages.
class PackageFile
{
public:
    PackageFile& add(std::string name, std::string_view bytes);
    /// With Defaults for "rels", "xml" and "txt".
    PackageFile& addContentTypes(std::string_view more = {});
    /// "/_rels/.rels" from the Relationship elements in `elements`.
    PackageFile& addRelationships(std::string_view elements);

    void write(const std::filesystem::path& path) const;

private:
    std::vector<std::pair<std::string, std::string>> m_entries;
};

/// Names and bytes of a ZIP file's entries, in order; fails the test when it cannot be read.
std::vector<std::pair<std::string, std::string>> readEntries(const std::filesystem::path& path);

/// The names alone.
std::vector<std::string> entryNames(const std::filesystem::path& path);

/// The file's bytes from the local header of each entry to the next one, by the entry's name: what must not change when
/// an entry is carried along.
std::vector<std::pair<std::string, std::string>> readRawEntries(const std::filesystem::path& path);
