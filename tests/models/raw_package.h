#pragma once

#include "kelvaris/system/file_path2.h"
#include "tests/support/temporary_folder.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A package written entry by entry, stored, so that a test decides about every part of it, also where it breaks a
/// rule.
class RawPackage
{
public:
    /// @param name  with its leading "/"; what ends in ".txt" needs no content type of its own
    RawPackage& part(const std::string& name, const std::string& bytes = "x");

    /// A relationship of the package. @param mode  "Internal" or "External"
    RawPackage& relationship(const std::string& type, const std::string& target, const std::string& mode = "Internal");

    /// The relationship of a content part.
    RawPackage& content(const std::string& target, const std::string& mode = "Internal");

    /// An entry as it is, under its name in the archive. It takes the place of the content types or relationships that
    /// would be written otherwise.
    RawPackage& entry(const std::string& name, const std::string& bytes);

    Kelvaris::System::FilePath2 write(const TemporaryFolder& folder, std::string_view name = "package.zip") const;

private:
    using Entry = std::pair<std::string, std::string>;

    bool has(std::string_view name) const;
    std::vector<Entry> allEntries() const;

    std::vector<Entry> m_entries;
    std::string m_overrides;
    std::string m_relationships;
    int m_relationshipCount = 0;
};
