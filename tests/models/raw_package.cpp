#include "tests/models/raw_package.h"

#include "tests/models/package_fixtures.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr std::string_view contentType =
    "http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content";

std::uint32_t checksum(std::string_view bytes)
{
    std::uint32_t remainder = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        remainder ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            remainder = (remainder >> 1) ^ (0xEDB88320U & (0U - (remainder & 1U)));
    }
    return ~remainder;
}

void put(std::string& out, std::uint64_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        out += static_cast<char>((value >> (8 * i)) & 0xFFU);
}

// What the local and the central header have in common, from "version needed" to the length of the extra field.
std::string headerFields(const std::string& name, const std::string& bytes)
{
    constexpr std::uint32_t utf8Names = 0x800;
    constexpr std::uint32_t firstOfJanuary1980 = 0x21;
    std::string out;
    put(out, 20, 2);
    put(out, utf8Names, 2);
    put(out, 0, 4);
    put(out, firstOfJanuary1980, 2);
    put(out, checksum(bytes), 4);
    put(out, static_cast<std::uint32_t>(bytes.size()), 4);
    put(out, static_cast<std::uint32_t>(bytes.size()), 4);
    put(out, static_cast<std::uint32_t>(name.size()), 2);
    put(out, 0, 2);
    return out;
}

std::string endRecord(std::size_t count, std::size_t directorySize, std::size_t directoryOffset)
{
    std::string out = "PK\5\6";
    put(out, 0, 4);
    put(out, static_cast<std::uint32_t>(count), 2);
    put(out, static_cast<std::uint32_t>(count), 2);
    put(out, static_cast<std::uint32_t>(directorySize), 4);
    put(out, static_cast<std::uint32_t>(directoryOffset), 4);
    put(out, 0, 2);
    return out;
}

std::string archive(const std::vector<std::pair<std::string, std::string>>& entries)
{
    std::string files;
    std::string directory;
    for (const auto& [name, bytes] : entries) {
        const std::string fields = headerFields(name, bytes);
        directory += "PK\1\2";
        put(directory, 20, 2);
        directory += fields;
        put(directory, 0, 2 + 2 + 2);
        put(directory, 0, 4);
        put(directory, static_cast<std::uint32_t>(files.size()), 4);
        directory += name;
        files += "PK\3\4" + fields + name + bytes;
    }
    return files + directory + endRecord(entries.size(), directory.size(), files.size());
}

} // namespace

RawPackage& RawPackage::part(const std::string& name, const std::string& bytes)
{
    if (!name.ends_with(".txt"))
        m_overrides += "<Override PartName=\"" + name + "\" ContentType=\"application/octet-stream\"/>";
    return entry(name.substr(1), bytes);
}

RawPackage& RawPackage::relationship(const std::string& type, const std::string& target, const std::string& mode)
{
    m_relationships += "<Relationship Id=\"r" + std::to_string(++m_relationshipCount) + "\" Type=\"" + type +
                       "\" Target=\"" + target + "\" TargetMode=\"" + mode + "\"/>";
    return *this;
}

RawPackage& RawPackage::content(const std::string& target, const std::string& mode)
{
    return relationship(std::string{contentType}, target, mode);
}

RawPackage& RawPackage::entry(const std::string& name, const std::string& bytes)
{
    m_entries.emplace_back(name, bytes);
    return *this;
}

Kelvaris::System::FilePath2 RawPackage::write(const TemporaryFolder& folder, std::string_view name) const
{
    return toPath(folder.write(name, archive(allEntries())));
}

bool RawPackage::has(std::string_view name) const
{
    return std::any_of(m_entries.begin(), m_entries.end(), [&](const Entry& each) { return each.first == name; });
}

std::vector<RawPackage::Entry> RawPackage::allEntries() const
{
    std::vector<Entry> entries;
    if (!has("[Content_Types].xml")) {
        entries.emplace_back("[Content_Types].xml",
                             "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
                             "<Default Extension=\"rels\" "
                             "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                             "<Default Extension=\"txt\" ContentType=\"text/plain\"/>" +
                                 m_overrides + "</Types>");
    }
    if (!has("_rels/.rels") && m_relationshipCount > 0) {
        entries.emplace_back("_rels/.rels",
                             "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
                                 m_relationships + "</Relationships>");
    }
    entries.insert(entries.end(), m_entries.begin(), m_entries.end());
    return entries;
}
