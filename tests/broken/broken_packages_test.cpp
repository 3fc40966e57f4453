#include "host/core/bundle/bundle_inspection.h"
#include "host/core/opc/package_verifier.h"
#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/io/bundle/content_bundle.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "kelvaris/system/io/bundle/scriptable_bundle.h"
#include "tests/broken/corpus_index.h"
#include "tests/host/core/opc/package_verdicts.h"
#include "tests/host/core/opc/package_walks.h"

#include <gtest/gtest.h>

#include <regex>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackagePtr;
using OpcPackaging::detail::PackageVerifier;
namespace fs = std::filesystem;

namespace {

/// "7", "b2" for one of bundles, "s2" for one of the system.
std::string word(const ErrorCode2& error)
{
    const std::string number = std::to_string(error.value());
    if (&error.category() == &OpcPackaging::opc_error_category())
        return number;
    return (&error.category() == &Bundle::bundle_error_category() ? "b" : "s") + number;
}

template <class Opened>
std::string outcome(const std::string& kind, const Expected<Opened, ErrorCode2>& opened)
{
    return opened ? kind : kind + '!' + word(opened.error());
}

std::string openedAs(const std::string& kind, const fs::path& path)
{
    const FilePath2 file = toFilePath2(path);
    if (kind == "content")
        return outcome(kind, Bundle::ContentBundle::open(file));
    if (kind == "example")
        return outcome(kind, Bundle::ExampleBundle::open(file));
    if (kind == "scriptable")
        return outcome(kind, Bundle::ScriptableBundle::open(file));
    return outcome(kind, Bundle::BarrelOfExamplesBundle::open(file));
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

/// The rule of a standard, or the limit that is exceeded.
bool namesARule(const std::string& message)
{
    static const std::regex rule{
        R"(\bM[1-6]\.\d+|Annex C|ZIP application note|RFC 1951|XML|more than|too (deep|large|many))"};
    return std::regex_search(message, rule);
}

/// A number of files, or the code that refuses to unpack behind a "!".
std::string unpack(const CorpusCase& expected, const fs::path& target)
{
    auto bundle = Bundle::ContentBundle::open(toFilePath2(expected.path));
    if (!bundle)
        return '!' + word(bundle.error());
    const auto unpacked = bundle->unpack(toFilePath2(target));
    return unpacked ? std::to_string(filesBelow(target)) : '!' + word(unpacked.error());
}

std::vector<ErrorCode2> checkedFaults(const fs::path& path)
{
    const auto report = Bundle::checkBundle(toFilePath2(path));
    return report ? report->faults : std::vector<ErrorCode2>{report.error()};
}

/// Whether it is of bundles, or of an example in a barrel: the package around it may open all the same.
bool isOfTheFormat(const ErrorCode2& fault)
{
    using OpcPackaging::OpcError;
    if (&fault.category() == &Bundle::bundle_error_category())
        return true;
    const std::string text = textOf(fault);
    if (text.find(".zip: examples/") != std::string::npos || text.find("where one may stand") != std::string::npos)
        return true;
    return fault == code(OpcError::noSuchPart) || fault == code(OpcError::targetIsExternal) ||
           fault == code(OpcError::unsafeDestination) || fault == code(OpcError::destinationClash);
}

} // namespace

TEST(BrokenPackages, AreFoundBrokenByACheckIfTheyAreRefusedAndForTheSameReason)
{
    for (const CorpusCase& expected : readCorpusIndex()) {
        const PackageVerdict verdict = verdictOnFile(expected.path);
        const std::vector<ErrorCode2> faults = checkedFaults(expected.path);
        const bool isFound =
            std::ranges::any_of(faults, [&](const ErrorCode2& fault) { return textOf(fault) == textOf(verdict); });
        if (verdict) {
            EXPECT_TRUE(isFound) << expected.name() << " is refused, and the check does not say: " << textOf(verdict);
            continue;
        }
        for (const ErrorCode2& fault : faults)
            EXPECT_TRUE(isOfTheFormat(fault)) << expected.name() << " opens, and the check says: " << textOf(fault);
    }
}

TEST(BrokenPackages, AreRefusedOrOpenedAsTheirIndexTells)
{
    for (const CorpusCase& expected : readCorpusIndex()) {
        const PackageVerdict verdict = verdictOnFile(expected.path);
        const bool isAsExpected = verdict ? contains(expected.verdicts, word(*verdict)) : expected.opens();
        EXPECT_TRUE(isAsExpected) << expected.name() << " (" << expected.what << "): " << textOf(verdict);
        if (verdict) {
            EXPECT_NE(textOf(verdict).find(expected.name()), std::string::npos)
                << "the refusal does not name the file: " << textOf(verdict);
            EXPECT_TRUE(namesARule(textOf(verdict))) << expected.name() << ": " << textOf(verdict);
        }
    }
}

TEST(BrokenPackages, TellOfWhatIsPutUpWith)
{
    for (const CorpusCase& expected : readCorpusIndex()) {
        if (expected.verdicts != std::vector<std::string>{"warn"})
            continue;
        const PackagePtr package = PackageData::openFile(toFilePath2(expected.path)).value();
        EXPECT_FALSE(PackageVerifier{*package}.verify().value().empty()) << expected.name();
    }
}

TEST(BrokenPackages, HaveOneVerdictFromFileMemoryAndNestedPart)
{
    const TemporaryFolder folder;
    for (const CorpusCase& expected : readCorpusIndex()) {
        const PackageVerdict fromFile = verdictOnFile(expected.path);
        const PackageVerdict fromMemory = verdictInMemory(expected.path);
        const PackageVerdict nested = verdictOnNested(expected.path, folder);
        EXPECT_EQ(fromFile, fromMemory) << expected.name() << ": " << textOf(fromFile) << " / " << textOf(fromMemory);
        EXPECT_EQ(fromFile, nested) << expected.name() << ": " << textOf(fromFile) << " / " << textOf(nested);
    }
}

TEST(BrokenPackages, ThatOpenHaveThePartsThatTheirIndexCounts)
{
    for (const CorpusCase& expected : readCorpusIndex()) {
        if (verdictOnFile(expected.path))
            continue;
        const auto package = OpcPackaging::open_package(toFilePath2(expected.path)).value();
        EXPECT_EQ(std::to_string(partNames(package).size()), expected.parts) << expected.name();
    }
}

TEST(BrokenPackages, ThatOpenKeepEveryEntryThroughASave)
{
    const TemporaryFolder folder;
    for (const CorpusCase& expected : readCorpusIndex()) {
        if (verdictOnFile(expected.path))
            continue;
        const PackagePtr package = PackageData::openFile(toFilePath2(expected.path)).value();
        ASSERT_TRUE(package->write(toFilePath2(folder / "copy.zip"))) << expected.name();
        expectSameEntries(folder / "copy.zip", expected.path);
    }
}

TEST(BrokenPackages, UnpackInsideTheDirectoryOrNotAtAll)
{
    for (const CorpusCase& expected : readCorpusIndex()) {
        const TemporaryFolder folder;
        const fs::path target = folder / "outer/target";
        const std::string found = unpack(expected, target);
        EXPECT_EQ(filesBelow(folder.path()), filesBelow(target)) << expected.name() << " wrote outside";
        if (found.starts_with('!')) {
            EXPECT_EQ(filesBelow(folder.path()), 0U) << expected.name() << " left something behind";
        }
        // a piece that is not needed for unpacking may be broken without anybody looking at it
        if (expected.unpacked != std::vector<std::string>{"-"}) {
            EXPECT_TRUE(contains(expected.unpacked, found))
                << expected.name() << " (" << expected.what << "): " << found;
        }
    }
}

TEST(BrokenPackages, OpenAsTheKindsOfBundlesThatTheyAre)
{
    for (const CorpusCase& expected : readCorpusIndex()) {
        if (expected.kinds == std::vector<std::string>{"-"})
            continue;
        for (const std::string& kind : expected.kinds)
            EXPECT_EQ(openedAs(kind.substr(0, kind.find('!')), expected.path), kind) << expected.name();
    }
}
