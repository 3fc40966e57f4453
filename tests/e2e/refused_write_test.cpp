#include "tests/e2e/host_program.h"

#include "tests/support/noise.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Writing into places that do not take what is written.
class RefusedWrite : public testing::Test
{
protected:
    RefusedWrite()
    {
        fs::permissions(folder.path(), fs::perms{0755}); // so that others get as far as the directory
        fs::create_directory(directory);
        EXPECT_EQ(runHost({"call", "_create_example", source.string(), example.string(), "title"}),
                  (ProgramEnd{0, "OK\n", ""}));
        for (const char* old : {"out/example.kvbdl.zip", "out/barrel.kvexs"})
            folder.write(old, "what stood here before");
        before = filesBelow(folder.path());
    }

    /// Calls a function as `scene` does it: commands of a shell that find the directory in "$1" and the call behind it.
    ProgramEnd callIn(const std::string& scene, const std::vector<std::string>& call)
    {
        std::vector<std::string> words{"-c", scene, "sh", directory.string(), HOLLERWICK_HOST, "call"};
        words.insert(words.end(), call.begin(), call.end());
        return runProgram(QStringLiteral("/bin/sh"), words);
    }

    /// Each function that writes says why it could not, and what stood there stands there.
    void expectRefused(const std::string& scene, const std::string& reason)
    {
        const std::string bundle = directory / "example.kvbdl.zip";
        const auto created = callIn(scene, {"_create_example", source.string(), bundle, "title"});
        EXPECT_EQ(created.status, 0) << created;
        EXPECT_THAT(created.output, AllOf(StartsWith("FAILED: "), HasSubstr(bundle), HasSubstr(reason))) << created;

        const std::string barrel = directory / "barrel.kvexs";
        const auto packed = callIn(scene, {"_create_examples", example.string(), barrel});
        EXPECT_EQ(packed.status, 0) << packed;
        EXPECT_THAT(packed.output, AllOf(StartsWith("FAILED: "), HasSubstr(barrel), HasSubstr(reason))) << packed;

        const std::string design = directory / "design";
        const auto unpacked = callIn(scene, {"_unpack_content_bundle", example.string(), design});
        EXPECT_EQ(unpacked.output, "FAILED\n") << unpacked;
        EXPECT_THAT(unpacked.errors, AllOf(HasSubstr(design), HasSubstr(reason))) << unpacked;

        EXPECT_TRUE(filesBelow(folder.path()) == before);
        std::error_code ignored;
        EXPECT_FALSE(fs::exists(design, ignored));
    }

    /// Whether the process may make a view of the file system of its own.
    static bool mayMount() { return runProgram(QStringLiteral("/bin/sh"), {"-c", "unshare -m true"}).status == 0; }

    TemporaryFolder folder;
    fs::path source = folder.write("design/top.kvsch", std::string(70'000, 's') + noise(900'000));
    fs::path example = folder / "top.kvbdl.zip";
    fs::path directory = folder / "out";
    std::map<std::string, std::string> before;
};

} // namespace

TEST_F(RefusedWrite, BeyondTheLargestFileThatIsAllowedIsToldAndHarmless)
{
    expectRefused("shift && ulimit -f 100 && exec \"$@\"", "File too large");
}

TEST_F(RefusedWrite, OnAFullDiskIsToldAndHarmless)
{
    if (!mayMount())
        GTEST_SKIP() << "no right to mount a small disk";
    // the disk goes with the process that mounts it, which therefore looks for remains itself
    expectRefused(
        "unshare -m sh -c '"
        "disk=$1; shift; mount -t tmpfs -o size=200k none \"$disk\" && \"$@\" && test -z \"$(ls -A \"$disk\")\"'"
        " sh \"$@\"",
        "No space left on device");
}

TEST_F(RefusedWrite, OnAReadOnlyDiskIsToldAndHarmless)
{
    if (!mayMount())
        GTEST_SKIP() << "no right to mount a read-only disk";
    expectRefused("unshare -m sh -c '"
                  "disk=$1; shift; mount --bind \"$disk\" \"$disk\" && mount -o remount,bind,ro \"$disk\" && exec "
                  "\"$@\"' sh \"$@\"",
                  "Read-only file system");
}

TEST_F(RefusedWrite, WithoutPermissionIsToldAndHarmless)
{
    if (geteuid() != 0) {
        fs::permissions(directory, fs::perms{0555});
        expectRefused("shift && exec \"$@\"", "Permission denied");
        fs::permissions(directory, fs::perms{0755});
        return;
    }
    const std::string other = "setpriv --reuid=65534 --regid=65534 --clear-groups ";
    if (callIn("shift && exec " + other + "\"$@\"", {"_filename", "a/b"}).output != "b\n")
        GTEST_SKIP() << "another user cannot run the program here";
    expectRefused("shift && exec " + other + "\"$@\"", "Permission denied");
}

TEST_F(RefusedWrite, UnderAPathThatIsTooLongIsToldAndHarmless)
{
    std::string deep;
    while (deep.size() < 5'000)
        deep += "directory/";
    for (const std::string& longPath : {std::string(5'000, 'n'), deep}) {
        directory = folder / "out" / longPath;
        expectRefused("shift && exec \"$@\"", "File name too long");
    }
}
