#include "authoring/barrel_creation.h"
#include "browsers/example_browser2_example_model.h"
#include "browsers/example_browser2_example_sort_filter_model.h"
#include "host/core/paths/disk/work.h"
#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/io/bundle/content_bundle.h"
#include "kelvaris/system/io/mime_type.h"
#include "models/bundle_structure_model.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/growth/allocation_count.h"
#include "tests/support/noise.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

constexpr int few = 200;
constexpr int many = 4 * few;

/// Four times the data may take four times the allocations, and a tenth more for tables that double.
void expectLinear(const std::function<std::uint64_t(int)>& allocationsFor)
{
    const std::uint64_t little = allocationsFor(few);
    const std::uint64_t much = allocationsFor(many);
    EXPECT_GT(little, 0U);
    EXPECT_LE(much, 4 * little + 4 * little / 10);
}

std::uint64_t bytesReadByListing(const std::filesystem::path& barrel)
{
    const std::uint64_t before = Disk::Work::moved().read;
    ExampleBrowser2ExampleModel model;
    model.addBarrels({toFilePath(barrel)});
    EXPECT_GT(model.rowCount(), 0);
    return Disk::Work::moved().read - before;
}

class Growth : public testing::Test
{
protected:
    /// One example under as many names, which are all of one length.
    std::filesystem::path barrelOf(int examples) const
    {
        const SampleExample sample{.title = QStringLiteral("A title that is long enough"),
                                   .description = QStringLiteral("A description that is long enough"),
                                   .manufacturer = QStringLiteral("Acme Semiconductors"),
                                   .keywords = {QStringLiteral("filter"), QStringLiteral("passive")}};
        const FilePath2 example = toFilePath(writeExample(m_folder, "example", sample));
        auto barrel = BarrelOfExamplesBundle::create().value();
        for (int i = 0; i < examples; ++i)
            (void)barrel.addExample(example, OpcPackagePartUri{toFilePath("examples/" + std::to_string(1000 + i))})
                .value();
        const auto path = m_folder / ("barrel" + std::to_string(examples));
        barrel.writeToFile(toFilePath(path)).value();
        return path;
    }

    std::filesystem::path packageOf(int parts) const
    {
        const FilePath2 file = toFilePath(m_folder.write("part", "a part"));
        auto bundle = ContentBundle::create().value();
        for (int i = 0; i < parts; ++i) {
            const OpcPackagePartUri uri{
                toFilePath("content/d" + std::to_string(i % 20) + "/" + std::to_string(1000 + i))};
            (void)bundle
                .createContentPartFromFile(file, uri, MIMEType{String2{u8"text/plain"}},
                                           OpcPackageCompressionType::none)
                .value();
        }
        const auto path = m_folder / ("package" + std::to_string(parts));
        bundle.writeToFile(toFilePath(path)).value();
        return path;
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(Growth, OfPackingABarrelIsThatOfItsExamples)
{
    std::vector<FilePath2> files;
    const auto first = writeExample(m_folder, "e0", {.title = QStringLiteral("title")});
    for (int i = 0; i < many; ++i) {
        const auto copy = m_folder / ("e" + std::to_string(i));
        if (i > 0)
            std::filesystem::copy_file(first, copy);
        files.push_back(toFilePath(copy));
    }
    expectLinear([&](int count) {
        return allocationsOf([&] {
            ASSERT_TRUE(Authoring::createExamples({files.begin(), files.begin() + count}, toFilePath(m_folder / "b")));
        });
    });
}

TEST_F(Growth, OfListingABarrelIsThatOfItsExamples)
{
    expectLinear([&](int count) {
        const FilePath2 barrel = toFilePath(barrelOf(count));
        return allocationsOf([&] {
            ExampleBrowser2ExampleModel model;
            model.addBarrels({barrel});
            ASSERT_EQ(model.rowCount(), count);
        });
    });
}

TEST_F(Growth, AListingReadsEachSmallExampleFromTheDiskOnce)
{
    const auto barrel = barrelOf(few);
    // beside the examples: the barrel's own directory and texts, and each example's local header once more
    EXPECT_LE(bytesReadByListing(barrel), std::filesystem::file_size(barrel) * 5 / 4);
}

TEST_F(Growth, AListingReadsNothingOfAnExamplesFiles)
{
    constexpr std::size_t size = std::size_t{1} << 20;
    const auto barrel = writeBarrel(m_folder, "barrel", {{.title = QStringLiteral("large"), .bytes = noise(size)}});
    ASSERT_GT(std::filesystem::file_size(barrel), size);
    EXPECT_LT(bytesReadByListing(barrel), size / 16);
}

TEST_F(Growth, OfOpeningAPackageIsThatOfItsParts)
{
    expectLinear([&](int count) {
        const FilePath2 path = toFilePath(packageOf(count));
        return allocationsOf([&] { ASSERT_TRUE(open_package(path).value().parts()); });
    });
}

TEST_F(Growth, OfOpeningAPackageIsThatOfTheDirectoriesInAName)
{
    const FilePath2 file = toFilePath(m_folder.write("part", "a part"));
    expectLinear([&](int directories) {
        std::string name = "content";
        for (int i = 0; i < directories; ++i)
            name += "/directory";
        auto bundle = ContentBundle::create().value();
        (void)bundle
            .createContentPartFromFile(file, OpcPackagePartUri{toFilePath(name)}, MIMEType{String2{u8"text/plain"}},
                                       OpcPackageCompressionType::none)
            .value();
        const FilePath2 path = toFilePath(m_folder / ("deep" + std::to_string(directories)));
        bundle.writeToFile(path).value();
        const std::uint64_t before = allocatedBytes();
        EXPECT_TRUE(open_package(path).value().parts());
        return allocatedBytes() - before;
    });
}

TEST_F(Growth, OfTheBundleViewersModelIsThatOfTheParts)
{
    expectLinear([&](int count) {
        const OpcPackage package = open_package(toFilePath(packageOf(count))).value();
        return allocationsOf([&] { const BundleStructureModel model{package, nullptr}; });
    });
}

TEST_F(Growth, OfASearchTakesNoAllocationOfOursForARow)
{
    ExampleBrowser2ExampleModel model;
    model.addBarrels({toFilePath(barrelOf(many))});
    ExampleBrowser2ExampleSortFilterModel proxy;
    proxy.setSourceModel(&model);
    ASSERT_EQ(proxy.rowCount(), many);
    const QRegularExpression pattern = searchPattern(QStringLiteral("passive"));
    EXPECT_LE(allocationsOf([&] { proxy.setFilterRegularExpression(pattern); }), 3U * many);
    EXPECT_EQ(proxy.rowCount(), many);
}
