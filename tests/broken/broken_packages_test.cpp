#include "host/core/opc/package_inspection.h"
#include "kelvaris/system/io/bundle/content_bundle.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using OpcPackaging::PackageInspection;
namespace fs = std::filesystem;

namespace {

/// One line of the index: a file and what must happen to it.
struct Case
{
    fs::path path;
    std::vector<std::string> verdicts; ///< "ok", "warn", codes
    std::string parts;
    std::vector<std::string> unpacked; ///< numbers of files, codes behind "!"
    std::string what;
};

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> pieces;
    std::istringstream stream{text};
    for (std::string piece; std::getline(stream, piece, separator);)
        pieces.push_back(piece);
    return pieces;
}

std::vector<Case> readIndex()
{
    const fs::path directory = HOLLERWICK_BROKEN_PACKAGES;
    std::ifstream index{directory / "INDEX.tsv"};
    std::vector<Case> cases;
    std::string line;
    std::getline(index, line);
    while (std::getline(index, line)) {
        const auto fields = split(line, '\t');
        cases.push_back(
            {directory / fields.at(0), split(fields.at(1), ' '), fields.at(2), split(fields.at(3), ' '), fields.at(4)});
    }
    EXPECT_GE(cases.size(), 150U);
    return cases;
}

FilePath2 pathOf(const fs::path& path)
{
    const std::u8string text = path.u8string();
    return {text.data(), text.size()};
}

bool contains(const std::vector<std::string>& words, const std::string& word)
{
    return std::ranges::find(words, word) != words.end();
}

/// "ok", "warn" or the code that refuses it.
struct Verdict
{
    std::string word;
    std::string message;
};

Verdict refusal(const ErrorCode2& error)
{
    return {std::to_string(error.value()), reinterpret_cast<const char*>(error.message().data())};
}

Verdict verdictOn(const fs::path& path)
{
    const auto package = PackageInspection::open(pathOf(path));
    if (!package)
        return refusal(package.error());
    const auto verified = package->verify();
    if (!verified)
        return refusal(verified.error());
    return {verified->empty() ? "ok" : "warn", verified->empty() ? "" : verified->front()};
}

/// A diagnostic more or less is a matter of taste; a refusal is not.
bool fits(const Verdict& verdict, const Case& expected)
{
    const bool opens = verdict.word == "ok" || verdict.word == "warn";
    if (opens)
        return contains(expected.verdicts, "ok") || contains(expected.verdicts, "warn");
    return contains(expected.verdicts, verdict.word);
}

std::size_t filesBelow(const fs::path& directory)
{
    std::error_code error;
    std::size_t files = 0;
    for (const auto& entry : fs::recursive_directory_iterator{directory, error}) {
        EXPECT_FALSE(entry.is_symlink()) << entry.path();
        files += entry.is_regular_file() ? 1 : 0;
    }
    return files;
}

} // namespace

TEST(BrokenPackages, AreRefusedOrOpenedAsTheirIndexTells)
{
    for (const Case& expected : readIndex()) {
        const Verdict verdict = verdictOn(expected.path);
        EXPECT_TRUE(fits(verdict, expected))
            << expected.path.filename() << " (" << expected.what << "): " << verdict.word << ' ' << verdict.message;
        if (!verdict.message.empty() && verdict.word != "warn") {
            EXPECT_NE(verdict.message.find(expected.path.filename().string()), std::string::npos)
                << "the refusal does not name the file: " << verdict.message;
        }
    }
}

TEST(BrokenPackages, UnpackInsideTheDirectoryOrNotAtAll)
{
    for (const Case& expected : readIndex()) {
        const TemporaryFolder folder;
        const fs::path target = folder / "outer/target";
        auto bundle = Bundle::ContentBundle::open(pathOf(expected.path));
        std::string outcome = "not opened";
        std::string message;
        if (bundle) {
            const auto unpacked = bundle->unpack(pathOf(target));
            outcome = unpacked ? std::to_string(filesBelow(target)) : '!' + std::to_string(unpacked.error().value());
            if (!unpacked) {
                message = reinterpret_cast<const char*>(unpacked.error().message().data());
                EXPECT_EQ(filesBelow(folder.path()), 0U) << expected.path.filename() << " left something behind";
            }
        }
        EXPECT_EQ(filesBelow(folder.path()), filesBelow(target)) << expected.path.filename() << " wrote outside";
        const bool mustFail = expected.unpacked == std::vector<std::string>{"-"};
        if (mustFail)
            // a piece that is not needed for unpacking may be broken without anybody looking at it
            continue;
        EXPECT_TRUE(contains(expected.unpacked, outcome))
            << expected.path.filename() << " (" << expected.what << "): " << outcome << ' ' << message;
    }
}

TEST(BrokenPackages, ThatOpenKeepEveryEntryThroughASave)
{
    for (const Case& expected : readIndex()) {
        if (!contains(expected.verdicts, "ok") || expected.verdicts.size() > 1)
            continue;
        const TemporaryFolder folder;
        const fs::path copy = folder / "copy.zip";
        auto bundle = Bundle::ContentBundle::open(pathOf(expected.path));
        ASSERT_TRUE(bundle) << expected.path.filename();
        ASSERT_TRUE(bundle->writeToFile(pathOf(copy))) << expected.path.filename();
        const auto before = PackageInspection::open(pathOf(expected.path)).value().entries().value();
        const auto after = PackageInspection::open(pathOf(copy)).value().entries().value();
        ASSERT_EQ(before.size(), after.size()) << expected.path.filename();
        for (std::size_t i = 0; i < before.size(); ++i) {
            EXPECT_EQ(before[i].name, after[i].name) << expected.path.filename();
            EXPECT_EQ(before[i].size, after[i].size) << expected.path.filename();
            EXPECT_EQ(before[i].compressedSize, after[i].compressedSize) << expected.path.filename();
        }
    }
}
