#include "kelvaris/system/file_system.h"

#include "host/core/text/file_kinds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

using namespace Kelvaris::System;

namespace {

FileType typeOf(const std::filesystem::path& path)
{
    return FileSystem::type(FilePath{path});
}

} // namespace

TEST(FileSystem, KnowsEachKindByItsExtension)
{
    const std::map<std::string, FileType> expected{
        {"a.kvsch", FileType::schematic},
        {"a.kvscr", FileType::script},
        {"a.testplan", FileType::testPlan},
        {"a.va", FileType::verilogA},
        {"a.v", FileType::verilog},
        {"a.net", FileType::netlist},
        {"a.cir", FileType::netlist},
        {"a.sp", FileType::netlist},
        {"a.txt", FileType::text},
        {"a.md", FileType::text},
        {"a.html", FileType::html},
        {"a.htm", FileType::html},
        {"a.css", FileType::css},
        {"a.csv", FileType::csv},
        {"a.json", FileType::json},
        {"a.xml", FileType::xml},
        {"a.png", FileType::png},
        {"a.jpg", FileType::jpeg},
        {"a.jpeg", FileType::jpeg},
        {"a.svg", FileType::svg},
        {"a.pdf", FileType::pdf},
        {"a.zip", FileType::zip},
        {"a.kvbdl.zip", FileType::contentBundle},
        {"a.kvsbd.zip", FileType::scriptableBundle},
        {"a.kvexs", FileType::barrelOfExamples},
        {"a.kvexs.zip", FileType::barrelOfExamples},
    };
    for (const auto& [name, type] : expected)
        EXPECT_EQ(typeOf(name), type) << name;
    EXPECT_EQ(expected.size(), Text::fileKinds().size());
}

TEST(FileSystem, KnowsTheExtensionInAnyAsciiCase)
{
    EXPECT_EQ(typeOf("A.KvSch"), FileType::schematic);
    EXPECT_EQ(typeOf("A.KVBDL.Zip"), FileType::contentBundle);
}

TEST(FileSystem, OtherExtensionsAreUnknown)
{
    for (const char* name : {"", "a", "a.", "a.exe", "a.kvschx", "akvsch", "a.kvsch~", "a.kvbdl", "a.kvbdl.zip.bak"})
        EXPECT_EQ(typeOf(name), FileType::unknown) << name;
}

TEST(FileSystem, ANameThatIsNothingButAnExtensionIsUnknown)
{
    EXPECT_EQ(typeOf("/a/.html"), FileType::unknown);
    EXPECT_EQ(typeOf(".kvsch"), FileType::unknown);
    EXPECT_EQ(typeOf(".kvbdl.zip"), FileType::zip);
}

TEST(FileSystem, DirectoriesDoNotCountAndNothingIsLookedUp)
{
    EXPECT_EQ(typeOf("/no such directory/größe.kvsch/日本.pdf"), FileType::pdf);
    EXPECT_EQ(typeOf("/no such directory/a.kvsch/"), FileType::unknown);
}

TEST(FileSystem, ALongerExtensionStandsBeforeTheShorterOneThatItEndsIn)
{
    const auto kinds = Text::fileKinds();
    for (auto longer = kinds.begin(); longer != kinds.end(); ++longer) {
        const auto shorter = std::find_if(kinds.begin(), longer, [longer](const Text::FileKind& kind) {
            return longer->extension.ends_with(kind.extension);
        });
        EXPECT_EQ(shorter, longer) << longer->extension;
    }
}

#ifndef _WIN32
TEST(FileSystem, NamesThatAreNoUnicodeHaveAKindToo)
{
    EXPECT_EQ(typeOf("\xFF.kvsch"), FileType::schematic);
}
#endif
