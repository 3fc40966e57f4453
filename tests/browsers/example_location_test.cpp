#include "browsers/example_location.h"

#include "kelvaris/system/qt/path_bridge.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

namespace fs = std::filesystem;
using Kelvaris::System::toFilePath2;

namespace {

QString toText(const fs::path& path)
{
    return QString::fromStdString(path.string());
}

class ExampleLocation : public testing::Test
{
protected:
    QString propose(const char* title) const
    {
        return proposeLocation(toFilePath(folder.path()), QString::fromUtf8(title));
    }

    QString below(const char* name) const { return toText(folder.path()) + QLatin1Char{'/'} + QString::fromUtf8(name); }

    /// The text of the error of `step`; empty when it ends well.
    template <class Step>
    static std::string failureOf(Step step)
    {
        try {
            step();
        } catch (const fs::filesystem_error& failure) {
            return failure.what();
        }
        return {};
    }

    TemporaryFolder folder;
};

/// Takes root's right to enter and read every directory away for a while; others do not have it.
class WithoutRootsRights
{
public:
    WithoutRootsRights() : m_user{geteuid()}
    {
        if (m_user == 0) {
            EXPECT_EQ(seteuid(nobody), 0);
        }
    }
    ~WithoutRootsRights() { EXPECT_EQ(seteuid(m_user), 0); }

private:
    static constexpr uid_t nobody = 65534;
    const uid_t m_user;
};

} // namespace

TEST_F(ExampleLocation, ProposesTheTitleBelowTheTargetDirectoryWhenThatIsFree)
{
    EXPECT_EQ(propose("Foo"), below("Foo"));
}

TEST_F(ExampleLocation, ProposesTheFirstNumberThatIsFree)
{
    fs::create_directory(folder / "Foo");
    EXPECT_EQ(propose("Foo"), below("Foo_1"));
    fs::create_directory(folder / "Foo_1");
    EXPECT_EQ(propose("Foo"), below("Foo_2"));
    fs::create_directory(folder / "Foo_3");
    EXPECT_EQ(propose("Foo"), below("Foo_2"));
}

TEST_F(ExampleLocation, CountsAFileAsTakenJustAsADirectory)
{
    folder.write("Foo", "a file");
    EXPECT_EQ(propose("Foo"), below("Foo_1"));
}

TEST_F(ExampleLocation, EndsAtOneThousandWhetherThatIsFreeOrNot)
{
    fs::create_directory(folder / "Foo");
    for (int n = 1; n < 1000; ++n)
        fs::create_directory(folder / ("Foo_" + std::to_string(n)));
    EXPECT_EQ(propose("Foo"), below("Foo_1000"));
    fs::create_directory(folder / "Foo_1000");
    EXPECT_EQ(propose("Foo"), below("Foo_1000"));
}

TEST_F(ExampleLocation, NestsATitleWithASeparatorAndNumbersItsLastComponent)
{
    folder.write("Motors/Drive", "taken");
    EXPECT_EQ(propose("Motors/Drive"), below("Motors/Drive_1"));
}

TEST_F(ExampleLocation, KeepsATitleThatBeginsWithASeparatorBelowTheDirectory)
{
    EXPECT_EQ(propose("/etc/passwd"), below("etc/passwd"));
}

TEST_F(ExampleLocation, ReplacesNoCharacterOfTheTitle)
{
    EXPECT_EQ(propose("Größe: 5 % <b>\"電\"</b> 🔌? *"),
              below("Größe: 5 % <b>\"電\"</b> 🔌? *").replace(QStringLiteral("//"), QStringLiteral("/")));
}

TEST_F(ExampleLocation, FindsATitleOfAnyLettersTaken)
{
    folder.write("Größe 電 🔌", "taken");
    EXPECT_EQ(propose("Größe 電 🔌"), below("Größe 電 🔌_1"));
}

TEST_F(ExampleLocation, FoldsDotsInTheProposal)
{
    EXPECT_EQ(propose("a/./b/../c"), below("a/c"));
}

TEST_F(ExampleLocation, ProposesAPlaceInTheDirectoryForAnEmptyTitle)
{
    EXPECT_EQ(propose(""), below("_1"));
}

TEST_F(ExampleLocation, NumbersATitleWithADotBehindTheWholeName)
{
    folder.write("v1.5", "taken");
    EXPECT_EQ(propose("v1.5"), below("v1.5_1"));
}

TEST_F(ExampleLocation, CreatesNothing)
{
    (void)propose("Foo");
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(ExampleLocation, RaisesExistsForANameThatIsTooLong)
{
    const std::string failure = failureOf([this] { propose(std::string(300, 'x').c_str()); });
    EXPECT_NE(failure.find("exists"), std::string::npos) << failure;
}

TEST_F(ExampleLocation, RaisesExistsForADirectoryThatMustNotBeEntered)
{
    folder.write("locked/Foo", "hidden");
    fs::permissions(folder / "locked", fs::perms::none);
    fs::permissions(folder.path(), fs::perms::all);
    const WithoutRootsRights withoutRights;
    const std::string failure = failureOf([this] { propose("locked/Foo"); });
    EXPECT_NE(failure.find("exists"), std::string::npos) << failure;
}

TEST_F(ExampleLocation, HoldsNoEntriesWhenNothingIsThere)
{
    EXPECT_FALSE(holdsEntries(below("nothing")));
    EXPECT_FALSE(holdsEntries({}));
}

TEST_F(ExampleLocation, HoldsNoEntriesWhenTheDirectoryIsEmpty)
{
    fs::create_directory(folder / "empty");
    EXPECT_FALSE(holdsEntries(below("empty")));
}

TEST_F(ExampleLocation, HoldsEntriesWhenTheDirectoryHasOne)
{
    folder.write("ein Ö/file", "");
    EXPECT_TRUE(holdsEntries(below("ein Ö")));
}

TEST_F(ExampleLocation, RaisesDirectoryIteratorForARegularFile)
{
    folder.write("file", "");
    const std::string failure = failureOf([this] { (void)holdsEntries(below("file")); });
    EXPECT_NE(failure.find("directory_iterator::directory_iterator"), std::string::npos) << failure;
}

TEST_F(ExampleLocation, RaisesDirectoryIteratorForADirectoryThatMustNotBeRead)
{
    fs::create_directory(folder / "locked");
    fs::permissions(folder / "locked", fs::perms::none);
    fs::permissions(folder.path(), fs::perms::all);
    const WithoutRootsRights withoutRights;
    const std::string failure = failureOf([this] { (void)holdsEntries(below("locked")); });
    EXPECT_NE(failure.find("directory_iterator::directory_iterator"), std::string::npos) << failure;
}

TEST_F(ExampleLocation, HoldsNoEntriesBelowARegularFileSinceNothingIsThere)
{
    folder.write("file", "");
    EXPECT_FALSE(holdsEntries(below("file/deeper")));
}

TEST_F(ExampleLocation, RaisesExistsForAPathThatIsTooLong)
{
    const std::string failure = failureOf([this] { (void)holdsEntries(below(std::string(5000, 'x').c_str())); });
    EXPECT_NE(failure.find("exists"), std::string::npos) << failure;
}

TEST_F(ExampleLocation, HoldsNoEntriesForATextThatIsNoUnicode)
{
    EXPECT_FALSE(holdsEntries(QString{QChar{0xd83d}}));
}

TEST_F(ExampleLocation, FoldsDotsInANormalLocation)
{
    EXPECT_EQ(normalLocation(toFilePath2(QStringLiteral("out/./x/../design.kvsch"))),
              QStringLiteral("out/design.kvsch"));
}
