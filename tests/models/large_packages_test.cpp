#include "kelvaris/system/qt/path_bridge.h"
#include "models/bundle_structure_items.h"
#include "models/bundle_structure_model.h"
#include "models/content_bundle_items.h"
#include "models/examples_bundle_items.h"
#include "models/item_roles.h"
#include "models/opc_package_items.h"
#include "tests/models/package_fixtures.h"
#include "tests/models/raw_package.h"

#include <gtest/gtest.h>

#include <string>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

// A search from the start of a directory for each part would make these tests run for minutes. How long they take is
// measured in the benchmarks.

namespace {

constexpr int count = 20000;

std::string partName(int i, bool inDirectories)
{
    const std::string number = std::to_string(i);
    return inDirectories ? "/content/directory " + number + "/part.txt" : "/content/part " + number + ".txt";
}

std::string encoded(std::string name)
{
    const auto blank = name.find(' ');
    return blank == std::string::npos ? name : name.replace(blank, 1, "%20");
}

FilePath2 writePackage(const TemporaryFolder& folder, bool inDirectories)
{
    RawPackage raw;
    for (int i = 0; i < count; ++i) {
        const std::string name = encoded(partName(i, inDirectories));
        raw.part(name).content(name);
    }
    return raw.write(folder);
}

class LargePackages : public testing::TestWithParam<bool>
{
protected:
    TemporaryFolder folder;
    FilePath2 path = writePackage(folder, GetParam());
};

} // namespace

TEST_P(LargePackages, StandInTheStructureModel)
{
    const OpcPackage package = open_package(path).value();
    const BundleStructureModel model{package, nullptr};
    EXPECT_EQ(model.rowCount(model.index(0, 0)), count);
}

TEST_P(LargePackages, StandInThePackageModel)
{
    const OpcPackageModel model{open_package(path), nullptr};
    EXPECT_EQ(model.rowCount(model.index(0, 0, model.partsIndex())), count);
}

TEST_P(LargePackages, StandInTheContentModel)
{
    ContentBundleContentModel model;
    model.setBundle(std::make_shared<ContentBundle>(ContentBundle::open(path).value()));
    EXPECT_EQ(model.rowCount(model.index(0, 0)), count);
}

TEST_P(LargePackages, StandInTheFilesOfAnExample)
{
    ExamplesBundleContentModel::RootDirectoryItem root{QString{}, nullptr};
    const OpcPackage package = open_package(path).value();
    const auto parts = package.parts().value();
    for (auto it = parts.begin(); it != decltype(it)::Sentinel{}; ++it)
        root.addPart(*it);
    EXPECT_EQ(root.rowCount(), count);
}

INSTANTIATE_TEST_SUITE_P(WithPartsInOneDirectory, LargePackages, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(WithOneDirectoryForEachPart, LargePackages, testing::Values(true));

namespace {

constexpr int depth = 40000;

template <class Directory>
Directory* deepestBelow(Directory& top)
{
    Directory* directory = &top;
    for (int level = 0; level < depth; ++level)
        directory = directory->directory(QStringLiteral("d"));
    return directory;
}

} // namespace

// Directories that let go of one another would need more than the stack for it.
TEST(DeepTrees, OfTheStructureModelAreReleased)
{
    ::detail::RootBundleStructureModelItem root;
    deepestBelow<::detail::BranchItem>(root)->addPart(QStringLiteral("part"));
    EXPECT_EQ(root.childCount(), 1);
}

TEST(DeepTrees, OfTheFilesOfAnExampleAreReleased)
{
    ExamplesBundleContentModel::RootDirectoryItem root{QString{}, nullptr};
    deepestBelow<ExamplesBundleContentModel::DirectoryItem>(root)->addFile(QStringLiteral("file"));
    EXPECT_EQ(root.rowCount(), 1);
}

TEST(DeepTrees, OfTheContentModelAreReleasedAndTellTheirPaths)
{
    ContentBundleContentModel::DirectoryItem root{QString{}, nullptr};
    const auto* const deepest = deepestBelow(root);
    EXPECT_EQ(deepest->data(ItemRoles::path).toString().size(), 2 * depth - 1);
}

TEST(DeepTrees, OfThePackageModelAreReleasedAndTellTheirPaths)
{
    OpcPackageModel::PartDirectory root{QStringLiteral("Parts"), nullptr};
    const auto* const deepest = deepestBelow(root);
    EXPECT_EQ(toQString(deepest->path()).size(), 2 * depth - 1);
}
