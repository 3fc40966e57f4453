#include "tests/e2e/host_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// The first package with that ending that is in order, out of those that other programs made; empty when there is
/// none.
fs::path goodPackage(const fs::path& directory, const std::string& ending)
{
    std::ifstream index{directory / "INDEX.tsv"};
    for (std::string line; std::getline(index, line);) {
        const std::string file = line.substr(0, line.find('\t'));
        if (file.ends_with(ending) && line.find("\tok\t") != std::string::npos)
            return directory / file;
    }
    return {};
}

/// A document, a table and slides, each made by an office program.
class OfficePackage : public testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        const char* const directory = std::getenv("HOLLERWICK_FOREIGN_PACKAGES");
        if (directory == nullptr)
            GTEST_SKIP() << "HOLLERWICK_FOREIGN_PACKAGES names no directory of packages that other tools made";
        package = goodPackage(directory, GetParam()).string();
        ASSERT_NE(package, "") << GetParam();
    }

    /// The pictures of the window that a function opens on the package.
    std::vector<std::string> picturesOf(const std::string& function) const
    {
        const fs::path pictures = folder / function;
        const ProgramEnd end = runHost({"call", function, package, "--grab", pictures.string()});
        EXPECT_EQ(end.status, 0) << end;
        EXPECT_EQ(end.errors, "");
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator{pictures})
            names.push_back(entry.path().filename().string());
        return names;
    }

    const TemporaryFolder folder;
    std::string package;
};

} // namespace

TEST_P(OfficePackage, IsLookedIntoFromTheShell)
{
    const ProgramEnd info = runHost({"info", package});
    EXPECT_EQ(info.status, 0) << info;
    EXPECT_THAT(info.output, HasSubstr(": a package\n"));
    EXPECT_THAT(info.output, HasSubstr("/_rels/.rels  application/vnd.openxmlformats-package.relationships+xml\n"));
    EXPECT_THAT(info.output, HasSubstr("officeDocument"));
    const ProgramEnd check = runHost({"check", package});
    EXPECT_EQ(check.status, 0) << check;
    EXPECT_THAT(check.output, HasSubstr(package + ": no faults"));
}

TEST_P(OfficePackage, IsShownByTheViewerAndThePackageBrowser)
{
    EXPECT_THAT(picturesOf("_bundle_viewer"), ElementsAre("01-QTreeView.png"));
    EXPECT_THAT(picturesOf("_proto_package_browser"), ElementsAre("01-QTreeView.png"));
}

TEST_P(OfficePackage, HasNothingToExtract)
{
    const std::string output = (folder / "out").string();
    const ProgramEnd extract = runHost({"extract", package, "--output", output});
    EXPECT_EQ(extract.status, 3) << extract;
    EXPECT_EQ(extract.errors, "hollerwick-host: " + package +
                                  ": has no content to extract; \"hollerwick-host info\" shows what is in it\n");
    EXPECT_FALSE(fs::exists(output));
}

INSTANTIATE_TEST_SUITE_P(Of, OfficePackage, testing::Values(".docx", ".xlsx", ".pptx"),
                         [](const auto& kind) { return std::string{kind.param}.substr(1); });
