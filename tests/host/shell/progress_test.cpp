#include "host/shell/progress.h"

#include "host/core/paths/disk/replacement_file.h"
#include "kelvaris/system/application.h"
#include "kelvaris/system/qt/path_bridge.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace HostShell;
using namespace Kelvaris::System;
using testing::ElementsAre;

namespace {

/// Writes a file in pieces that each reach the disk.
void writePieces(const std::filesystem::path& path, int count, std::size_t size)
{
    const std::vector<std::byte> piece(size);
    auto file = Disk::ReplacementFile::create(toFilePath2(QString::fromStdString(path.string()))).value();
    for (int i = 0; i < count; ++i)
        ASSERT_TRUE(file.write(piece));
    ASSERT_TRUE(file.commit());
}

constexpr std::size_t pieceSize = 512 * 1024;

Progress::Place collectIn(std::vector<std::string>& lines, std::size_t columns = 80)
{
    return {[&lines](const std::string& text) { lines.push_back(text); }, [columns] { return columns; }};
}

/// That of work of which one piece is a quarter, told at once.
Progress quarterTold(std::vector<std::string>& lines, std::size_t columns = 80)
{
    return {"packing", 4 * pieceSize, Progress::Counted::written, collectIn(lines, columns),
            std::chrono::milliseconds{0}};
}

} // namespace

TEST(Progress, TellsThePercentOfWhatWasMovedAndLeavesNothingBehind)
{
    const TemporaryFolder folder;
    std::vector<std::string> lines;
    {
        const Progress progress = quarterTold(lines);
        writePieces(folder / "a", 1, pieceSize);
    }
    EXPECT_THAT(lines, ElementsAre("\r\033[Kpacking 25 % of 2.1 MB", "\r\033[K"));
}

TEST(Progress, IsShorterWhereALineIsNarrow)
{
    const TemporaryFolder folder;
    std::vector<std::string> lines;
    for (const std::size_t columns : {23U, 22U, 13U, 12U}) {
        const Progress progress = quarterTold(lines, columns);
        writePieces(folder / "a", 1, pieceSize);
    }
    EXPECT_THAT(lines, ElementsAre("\r\033[Kpacking 25 % of 2.1 MB", "\r\033[K", "\r\033[Kpacking 25 %", "\r\033[K",
                                   "\r\033[Kpacking 25 %", "\r\033[K", "\r\033[K25 %", "\r\033[K"));
}

TEST(Progress, MakesWayForTheLog)
{
    const TemporaryFolder folder;
    std::vector<std::string> lines;
    const Progress progress = quarterTold(lines);
    writePieces(folder / "a", 1, pieceSize);
    Application::instance()->logger().diagnostic("test", "a line");
    EXPECT_THAT(lines, ElementsAre("\r\033[Kpacking 25 % of 2.1 MB", "\r\033[K"));
}

TEST(Progress, SaysNothingOfShortWork)
{
    const TemporaryFolder folder;
    std::vector<std::string> lines;
    {
        const Progress progress{"packing", pieceSize, Progress::Counted::written, collectIn(lines),
                                std::chrono::hours{1}};
        writePieces(folder / "a", 2, pieceSize);
    }
    EXPECT_THAT(lines, ElementsAre());
}

TEST(Progress, CountsWhatIsMovedBeyondTheTotalAsAll)
{
    const TemporaryFolder folder;
    std::vector<std::string> lines;
    {
        const Progress progress{"packing", 100, Progress::Counted::written, collectIn(lines),
                                std::chrono::milliseconds{0}};
        writePieces(folder / "a", 1, pieceSize);
    }
    EXPECT_THAT(lines, ElementsAre("\r\033[Kpacking 100 % of 100 bytes", "\r\033[K"));
}

TEST(Progress, ShowsSizesForPeople)
{
    EXPECT_EQ(sizeInWords(0), "0 bytes");
    EXPECT_EQ(sizeInWords(1'234'000'000), "1.2 GB");
}
