#include "host/core/paths/disk/input_file.h"

#include "tests/host/core/paths/disk/disk_testing.h"
#include "tests/support/noise.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

using namespace Kelvaris::System;
using Disk::InputFile;
namespace fs = std::filesystem;

namespace {

std::string readAll(const InputFile& file)
{
    std::vector<std::byte> bytes(file.size());
    file.readAt(0, bytes).value();
    return textOf(bytes);
}

ErrorCode2 failureOf(const fs::path& path)
{
    return InputFile::open(filePath(path)).error();
}

} // namespace

TEST(InputFile, ReadsAnyStretchOfAFile)
{
    const TemporaryFolder folder;
    const auto file = InputFile::open(filePath(folder.write("a ü.txt", "0123456789"))).value();
    std::vector<std::byte> bytes(4);
    ASSERT_TRUE(file.readAt(3, bytes));
    EXPECT_EQ(textOf(bytes), "3456");
    EXPECT_EQ(file.size(), 10U);
    EXPECT_EQ(readAll(file), "0123456789");
}

TEST(InputFile, ReadsUpToTheEnd)
{
    const TemporaryFolder folder;
    const auto file = InputFile::open(filePath(folder.write("a", "0123456789"))).value();
    std::vector<std::byte> bytes(8);
    EXPECT_EQ(file.readUpTo(6, bytes).value(), 4U);
    EXPECT_EQ(file.readUpTo(10, bytes).value(), 0U);
    EXPECT_EQ(file.readUpTo(100, bytes).value(), 0U);
}

TEST(InputFile, FollowsALink)
{
    const TemporaryFolder folder;
    folder.write("a", "bytes");
    fs::create_symlink("a", folder / "link");
    EXPECT_EQ(readAll(InputFile::open(filePath(folder / "link")).value()), "bytes");
}

TEST(InputFile, AMissingFileIsTheSystemsErrorWithThePath)
{
    const TemporaryFolder folder;
    const auto error = failureOf(folder / "no such file");
    EXPECT_EQ(error, systemCode(ENOENT));
    EXPECT_NE(messageOf(error).find("no such file"), std::string::npos) << messageOf(error);
}

TEST(InputFile, ADirectoryIsNoRegularFile)
{
    const TemporaryFolder folder;
    EXPECT_EQ(failureOf(folder.path()), code(CoreError::notARegularFile));
}

TEST(InputFile, ADeviceIsNoRegularFile)
{
    EXPECT_EQ(failureOf("/dev/zero"), code(CoreError::notARegularFile));
    EXPECT_EQ(failureOf("/dev/null"), code(CoreError::notARegularFile));
}

TEST(InputFile, APipeThatNobodyWritesToIsRefusedAtOnce)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(failureOf(folder / "pipe"), code(CoreError::notARegularFile));
}

TEST(InputFile, ASocketIsNoRegularFile)
{
    const TemporaryFolder folder;
    const int handle = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder / "s";
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::memcpy(address.sun_path, path.c_str(), path.size());
    ASSERT_EQ(bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(failureOf(path), code(CoreError::notARegularFile));
    close(handle);
}

TEST(InputFile, APathThatHoldsANulIsRefused)
{
    const TemporaryFolder folder;
    const std::wstring path = filePath(folder.write("a", "bytes")).c_str() + std::wstring{L"\0b", 2};
    EXPECT_EQ(InputFile::open(FilePath2{path.data(), path.size()}).error(), systemCode(EINVAL));
}

TEST(InputFile, APathThatIsNoTextIsRefused)
{
    const wchar_t path[] = {L'/', static_cast<wchar_t>(0xd800)};
    EXPECT_EQ(InputFile::open(FilePath2{path, 2}).error(), code(CoreError::invalidText));
}

TEST(InputFile, TheEmptyPathIsRefusedByItsName)
{
    const ErrorCode2 error = InputFile::open(FilePath2{}).error();
    EXPECT_EQ(error, systemCode(ENOENT));
    EXPECT_TRUE(messageOf(error).starts_with("the empty path: cannot be opened")) << messageOf(error);
}

TEST(InputFile, APathOf5000CharactersIsRefused)
{
    EXPECT_EQ(failureOf("/" + std::string(5000, 'x')), systemCode(ENAMETOOLONG));
}

TEST(InputFile, AFileThatIsTruncatedWhileOpenIsAnErrorAndNotASignal)
{
    const TemporaryFolder folder;
    const auto path = folder.write("a", noise(100'000));
    const auto file = InputFile::open(filePath(path)).value();
    fs::resize_file(path, 50'000);
    std::vector<std::byte> bytes(60'000);
    const auto read = file.readAt(0, bytes);
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error(), code(CoreError::fileTruncated));
    EXPECT_NE(messageOf(read.error()).find(path.filename().string()), std::string::npos);
}

TEST(InputFile, AFileThatIsReplacedWhileOpenKeepsItsBytes)
{
    const TemporaryFolder folder;
    const auto path = folder.write("a", "the old bytes");
    const auto file = InputFile::open(filePath(path)).value();
    fs::rename(folder.write("b", "new"), path);
    EXPECT_EQ(readAll(file), "the old bytes");
}
