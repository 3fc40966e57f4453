#include "host/core/opc/package_access.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "tests/host/core/opc/package_verdicts.h"
#include "tests/host/core/opc/package_walks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackagePtr;

namespace {

/// One line of the index of packages that other tools made.
struct Foreign
{
    std::filesystem::path path;
    bool isRefused = false;
    std::size_t parts = 0;
    std::size_t relationships = 0;
    std::string coreProperties; ///< "/docProps/core.xml (5)", "none"
};

std::vector<std::string> splitAtTabs(const std::string& line)
{
    std::vector<std::string> fields;
    std::istringstream stream{line};
    for (std::string field; std::getline(stream, field, '\t');)
        fields.push_back(field);
    return fields;
}

/// Empty when the environment names no such directory.
std::vector<Foreign> readIndex()
{
    const char* const directory = std::getenv("HOLLERWICK_FOREIGN_PACKAGES");
    if (directory == nullptr)
        return {};
    std::ifstream index{std::filesystem::path{directory} / "INDEX.tsv"};
    EXPECT_TRUE(index) << directory;
    std::vector<Foreign> foreign;
    std::string line;
    std::getline(index, line);
    while (std::getline(index, line)) {
        const auto fields = splitAtTabs(line);
        foreign.push_back({std::filesystem::path{directory} / fields.at(0), fields.at(2) == "refuse",
                           std::stoul(fields.at(3)), std::stoul(fields.at(4)), fields.at(5)});
    }
    EXPECT_FALSE(foreign.empty());
    return foreign;
}

class ForeignPackages : public testing::Test
{
protected:
    void SetUp() override
    {
        m_index = readIndex();
        if (m_index.empty())
            GTEST_SKIP() << "HOLLERWICK_FOREIGN_PACKAGES names no directory of packages that other tools made";
    }

    std::vector<Foreign> m_index;
    TemporaryFolder m_folder;
};

std::string describeCoreProperties(PackageData& package)
{
    package.core().load().value();
    if (package.core().partName().empty())
        return "none";
    int count = 0;
    for (std::size_t index = 0; index < Markup::corePropertyCount; ++index)
        count += package.core().text(static_cast<Markup::CoreProperty>(index)).value().has_value() ? 1 : 0;
    return package.core().partName() + " (" + std::to_string(count) + ')';
}

} // namespace

TEST_F(ForeignPackages, HaveTheVerdictsOfTheirIndex)
{
    for (const Foreign& foreign : m_index) {
        const PackageVerdict found = verdictOnFile(foreign.path);
        EXPECT_EQ(found.has_value(), foreign.isRefused) << foreign.path << ": " << textOf(found);
    }
}

TEST_F(ForeignPackages, HaveOneVerdictFromFileMemoryAndNestedPart)
{
    for (const Foreign& foreign : m_index) {
        const PackageVerdict fromFile = verdictOnFile(foreign.path);
        const PackageVerdict fromMemory = verdictInMemory(foreign.path);
        const PackageVerdict nested = verdictOnNested(foreign.path, m_folder);
        EXPECT_EQ(fromFile, fromMemory) << foreign.path << ": " << textOf(fromFile) << " / " << textOf(fromMemory);
        EXPECT_EQ(fromFile, nested) << foreign.path << ": " << textOf(fromFile) << " / " << textOf(nested);
    }
}

TEST_F(ForeignPackages, HaveThePartsRelationshipsAndPropertiesOfTheirIndex)
{
    for (const Foreign& foreign : m_index) {
        if (foreign.isRefused)
            continue;
        const OpcPackage package = open_package(toFilePath2(foreign.path)).value();
        EXPECT_EQ(partNames(package).size(), foreign.parts) << foreign.path;
        EXPECT_EQ(relationshipLines(package.relationships().value()).size(), foreign.relationships) << foreign.path;
        EXPECT_EQ(describeCoreProperties(*OpcPackaging::detail::PackageAccess::data(package)), foreign.coreProperties)
            << foreign.path;
    }
}

TEST_F(ForeignPackages, KeepEveryEntryWhenTheyAreSavedUnchanged)
{
    const std::filesystem::path saved = m_folder / "saved.zip";
    for (const Foreign& foreign : m_index) {
        if (foreign.isRefused)
            continue;
        const PackagePtr package = PackageData::openFile(toFilePath2(foreign.path)).value();
        ASSERT_FALSE(verdictOn(package)) << foreign.path;
        ASSERT_TRUE(package->write(toFilePath2(saved))) << foreign.path;
        expectSameEntries(saved, foreign.path);
    }
}

TEST_F(ForeignPackages, KeepEveryOtherEntryWhenATitleIsSet)
{
    const std::filesystem::path saved = m_folder / "saved.zip";
    for (const Foreign& foreign : m_index) {
        if (foreign.isRefused)
            continue;
        const PackagePtr package = PackageData::openFile(toFilePath2(foreign.path)).value();
        ASSERT_TRUE(package->properties().setTitle(u8"a new title")) << foreign.path;
        ASSERT_TRUE(package->write(toFilePath2(saved))) << foreign.path;
        EXPECT_FALSE(verdictOnFile(saved)) << foreign.path;
        EXPECT_EQ(PackageData::openFile(toFilePath2(saved)).value()->properties().title().value(),
                  String2{u8"a new title"});
        const std::string core = package->core().partName();
        const auto after = readRawEntries(saved);
        for (const auto& [name, bytes] : readRawEntries(foreign.path)) {
            const auto found = std::ranges::find(after, name, &std::pair<std::string, std::string>::first);
            ASSERT_NE(found, after.end()) << foreign.path << name;
            const bool mayChange = name == "[Content_Types].xml" || name == "_rels/.rels" || '/' + name == core;
            EXPECT_TRUE(mayChange || bytes.starts_with(found->second)) << foreign.path << name;
        }
    }
}
