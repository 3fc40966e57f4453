#include "authoring/example_bundle_walk.h"

#include "authoring/barrel_creation.h"
#include "authoring/example_creation.h"
#include "authoring/path_conversion.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string>& debugLines()
{
    static std::vector<std::string> lines;
    return lines;
}

void keepLine(QtMsgType, const QMessageLogContext&, const QString& line)
{
    debugLines().push_back(line.toStdString());
}

class FindExampleBundles : public testing::Test
{
protected:
    FindExampleBundles()
    {
        debugLines().clear();
        m_before = qInstallMessageHandler(&keepLine);
        fs::create_directory(folder / "found");
    }
    ~FindExampleBundles() override { qInstallMessageHandler(m_before); }

    fs::path writeExample(const std::string& name, const Authoring::ExampleTexts& texts)
    {
        const fs::path path = folder / ("found/" + name);
        fs::create_directories(path.parent_path());
        Authoring::createExample({Authoring::toFilePath2(folder.write("design/top.kvsch", "top"))},
                                 Authoring::toFilePath2(path), texts)
            .value();
        return path;
    }

    fs::path writeExample(const std::string& name) { return writeExample(name, {u8"Title", {}, {}, {}}); }

    std::vector<PrototypeExamplesEntry> entries() const
    {
        return Authoring::findExampleBundles(Authoring::toFilePath2(folder / "found"));
    }

    std::vector<std::string> titles() const
    {
        std::vector<std::string> titles;
        for (const PrototypeExamplesEntry& entry : entries())
            titles.push_back(entry.title.toStdString());
        std::ranges::sort(titles);
        return titles;
    }

    TemporaryFolder folder;
    LogCapture log;

private:
    QtMessageHandler m_before = nullptr;
};

TEST_F(FindExampleBundles, AnEmptyDirectoryHasNone)
{
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(FindExampleBundles, ReadsTitleDescriptionAndKeywords)
{
    Authoring::ExampleTexts texts{u8"Tiefpaß 😀", u8"second order", u8"", {}};
    texts.keywords.push_back(u8"filter").value();
    texts.keywords.push_back(u8"low pass").value();
    writeExample("a.kvbdl.zip", texts);

    const auto found = entries();

    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].title.toStdString(), "Tiefpaß 😀");
    EXPECT_EQ(found[0].description.toStdString(), "second order");
    EXPECT_EQ(found[0].keywords.join(QLatin1Char{'|'}).toStdString(), "filter|low pass");
}

TEST_F(FindExampleBundles, WithoutDescriptionAndKeywordsTheseAreEmpty)
{
    writeExample("a.kvbdl.zip");
    ASSERT_EQ(entries().size(), 1U);
    EXPECT_TRUE(entries()[0].description.isEmpty());
    EXPECT_TRUE(entries()[0].keywords.isEmpty());
}

TEST_F(FindExampleBundles, LooksIntoSubdirectories)
{
    writeExample("a.kvbdl.zip", {u8"A", {}, {}, {}});
    writeExample("x/y/b.kvbdl.zip", {u8"B", {}, {}, {}});
    EXPECT_THAT(titles(), ElementsAre("A", "B"));
}

TEST_F(FindExampleBundles, ANameWithAnyLetterInUpperCaseIsNotTaken)
{
    writeExample("a.Kvbdl.zip");
    writeExample("b.kvbdl.ZIP");
    writeExample("c.KVBDL.ZIP");
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(FindExampleBundles, ANameThatEndsInZipAloneIsNotTaken)
{
    writeExample("a.zip");
    writeExample("kvbdl.zip");
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(FindExampleBundles, ANameOfNothingButTheExtensionIsTaken)
{
    writeExample(".kvbdl.zip");
    EXPECT_THAT(titles(), ElementsAre("Title"));
}

TEST_F(FindExampleBundles, ADirectoryOfSuchANameIsNotTakenButLookedInto)
{
    writeExample("directory.kvbdl.zip/a.kvbdl.zip");
    EXPECT_THAT(titles(), ElementsAre("Title"));
}

TEST_F(FindExampleBundles, ALinkToABundleIsTaken)
{
    fs::rename(writeExample("a.kvbdl.zip"), folder / "elsewhere");
    fs::create_symlink(folder / "elsewhere", folder / "found/link.kvbdl.zip");
    EXPECT_THAT(titles(), ElementsAre("Title"));
}

TEST_F(FindExampleBundles, ALinkToADirectoryIsNotFollowed)
{
    writeExample("sub/a.kvbdl.zip");
    fs::rename(folder / "found/sub", folder / "elsewhere");
    fs::create_directory_symlink(folder / "elsewhere", folder / "found/link");
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(FindExampleBundles, ALinkThatLeadsNowhereOrInACircleDoesNotEndTheWalk)
{
    fs::create_symlink("circle.kvbdl.zip", folder / "found/circle.kvbdl.zip");
    fs::create_symlink("nowhere", folder / "found/dangling.kvbdl.zip");
    writeExample("a.kvbdl.zip");
    EXPECT_THAT(titles(), ElementsAre("Title"));
}

TEST_F(FindExampleBundles, ABundleWithoutATitleGivesOneDebugLineAndNoEntry)
{
    const fs::path untitled = writeExample("untitled.kvbdl.zip", {});
    writeExample("a.kvbdl.zip");
    EXPECT_THAT(titles(), ElementsAre("Title"));
    EXPECT_THAT(debugLines(), ElementsAre("error bundle has no title: " + untitled.string()));
}

TEST_F(FindExampleBundles, ATitleThatIsThereAndEmptyIsATitle)
{
    fs::copy_file(fs::path{HOLLERWICK_BROKEN_PACKAGES} / "example-title-empty.zip", folder / "found/a.kvbdl.zip");
    EXPECT_THAT(titles(), ElementsAre(""));
    EXPECT_THAT(debugLines(), IsEmpty());
}

TEST_F(FindExampleBundles, AFileThatCannotBeOpenedAsAnExampleGivesNoEntryAndNoLine)
{
    folder.write("found/no package.kvbdl.zip", "x");
    const fs::path example = writeExample("a.zip");
    Authoring::createExamples({Authoring::toFilePath2(example)},
                              Authoring::toFilePath2(folder / "found/barrel.kvbdl.zip"))
        .value();
    EXPECT_THAT(titles(), IsEmpty());
    EXPECT_THAT(debugLines(), IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(FindExampleBundles, ANameThatIsNoUtf8GivesNoEntryAndDoesNotEndTheWalk)
{
    fs::copy_file(writeExample("a.kvbdl.zip"), folder / "found/\xff.kvbdl.zip");
    EXPECT_THAT(titles(), ElementsAre("Title"));
}

TEST_F(FindExampleBundles, ADirectoryThatIsNotThereRaisesTheFileSystemsError)
{
    fs::remove(folder / "found");
    EXPECT_THROW(entries(), fs::filesystem_error);
}

TEST_F(FindExampleBundles, AFileInThePlaceOfTheDirectoryRaisesTheFileSystemsError)
{
    fs::remove(folder / "found");
    folder.write("found", "");
    EXPECT_THROW(entries(), fs::filesystem_error);
}

TEST_F(FindExampleBundles, ADirectoryBelowThatCannotBeReadRaisesTheFileSystemsError)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "nothing is closed to root";
    fs::create_directory(folder / "found/closed");
    fs::permissions(folder / "found/closed", fs::perms::none);
    EXPECT_THROW(entries(), fs::filesystem_error);
}

} // namespace
