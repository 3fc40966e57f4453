#include "host/core/opc/package_access.h"
#include "host/core/opc/package_verifier.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "tests/host/core/opc/package_file.h"
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
using OpcPackaging::detail::PackageVerifier;
using OpcPackaging::detail::Result;

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

std::vector<std::byte> bytesOfFile(const std::filesystem::path& path)
{
    const std::string text = readFile(path);
    const auto bytes = std::as_bytes(std::span{text});
    return {bytes.begin(), bytes.end()};
}

/// What opening and walking all of it comes to: a code, or nothing.
std::optional<ErrorCode2> verdict(const Result<PackagePtr>& package)
{
    if (!package)
        return package.error();
    const auto verified = PackageVerifier{**package}.verify();
    if (!verified)
        return verified.error();
    return std::nullopt;
}

std::string textOf(const std::optional<ErrorCode2>& error)
{
    return error ? toStdString(error->message()) : "opens";
}

std::optional<ErrorCode2> verdictOfNested(const std::filesystem::path& path, const TemporaryFolder& folder)
{
    PackageFile outer;
    outer.addContentTypes().add("nested.txt", readFile(path)).write(folder / "outer.zip");
    const PackagePtr package = PackageData::openFile(toFilePath2(folder / "outer.zip")).value();
    return verdict(package->openNested(*package->findPart("/nested.txt").value()));
}

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

/// The entries' records without the place of their local headers, which alone may change.
std::vector<std::string> recordsOf(const std::filesystem::path& path)
{
    const auto archive = Zip::Archive::open(Zip::openFileSource(toFilePath2(path)).value()).value();
    std::vector<std::string> records;
    for (const Zip::Entry& entry : archive->entries()) {
        constexpr std::size_t offsetAt = 42;
        std::string record{reinterpret_cast<const char*>(entry.record.data()), entry.record.size()};
        records.push_back(record.replace(offsetAt, 4, "...."));
    }
    return records;
}

} // namespace

TEST_F(ForeignPackages, HaveTheVerdictsOfTheirIndex)
{
    for (const Foreign& foreign : m_index) {
        const auto found = verdict(PackageData::openFile(toFilePath2(foreign.path)));
        EXPECT_EQ(found.has_value(), foreign.isRefused) << foreign.path << ": " << textOf(found);
    }
}

TEST_F(ForeignPackages, HaveOneVerdictFromFileMemoryAndNestedPart)
{
    for (const Foreign& foreign : m_index) {
        const auto fromFile = verdict(PackageData::openFile(toFilePath2(foreign.path)));
        const auto fromMemory =
            verdict(PackageData::openSource(Zip::memorySource(bytesOfFile(foreign.path), "memory"), 0));
        const auto nested = verdictOfNested(foreign.path, m_folder);
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
        ASSERT_FALSE(verdict(package)) << foreign.path;
        ASSERT_TRUE(package->write(toFilePath2(saved))) << foreign.path;
        EXPECT_EQ(recordsOf(saved), recordsOf(foreign.path)) << foreign.path;
        EXPECT_EQ(readEntries(saved), readEntries(foreign.path)) << foreign.path;
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
        EXPECT_FALSE(verdict(PackageData::openFile(toFilePath2(saved)))) << foreign.path;
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
