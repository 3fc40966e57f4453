#include "authoring/bundle_part_uris.h"

#include "authoring/path_conversion.h"
#include "kelvaris/system/runtime_error.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

using namespace Kelvaris::System;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;
using testing::Throws;
using testing::ThrowsMessage;

constexpr const char* outside = "secondary file must exist within the directory hierarchy of the primary file: ";

/// The part names, one after the other with a blank between them.
std::string uris(const std::vector<fs::path>& files, std::wstring_view folder = L"content")
{
    std::vector<FilePath2> paths;
    for (const fs::path& file : files)
        paths.push_back(Authoring::toFilePath2(file));
    std::string joined;
    for (const auto& uri : Authoring::bundlePartUris(folder, paths)) {
        const String2 text = uri.toString().value();
        joined += joined.empty() ? "" : " ";
        joined += reinterpret_cast<const char*>(text.data());
    }
    return joined;
}

class BundlePartUris : public testing::Test
{
protected:
    TemporaryFolder folder;
    fs::path top = folder.write("design/top.kvsch", "top");
};

class BundlePartUrisOfRelativePaths : public BundlePartUris
{
protected:
    BundlePartUrisOfRelativePaths() { fs::current_path(folder / "design"); }
    ~BundlePartUrisOfRelativePaths() override { fs::current_path(m_before); }

private:
    fs::path m_before = fs::current_path();
};

TEST_F(BundlePartUris, OneFileStandsUnderTheFolderByItsName)
{
    EXPECT_EQ(uris({top}), "/content/top.kvsch");
    EXPECT_EQ(uris({top}, L"examples"), "/examples/top.kvsch");
}

TEST_F(BundlePartUris, AFileBesideThePrimaryFileStandsBesideIt)
{
    EXPECT_EQ(uris({top, folder.write("design/a.va", "")}), "/content/top.kvsch /content/a.va");
}

TEST_F(BundlePartUris, AFileInASubdirectoryKeepsTheSubdirectory)
{
    EXPECT_EQ(uris({top, folder.write("design/models/deep/a.va", "")}), "/content/top.kvsch /content/models/deep/a.va");
}

TEST_F(BundlePartUris, KeepTheOrderOfTheFiles)
{
    EXPECT_EQ(uris({top, folder.write("design/z.va", ""), folder.write("design/a.va", "")}),
              "/content/top.kvsch /content/z.va /content/a.va");
}

TEST_F(BundlePartUris, AFileInTheParentDirectoryIsRefused)
{
    const fs::path other = folder.write("other.va", "");
    EXPECT_THAT([&] { uris({top, other}); }, ThrowsMessage<RuntimeError>(outside + other.string()));
}

TEST_F(BundlePartUris, AFileBehindALinkThatLeadsOutIsRefusedUnderTheNameThatWasGiven)
{
    folder.write("elsewhere/a.va", "");
    fs::create_directory_symlink(folder / "elsewhere", folder / "design/models");
    const fs::path linked = folder / "design/models/a.va";
    EXPECT_THAT([&] { uris({top, linked}); }, ThrowsMessage<RuntimeError>(outside + linked.string()));
}

TEST_F(BundlePartUris, ALinkInsideOfTheTreeStandsWhereItLeadsTo)
{
    folder.write("design/models/a.va", "");
    fs::create_symlink("models/a.va", folder / "design/alias.va");
    EXPECT_EQ(uris({top, folder / "design/alias.va"}), "/content/top.kvsch /content/models/a.va");
}

TEST_F(BundlePartUris, ThePrimaryFilesDirectoryMayBeReachedThroughALink)
{
    const fs::path model = folder.write("design/a.va", "");
    fs::create_directory_symlink(folder / "design", folder / "latest");
    EXPECT_EQ(uris({folder / "latest/top.kvsch", model}), "/content/top.kvsch /content/a.va");
}

TEST_F(BundlePartUris, APathThatOnlySeemsToLeaveTheTreeIsAccepted)
{
    folder.write("design/sub/b.va", "");
    folder.write("design/a.va", "");
    EXPECT_EQ(uris({top, folder / "design/sub/../a.va", folder / "design/../design/sub/b.va"}),
              "/content/top.kvsch /content/a.va /content/sub/b.va");
}

TEST_F(BundlePartUris, AFileBesideThePrimaryFileWhoseNameBeginsWithTwoDotsIsRefused)
{
    const fs::path dotted = folder.write("design/..models.va", "");
    EXPECT_THAT([&] { uris({top, dotted}); }, ThrowsMessage<RuntimeError>(outside + dotted.string()));
}

TEST_F(BundlePartUris, AFileInASubdirectoryWhoseNameBeginsWithTwoDotsIsRefused)
{
    const fs::path dotted = folder.write("design/..models/a.va", "");
    EXPECT_THAT([&] { uris({top, dotted}); }, ThrowsMessage<RuntimeError>(outside + dotted.string()));
}

TEST_F(BundlePartUris, TwoDotsFurtherBehindAreAnOrdinaryName)
{
    EXPECT_EQ(uris({top, folder.write("design/models/..a.va", "")}), "/content/top.kvsch /content/models/..a.va");
}

TEST_F(BundlePartUris, ThePrimaryFileIsNotExaminedAndMayBeginWithTwoDots)
{
    EXPECT_EQ(uris({folder / "design/..top.kvsch"}), "/content/..top.kvsch");
}

TEST_F(BundlePartUris, NeitherFileNeedsToExist)
{
    EXPECT_EQ(uris({folder / "nowhere/top.kvsch", folder / "nowhere/sub/./a.va"}),
              "/content/top.kvsch /content/sub/a.va");
}

TEST_F(BundlePartUris, BothSeparatorsCountInThePrimaryFilesPath)
{
    const std::string path = "C:\\designs\\filter\\top.kvsch";
    EXPECT_EQ(uris({path}), "/content/top.kvsch");
    EXPECT_EQ(uris({(folder / "design").string() + "\\top.kvsch", folder.write("design/a.va", "")}),
              "/content/top.kvsch /content/a.va");
}

TEST_F(BundlePartUris, BothSeparatorsCountInASecondaryFilesPath)
{
    folder.write("design/models/a.va", "");
    const std::string directory = (folder / "design").string();
    EXPECT_EQ(uris({directory + "\\top.kvsch", directory + "\\models\\a.va"}),
              "/content/top.kvsch /content/models/a.va");
    EXPECT_EQ(uris({top, directory + "\\models/a.va"}), "/content/top.kvsch /content/models/a.va");
}

TEST_F(BundlePartUris, TheMessageShowsTheFileAsItWasGivenWithSlashes)
{
    const fs::path given = (folder / "design").string() + "//sub/..//../other\\b.va";
    EXPECT_THAT(
        [&] {
            uris({top, given});
        },
        ThrowsMessage<RuntimeError>(outside + (folder / "design").string() + "//sub/..//../other/b.va"));
}

TEST_F(BundlePartUris, ANameIsKeptWhateverItsCharacters)
{
    EXPECT_EQ(uris({folder / "design/50% #1?.kvsch", folder / "design/Über/trager.va"}),
              "/content/50%25%20%231%3F.kvsch /content/%C3%9Cber/trager.va");
}

TEST_F(BundlePartUris, APrimaryFileInTheRootHasTheRootForItsDirectory)
{
    EXPECT_EQ(uris({"/top.kvsch", "/not there/a.va"}), "/content/top.kvsch /content/not%20there/a.va");
    EXPECT_EQ(uris({"//top.kvsch", "/not there/a.va"}), "/content/top.kvsch /content/not%20there/a.va");
}

TEST_F(BundlePartUris, APathWhoseLinksGoRoundInACircleRaisesTheFileSystemsError)
{
    fs::create_symlink("circle.va", folder / "design/circle.va");
    EXPECT_THAT(
        [&] {
            uris({top, folder / "design/circle.va"});
        },
        ThrowsMessage<fs::filesystem_error>(AllOf(HasSubstr("weakly_canonical"), HasSubstr("circle.va"))));
}

TEST_F(BundlePartUris, AnEmptyListIsRefusedWithASentence)
{
    EXPECT_THAT([] { uris({}); }, ThrowsMessage<RuntimeError>(StartsWith("the list of files is empty")));
}

TEST_F(BundlePartUrisOfRelativePaths, ABareNameHasTheWorkingDirectoryForItsDirectory)
{
    folder.write("design/models/a.va", "");
    EXPECT_EQ(uris({"top.kvsch", "models/a.va"}), "/content/top.kvsch /content/models/a.va");
    EXPECT_EQ(uris({"top.kvsch", folder / "design/models/a.va"}), "/content/top.kvsch /content/models/a.va");
}

TEST_F(BundlePartUrisOfRelativePaths, FilesThatDoNotExistAreComparedAllTheSame)
{
    EXPECT_EQ(uris({"later/top.kvsch", folder / "design/later/a.va"}), "/content/top.kvsch /content/a.va");
}

TEST_F(BundlePartUrisOfRelativePaths, AFileInTheParentDirectoryIsRefused)
{
    EXPECT_THAT(
        [] {
            uris({"top.kvsch", "../other.va"});
        },
        ThrowsMessage<RuntimeError>(std::string{outside} + "../other.va"));
}

} // namespace
