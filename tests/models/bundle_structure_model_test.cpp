#include "models/bundle_structure_model.h"

#include "kelvaris/system/bad_expected_access.h"
#include "models/bundle_structure_items.h"
#include "tests/models/package_fixtures.h"
#include "tests/models/raw_package.h"
#include "tests/models/signal_log.h"
#include "tests/support/model_dump.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtWidgets/QTreeView>

#include <gtest/gtest.h>

#include <type_traits>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

const DumpedCells allColumns{{0, 1, 2, 3}, {Qt::DisplayRole}};

OpcPackage packageOf(const TemporaryFolder& folder, std::initializer_list<const char*> names)
{
    RawPackage raw;
    for (const char* const name : names)
        raw.part(name);
    return open_package(raw.write(folder)).value();
}

class BundleStructureModelTest : public testing::Test
{
protected:
    std::string dumpOf(std::initializer_list<const char*> names)
    {
        return dump(BundleStructureModel{packageOf(folder, names), nullptr}, {}, allColumns);
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(BundleStructureModelTest, APackageWithoutPartsHasNoRowsButItsHeader)
{
    const BundleStructureModel model{packageOf(folder, {}), nullptr};
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 4);
    EXPECT_EQ(model.headerData(3, Qt::Horizontal).toString(), QStringLiteral("MIME Type"));
}

TEST(BundleStructureModel, FromAParentAloneIsEmpty)
{
    QObject parent;
    const BundleStructureModel* const model = new BundleStructureModel{&parent};
    EXPECT_EQ(dump(*model), "");
    EXPECT_EQ(model->QObject::parent(), &parent);
}

TEST_F(BundleStructureModelTest, PartsOfOneFolderStandBelowOneBranchInTheirOrder)
{
    EXPECT_EQ(dumpOf({"/docProps/core.txt", "/docProps/app.txt"}), "docProps | 2 items | folder | \n"
                                                                   "  core.txt |  |  | \n"
                                                                   "  app.txt |  |  | \n");
}

TEST_F(BundleStructureModelTest, APartAtTheTopHasNoFolderAndEmptyCells)
{
    EXPECT_EQ(dumpOf({"/a.txt"}), "a.txt |  |  | \n");
}

TEST_F(BundleStructureModelTest, FoldersAndPartsStandInOneSequenceAsTheyAreFirstMet)
{
    EXPECT_EQ(dumpOf({"/z/1.txt", "/m.txt", "/a/2.txt", "/z/3.txt"}), "z | 2 items | folder | \n"
                                                                      "  1.txt |  |  | \n"
                                                                      "  3.txt |  |  | \n"
                                                                      "m.txt |  |  | \n"
                                                                      "a | 1 items | folder | \n"
                                                                      "  2.txt |  |  | \n");
}

// Kept: "1 items".
TEST_F(BundleStructureModelTest, TheSizeOfAFolderCountsDirectChildrenOnlyAndHasNoSingular)
{
    EXPECT_EQ(dumpOf({"/a/b/1.txt", "/a/b/2.txt", "/a/b/c/3.txt"}), "a | 1 items | folder | \n"
                                                                    "  b | 3 items | folder | \n"
                                                                    "    1.txt |  |  | \n"
                                                                    "    2.txt |  |  | \n"
                                                                    "    c | 1 items | folder | \n"
                                                                    "      3.txt |  |  | \n");
}

TEST_F(BundleStructureModelTest, FoldersThatDifferInCaseAreTwo)
{
    EXPECT_EQ(dumpOf({"/Sub/1.txt", "/sub/2.txt"}), "Sub | 1 items | folder | \n  1.txt |  |  | \n"
                                                    "sub | 1 items | folder | \n  2.txt |  |  | \n");
}

TEST_F(BundleStructureModelTest, NamesStandAsInThePackage)
{
    EXPECT_EQ(dumpOf({"/b%FF.txt"}), "b%FF.txt |  |  | \n");
    EXPECT_EQ(dumpOf({"/a%20b/50%25%20%C3%BC.txt"}), "a%20b | 1 items | folder | \n  50%25%20%C3%BC.txt |  |  | \n");
}

TEST_F(BundleStructureModelTest, ThePackageMayGoOnceTheModelStands)
{
    auto package = std::make_unique<OpcPackage>(packageOf(folder, {"/a/b.txt"}));
    const BundleStructureModel model{*package, nullptr};
    package.reset();
    EXPECT_EQ(dump(model), "a\n  b.txt\n");
}

TEST_F(BundleStructureModelTest, FromABundleShowsTheBundlesPackage)
{
    const auto bundle = contentBundle({L"/content/a.txt"});
    const BundleStructureModel fromBundle{*bundle, nullptr};
    const BundleStructureModel fromPackage{bundle->package(), nullptr};
    EXPECT_EQ(dump(fromBundle), dump(fromPackage));
    EXPECT_TRUE(rowNamed(fromBundle, QStringLiteral("a.txt")).isValid());
}

TEST_F(BundleStructureModelTest, TheHeaderHasTextsForItsFourSectionsAndTheDisplayRoleOnly)
{
    const BundleStructureModel model{nullptr};
    EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Name"));
    EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Size"));
    EXPECT_EQ(model.headerData(2, Qt::Horizontal).toString(), QStringLiteral("Type"));
    EXPECT_EQ(model.headerData(3, Qt::Horizontal).toString(), QStringLiteral("MIME Type"));
    EXPECT_FALSE(model.headerData(4, Qt::Horizontal).isValid());
    EXPECT_FALSE(model.headerData(-1, Qt::Horizontal).isValid());
    EXPECT_FALSE(model.headerData(0, Qt::Vertical).isValid());
    EXPECT_FALSE(model.headerData(0, Qt::Horizontal, Qt::EditRole).isValid());
}

TEST_F(BundleStructureModelTest, OnlyTheDisplayRoleHasAValue)
{
    const BundleStructureModel model{packageOf(folder, {"/a/b.txt"}), nullptr};
    for (const int role : {int{Qt::ToolTipRole}, int{Qt::EditRole}, int{Qt::DecorationRole}, int{Qt::UserRole}})
        EXPECT_FALSE(model.data(model.index(0, 0), role).isValid());
    EXPECT_FALSE(model.data({}, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model.data({}, Qt::ToolTipRole).isValid());
}

TEST_F(BundleStructureModelTest, NoCellIsEditable)
{
    BundleStructureModel model{packageOf(folder, {"/a/b.txt"}), nullptr};
    EXPECT_EQ(model.flags(model.index(0, 0)), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    EXPECT_FALSE(model.setData(model.index(0, 0), QStringLiteral("x")));
}

TEST_F(BundleStructureModelTest, HasNoIndexPastItsEnds)
{
    const BundleStructureModel model{packageOf(folder, {"/a/b.txt", "/c.txt"}), nullptr};
    EXPECT_FALSE(model.index(2, 0).isValid());
    EXPECT_FALSE(model.index(-1, 0).isValid());
    EXPECT_FALSE(model.index(0, 4).isValid());
    EXPECT_FALSE(model.index(1, 0, model.index(0, 0)).isValid());
    EXPECT_FALSE(model.index(0, 0, model.index(1, 0)).isValid());
    EXPECT_FALSE(model.parent({}).isValid());
}

TEST_F(BundleStructureModelTest, ParentsAreFoundAtAnyDepth)
{
    const BundleStructureModel model{packageOf(folder, {"/x.txt", "/a/y.txt", "/a/b/z.txt", "/a/b/c/d.txt"}), nullptr};
    QModelIndex parent;
    for (const char* const name : {"a", "b", "c", "d.txt"}) {
        const QModelIndex index = rowNamed(model, QLatin1String{name}, parent);
        ASSERT_TRUE(index.isValid()) << name;
        EXPECT_EQ(index.parent(), parent) << name;
        EXPECT_EQ(index.sibling(index.row(), 3).parent(), parent) << name;
        parent = index;
    }
}

// Kept: whichever column a parent is given in, its item has the rows. QAbstractItemModelTester asks for the contrary,
// so that it can look at a flat package only.
TEST_F(BundleStructureModelTest, ARowHasItsChildrenBelowEachOfItsColumns)
{
    const BundleStructureModel model{packageOf(folder, {"/a/b.txt"}), nullptr};
    EXPECT_EQ(model.rowCount(model.index(0, 2)), 1);
    EXPECT_EQ(model.index(0, 0, model.index(0, 2)), model.index(0, 0, model.index(0, 0)));
}

TEST_F(BundleStructureModelTest, HoldsWhatQtAsksOfAModelWhereThereIsNoFolder)
{
    BundleStructureModel model{packageOf(folder, {"/a.txt", "/b.txt"}), nullptr};
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    EXPECT_EQ(model.rowCount(), 2);
}

TEST_F(BundleStructureModelTest, AViewShowsAndOpensAllOfIt)
{
    BundleStructureModel model{packageOf(folder, {"/a/b/c.txt", "/d.txt"}), nullptr};
    SignalLog log{model};
    QTreeView view;
    view.setModel(&model);
    view.show();
    view.expandAll();
    view.keyboardSearch(QStringLiteral("d"));
    EXPECT_EQ(view.currentIndex().data().toString(), QStringLiteral("d.txt"));
    EXPECT_TRUE(view.isExpanded(rowNamed(model, QStringLiteral("b"))));
    EXPECT_EQ(log.take(), "");
}

TEST_F(BundleStructureModelTest, PartsThatCannotBeReadThrow)
{
    const OpcPackage package =
        open_package(RawPackage{}.entry("[Content_Types].xml", "this is no XML").entry("a.txt", "x").write(folder))
            .value();
    ASSERT_FALSE(package.parts());
    EXPECT_THROW((BundleStructureModel{package, nullptr}), bad_expected_access<ErrorCode2>);
}

TEST_F(BundleStructureModelTest, RelationshipsThatCannotBeReadThrowAlthoughTheyHaveNoRows)
{
    const OpcPackage package =
        open_package(RawPackage{}.part("/a.txt").entry("_rels/.rels", "this is no XML").write(folder)).value();
    ASSERT_TRUE(package.parts());
    EXPECT_THROW((BundleStructureModel{package, nullptr}), bad_expected_access<ErrorCode2>);
}

TEST_F(BundleStructureModelTest, RelationshipsAddNothingToTheTree)
{
    const OpcPackage package = open_package(RawPackage{}
                                                .part("/a.txt")
                                                .relationship("http://x.example/t", "a.txt")
                                                .relationship("http://x.example/t", "http://x.example/", "External")
                                                .write(folder))
                                   .value();
    EXPECT_EQ(dump(BundleStructureModel{package, nullptr}), "a.txt\n");
}

TEST(BundleStructureItems, APartAndAFolderOfOneNameAreBothThereAndPartsGoIntoTheFolder)
{
    ::detail::RootBundleStructureModelItem root;
    root.addPart(QStringLiteral("a"));
    ::detail::BranchItem* const folder = root.directory(QStringLiteral("a"));
    folder->addPart(QStringLiteral("b"));
    root.addPart(QStringLiteral("a"));
    ASSERT_EQ(root.childCount(), 3);
    EXPECT_FALSE(root.child(0)->isBranch());
    EXPECT_EQ(root.child(1), folder);
    EXPECT_FALSE(root.child(2)->isBranch());
    EXPECT_EQ(root.directory(QStringLiteral("a")), folder);
    EXPECT_EQ(folder->child(0)->name(), QStringLiteral("b"));
}

TEST(BundleStructureItems, EachClassAnswersForItself)
{
    ::detail::RootBundleStructureModelItem root;
    const ::detail::BranchItem* const folder = root.directory(QStringLiteral("a"));
    root.addPart(QStringLiteral("b"));
    const auto* const part = root.child(1);

    EXPECT_EQ(root.itemKind(), 2);
    EXPECT_EQ(root.parent(), nullptr);
    EXPECT_EQ(root.sizeText(), QString{});
    EXPECT_EQ(root.typeText(), QString{});
    EXPECT_EQ(folder->itemKind(), 1);
    EXPECT_EQ(folder->sizeText(), QStringLiteral("0 items"));
    EXPECT_EQ(folder->typeText(), QStringLiteral("folder"));
    EXPECT_EQ(folder->parent(), &root);
    EXPECT_EQ(part->itemKind(), 0);
    EXPECT_EQ(part->childCount(), 0);
    EXPECT_EQ(part->child(0), nullptr);
    EXPECT_EQ(root.child(2), nullptr);
    EXPECT_EQ(root.child(-1), nullptr);
    for (const ::detail::AbstractBundleStructureModelItem* const item : {root.child(0), root.child(1)})
        EXPECT_EQ(item->mimeTypeText(), QString{});
}

TEST(BundleStructureItems, AnItemThatIsNotBelowHasPositionMinusOne)
{
    ::detail::RootBundleStructureModelItem root;
    root.directory(QStringLiteral("a"))->addPart(QStringLiteral("b"));
    EXPECT_EQ(root.positionOf(root.child(0)->child(0)), -1);
    EXPECT_EQ(root.positionOf(root.child(0)), 0);
}
