#include "tests/host/core/opc/package_verdicts.h"

#include "host/core/opc/package_verifier.h"

#include <gtest/gtest.h>

#include <span>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackagePtr;
using OpcPackaging::detail::PackageVerifier;
using OpcPackaging::detail::Result;

namespace {

std::vector<std::byte> bytesOfFile(const std::filesystem::path& path)
{
    const std::string text = readFile(path);
    const auto bytes = std::as_bytes(std::span{text});
    return {bytes.begin(), bytes.end()};
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

PackageVerdict verdictOn(const Result<PackagePtr>& package)
{
    if (!package)
        return package.error();
    const auto verified = PackageVerifier{**package}.verify();
    if (!verified)
        return verified.error();
    return std::nullopt;
}

PackageVerdict verdictOnFile(const std::filesystem::path& path)
{
    return verdictOn(PackageData::openFile(toFilePath2(path)));
}

PackageVerdict verdictInMemory(const std::filesystem::path& path)
{
    return verdictOn(PackageData::openSource(Zip::memorySource(bytesOfFile(path), "memory"), 0));
}

PackageVerdict verdictOnNested(const std::filesystem::path& path, const TemporaryFolder& folder)
{
    PackageFile outer;
    outer.addContentTypes().add("nested.txt", readFile(path)).write(folder / "outer.zip");
    const PackagePtr package = PackageData::openFile(toFilePath2(folder / "outer.zip")).value();
    return verdictOn(package->openNested(*package->findPart("/nested.txt").value()));
}

std::string textOf(const PackageVerdict& verdict)
{
    return verdict ? toStdString(verdict->message()) : "opens";
}

void expectSameEntries(const std::filesystem::path& saved, const std::filesystem::path& original)
{
    EXPECT_EQ(recordsOf(saved), recordsOf(original)) << original;
    const auto before = readRawEntries(original);
    const auto after = readRawEntries(saved);
    ASSERT_EQ(after.size(), before.size()) << original;
    // bytes between the entries belong to none of them and do not come along
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(after[i].first, before[i].first) << original;
        EXPECT_TRUE(before[i].second.starts_with(after[i].second)) << original << ": " << after[i].first;
    }
}
