#include "host/core/opc/growth_hint.h"

#include "host/core/opc/package_data.h"
#include "host/core/opc/zip/archive.h"
#include "host/core/opc/zip/archive_writer.h"
#include "host/core/opc/zip/payload_store.h"
#include "tests/host/core/opc/package_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::growthHintOf;
using OpcPackaging::detail::PackageData;

namespace {

using Bytes = std::vector<std::byte>;

Bytes bytesOf(std::initializer_list<int> values)
{
    Bytes bytes;
    for (const int value : values)
        bytes.push_back(static_cast<std::byte>(value));
    return bytes;
}

const Bytes hint = bytesOf({0x20, 0xA2, 6, 0, 0x28, 0xA0, 2, 0, 0, 0});
const Bytes timestamps = bytesOf({0x55, 0x54, 1, 0, 0});

/// A package of which "a.txt" has this extra field.
void write(const std::filesystem::path& path, const Bytes& extra)
{
    constexpr std::string_view types = "<Types xmlns='http://schemas.openxmlformats.org/package/2006/content-types'>"
                                       "<Default Extension='txt' ContentType='text/plain'/></Types>";
    auto file = Disk::ReplacementFile::create(toFilePath2(path)).value();
    Zip::PayloadStore store;
    Zip::ArchiveWriter writer{file};
    const auto typesPayload = store.take(std::as_bytes(std::span{types}), Zip::Effort::normal).value();
    writer.add("[Content_Types].xml", *typesPayload).value();
    writer.add("a.txt", *store.take({}, Zip::Effort::normal).value(), extra).value();
    writer.finish().value();
    file.commit().value();
}

Bytes hintOf(const std::filesystem::path& path)
{
    const auto source = Zip::openFileSource(toFilePath2(path)).value();
    const auto archive = Zip::Archive::open(source).value();
    return growthHintOf(*source, archive->entries()[1]);
}

Bytes joined(const Bytes& first, const Bytes& second)
{
    Bytes both = first;
    both.insert(both.end(), second.begin(), second.end());
    return both;
}

} // namespace

TEST(GrowthHint, IsFoundAmongOtherFields)
{
    const TemporaryFolder folder;
    write(folder / "p.zip", joined(timestamps, hint));
    EXPECT_EQ(hintOf(folder / "p.zip"), hint);
}

TEST(GrowthHint, IsNoneWhereThereIsNone)
{
    const TemporaryFolder folder;
    write(folder / "p.zip", timestamps);
    EXPECT_EQ(hintOf(folder / "p.zip"), Bytes{});
}

TEST(GrowthHint, OfAnotherSignatureIsNone)
{
    const TemporaryFolder folder;
    write(folder / "p.zip", bytesOf({0x20, 0xA2, 2, 0, 1, 2}));
    EXPECT_EQ(hintOf(folder / "p.zip"), Bytes{});
}

TEST(GrowthHint, StaysWithAPartWhoseBytesChange)
{
    const TemporaryFolder folder;
    write(folder / "p.zip", joined(timestamps, hint));
    const auto package = PackageData::openFile(toFilePath2(folder / "p.zip")).value();
    constexpr std::string_view text = "changed";
    package->setBytes(package->findPart("/a.txt").value(),
                      package->parts().items().take(std::as_bytes(std::span{text}), {}).value());
    ASSERT_TRUE(package->write(toFilePath2(folder / "s.zip")));
    EXPECT_EQ(hintOf(folder / "s.zip"), hint);
    EXPECT_EQ(readEntries(folder / "s.zip")[1].second, "changed");
}
