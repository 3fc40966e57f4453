#include "host/core/opc/zip_attributes.h"

#include <gtest/gtest.h>

#include <array>

using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

/// @param system      who made the entry: 0 MS-DOS, 3 Unix, 19 Darwin
/// @param attributes  the external attributes
bool isFileWith(unsigned system, std::uint32_t attributes, std::string_view name = "a.txt")
{
    std::array<std::byte, 46> record{};
    record[5] = static_cast<std::byte>(system);
    for (unsigned byte = 0; byte < 4; ++byte)
        record[38 + byte] = static_cast<std::byte>(attributes >> (8 * byte));
    Zip::Entry entry;
    entry.name = name;
    entry.record = record;
    return Kelvaris::System::IO::OpcPackaging::detail::isFile(entry);
}

constexpr std::uint32_t unixMode(std::uint32_t mode)
{
    return mode << 16U;
}

} // namespace

TEST(ZipAttributes, PlainFilesAreFiles)
{
    EXPECT_TRUE(isFileWith(0, 0));
    EXPECT_TRUE(isFileWith(0, 0x21)) << "read-only and archived";
    EXPECT_TRUE(isFileWith(3, unixMode(0100644)));
    EXPECT_TRUE(isFileWith(3, 0)) << "a writer that tells no mode";
    EXPECT_TRUE(isFileWith(3, unixMode(0644))) << "a writer that tells no kind";
}

TEST(ZipAttributes, DirectoriesAndLabelsAreNone)
{
    EXPECT_FALSE(isFileWith(0, 0x10));
    EXPECT_FALSE(isFileWith(0, 0x08));
    EXPECT_FALSE(isFileWith(0, 0, "directory/"));
    EXPECT_FALSE(isFileWith(3, unixMode(040755)));
}

TEST(ZipAttributes, LinksAndDevicesOfUnixAreNone)
{
    EXPECT_FALSE(isFileWith(3, unixMode(0120777)));
    EXPECT_FALSE(isFileWith(19, unixMode(0120777)));
    EXPECT_FALSE(isFileWith(3, unixMode(060600)));
    EXPECT_FALSE(isFileWith(3, unixMode(010600)));
}

TEST(ZipAttributes, ModesOfOtherSystemsMeanNothing)
{
    EXPECT_TRUE(isFileWith(0, unixMode(0120777)));
}
