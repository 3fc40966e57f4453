#include "host/shell/console_history.h"

#include "tests/support/temporary_folder.h"

#include <QtCore/QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using HostShell::ConsoleHistory;

namespace {

QString text(const std::filesystem::path& path)
{
    return QString::fromStdString(path.string());
}

} // namespace

TEST(ConsoleHistory, KeepsTextsOfSeveralLinesInAFile)
{
    const TemporaryFolder folder;
    const QString path = text(folder / "new/history");
    EXPECT_EQ(ConsoleHistory{path}.add(QStringLiteral("print('ä');\n\"x\"")), QString{});
    EXPECT_EQ(ConsoleHistory{path}.texts(), QStringList{QStringLiteral("print('ä');\n\"x\"")});
}

TEST(ConsoleHistory, LeavesOutWhatIsEmptyOrTheSameAgain)
{
    ConsoleHistory history{{}};
    history.add(QStringLiteral("a"));
    history.add(QStringLiteral("a"));
    history.add(QStringLiteral(" \n"));
    EXPECT_EQ(history.texts().size(), 1);
}

TEST(ConsoleHistory, PassesOverALineThatACrashHasCutOff)
{
    const TemporaryFolder folder;
    const auto path = folder.write("history", "[\"a\"]\n[\"b");
    ConsoleHistory history{text(path)};
    EXPECT_EQ(history.texts(), QStringList{QStringLiteral("a")});
    history.add(QStringLiteral("c"));
    EXPECT_EQ(ConsoleHistory{text(path)}.texts(), (QStringList{QStringLiteral("a"), QStringLiteral("c")}));
}

TEST(ConsoleHistory, KeepsTheNewestAndDoesNotGrowWithoutEnd)
{
    const TemporaryFolder folder;
    const QString path = text(folder / "history");
    ConsoleHistory history{path};
    for (int i = 0; i < 1100; ++i)
        ASSERT_EQ(history.add(QString::number(i)), QString{});
    const ConsoleHistory again{path};
    EXPECT_EQ(again.texts(), history.texts());
    EXPECT_EQ(again.texts().size(), 500);
    EXPECT_EQ(again.texts().last(), QStringLiteral("1099"));
    EXPECT_LT(QFile{path}.size(), 10'000);
}

TEST(ConsoleHistory, TellsWhyItCannotBeWrittenAndKeepsTheText)
{
    const TemporaryFolder folder;
    ConsoleHistory history{text(folder.write("file", "") / "below")};
    EXPECT_THAT(history.add(QStringLiteral("a")).toStdString(), testing::HasSubstr("Not a directory"));
    EXPECT_EQ(history.texts().size(), 1);
}
