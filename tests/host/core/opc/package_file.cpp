#include "tests/host/core/opc/package_file.h"

#include "host/core/opc/zip/archive.h"
#include "host/core/opc/zip/archive_writer.h"
#include "host/core/text/text_view.h"

#include <gtest/gtest.h>

#include <span>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

Zip::ArchivePtr openArchive(const std::filesystem::path& path)
{
    return Zip::Archive::open(Zip::openFileSource(toFilePath2(path)).value()).value();
}

} // namespace

FilePath2 toFilePath2(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return FilePath2{text.data(), text.size()};
}

std::string toStdString(const String2& text)
{
    return std::string{Text::narrow(text)};
}

String2 toString2(std::string_view text)
{
    return Text::toString2(text);
}

ErrorCode2 code(OpcError value)
{
    return {static_cast<int>(value), opc_error_category()};
}

ErrorCode2 code(IO::Bundle::BundleError value)
{
    return {static_cast<int>(value), IO::Bundle::bundle_error_category()};
}

PackageFile& PackageFile::add(std::string name, std::string_view bytes)
{
    m_entries.emplace_back(std::move(name), bytes);
    return *this;
}

PackageFile& PackageFile::addContentTypes(std::string_view more)
{
    std::string text = R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
                       R"(<Default Extension="rels" )"
                       R"(ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
                       R"(<Default Extension="xml" ContentType="application/xml"/>)"
                       R"(<Default Extension="txt" ContentType="text/plain"/>)";
    text += more;
    return add("[Content_Types].xml", text + "</Types>");
}

PackageFile& PackageFile::addRelationships(std::string_view elements)
{
    std::string text = R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)";
    text += elements;
    return add("_rels/.rels", text + "</Relationships>");
}

void PackageFile::write(const std::filesystem::path& path) const
{
    auto file = Disk::ReplacementFile::create(toFilePath2(path)).value();
    Zip::PayloadStore store;
    Zip::ArchiveWriter writer{file};
    for (const auto& [name, bytes] : m_entries) {
        auto payload = store.take(std::as_bytes(std::span{bytes}), Zip::Effort::normal).value();
        writer.add(name, *payload).value();
    }
    writer.finish().value();
    file.commit().value();
}

std::vector<std::pair<std::string, std::string>> readEntries(const std::filesystem::path& path)
{
    const Zip::ArchivePtr archive = openArchive(path);
    std::vector<std::pair<std::string, std::string>> entries;
    for (std::size_t index = 0; index < archive->entries().size(); ++index) {
        std::string bytes;
        const auto append = [&](std::span<const std::byte> piece) -> Expected<void, ErrorCode2> {
            bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
            return {};
        };
        archive->stream(index, append).value();
        entries.emplace_back(archive->entries()[index].name, std::move(bytes));
    }
    return entries;
}

std::vector<std::string> entryNames(const std::filesystem::path& path)
{
    std::vector<std::string> names;
    const Zip::ArchivePtr archive = openArchive(path);
    for (const Zip::Entry& entry : archive->entries())
        names.emplace_back(entry.name);
    return names;
}

std::vector<std::pair<std::string, std::string>> readRawEntries(const std::filesystem::path& path)
{
    const std::string bytes = readFile(path);
    const Zip::ArchivePtr archive = openArchive(path);
    std::vector<std::pair<std::string, std::string>> entries;
    for (const Zip::Entry& entry : archive->entries())
        entries.emplace_back(entry.name, bytes.substr(entry.headerOffset, entry.regionEnd - entry.headerOffset));
    return entries;
}
