#include "kelvaris/system/io/bundle/content_bundle.h"
#include "kelvaris/system/io/mime_type.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20;

/// What packing a bundle of zeros adds to the memory of the process at its peak, in MiB.
class PackingMemory : public testing::Test
{
protected:
    long growthOf(int files, std::uint64_t size) const
    {
        const pid_t child = fork();
        if (child == 0)
            _exit(packs(files, size) ? 0 : 1);
        int status = -1;
        rusage usage{};
        EXPECT_EQ(wait4(child, &status, 0, &usage), child);
        EXPECT_EQ(status, 0);
        rusage own{};
        getrusage(RUSAGE_SELF, &own);
        return (usage.ru_maxrss - own.ru_maxrss) / 1024;
    }

private:
    bool packs(int files, std::uint64_t size) const
    {
        auto bundle = ContentBundle::create().value();
        const auto path = m_folder.write("zeros", "");
        std::filesystem::resize_file(path, size);
        for (int i = 0; i < files; ++i) {
            const OpcPackagePartUri uri{toFilePath("content/" + std::to_string(i))};
            if (!bundle.createContentPartFromFile(toFilePath(path), uri,
                                                  MIMEType{String2{u8"application/octet-stream"}},
                                                  OpcPackageCompressionType::normal))
                return false;
        }
        return bool{bundle.writeToFile(toFilePath(m_folder / "bundle"))};
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(PackingMemory, DoesNotGrowWithTheSizeOfAFile)
{
    EXPECT_LT(growthOf(1, 192 * mebibyte), 64);
}

TEST_F(PackingMemory, OfFourFilesOfAGibibyteStaysBelow256MiB)
{
    if (std::getenv("HOLLERWICK_LARGE_TESTS") == nullptr)
        GTEST_SKIP() << "takes a minute; set HOLLERWICK_LARGE_TESTS to run it";
    EXPECT_LT(growthOf(4, 1024 * mebibyte), 256);
}
