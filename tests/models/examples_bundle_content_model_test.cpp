#include "models/examples_bundle_content_model.h"

#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/io/mime_type.h"
#include "models/examples_bundle_items.h"
#include "tests/models/package_fixtures.h"
#include "tests/models/raw_package.h"
#include "tests/models/signal_log.h"
#include "tests/support/model_dump.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QListView>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

class ExamplesBundleContentModelTest : public testing::Test
{
protected:
    FilePath2 example(const char* fileName, const char* title, const PartNames& names = {})
    {
        return writeExample(folder, fileName, QString::fromUtf8(title), names);
    }

    std::string files(int row) const { return dump(model, model.exampleContentIndex(row)); }

    QModelIndex titleCell(int row) const { return model.index(0, 1, model.examplePropertiesIndex(row)); }

    TemporaryFolder folder;
    ExamplesBundleContentModel model;
};

// Writes a barrel and leaves out nothing but the bytes of its first example, which become something else.
std::unique_ptr<BarrelOfExamplesBundle> withBrokenExample(std::unique_ptr<BarrelOfExamplesBundle> barrel,
                                                          const TemporaryFolder& folder)
{
    auto part = barrel->package().part(OpcPackagePartUri{L"/examples/0.zip"}).value();
    part.writeContentFromFile(toPath(folder.write("broken", "no package")), OpcPackagePartWriteContentMode::replace)
        .value();
    const FilePath2 path = toPath(folder / "broken barrel.kvexs");
    barrel->writeToFile(path).value();
    return std::make_unique<BarrelOfExamplesBundle>(BarrelOfExamplesBundle::open(path).value());
}

// A barrel whose second example is not there.
std::unique_ptr<BarrelOfExamplesBundle> withMissingExample(const FilePath2& example)
{
    auto barrel = barrelOf({example});
    const auto relationships = barrel->exampleRelationships().value();
    const String2 type = (*relationships.begin()).type();
    (void)barrel->package()
        .createRelationship(OpcPackagePartUri{L"/examples/missing.zip"}, OpcTargetMode::internal, type)
        .value();
    return barrel;
}

} // namespace

TEST_F(ExamplesBundleContentModelTest, WithoutABarrelThereAreTwoRowsWithoutRows)
{
    EXPECT_EQ(dump(model), "-\n-\n");
    EXPECT_EQ(model.examplesIndex(), model.index(0, 0));
    EXPECT_EQ(model.examplesPropertiesIndex(), model.index(1, 0));
    EXPECT_EQ(model.rowCount(model.examplesIndex()), 0);
    EXPECT_EQ(model.rowCount(model.examplesPropertiesIndex()), 0);
}

TEST_F(ExamplesBundleContentModelTest, AnEmptyBarrelHasNoExamples)
{
    model.setBundle(barrelOf({}));
    EXPECT_EQ(dump(model), "-\n-\n");
}

TEST_F(ExamplesBundleContentModelTest, EachExampleHasItsFilesAndItsPropertiesInTheOrderOfTheBarrel)
{
    model.setBundle(barrelOf({example("b.zip", "Zweites", {L"/content/b.txt", L"/content/sub/c.txt"}),
                              example("a.zip", "Erstes ü", {L"/content/a.txt"})}));
    EXPECT_EQ(dump(model, {}, {{0, 1}, {Qt::DisplayRole}}), "- | -\n"
                                                            "  Zweites | -\n"
                                                            "     | -\n"
                                                            "      b.txt | -\n"
                                                            "      sub | -\n"
                                                            "        c.txt | -\n"
                                                            "    - | -\n"
                                                            "      Title | Zweites\n"
                                                            "  Erstes ü | -\n"
                                                            "     | -\n"
                                                            "      a.txt | -\n"
                                                            "    - | -\n"
                                                            "      Title | Erstes ü\n"
                                                            "- | -\n");
}

TEST_F(ExamplesBundleContentModelTest, TheFolderContentIsNoRowInWhicheverCase)
{
    model.setBundle(
        barrelOf({example("a.zip", "t", {L"/content/readme.txt"}), example("b.zip", "t", {L"/CONTENT/readme.txt"})}));
    EXPECT_EQ(files(0), "readme.txt\n");
    EXPECT_EQ(files(1), "readme.txt\n");
}

// Kept: the folder is no row however often it leads a path, and an ordinary one further down.
TEST_F(ExamplesBundleContentModelTest, ARepeatedLeadingContentIsAbsorbedAndALaterOneIsNot)
{
    model.setBundle(
        barrelOf({example("a.zip", "t", {L"/content/Content/a.txt", L"/content/sub/content/b.txt", L"/c.txt"})}));
    EXPECT_EQ(files(0), "a.txt\nsub\n  content\n    b.txt\nc.txt\n");
}

TEST_F(ExamplesBundleContentModelTest, FoldersThatDifferInCaseAreOneNamedAsFirstMet)
{
    model.setBundle(barrelOf({example("a.zip", "t", {L"/content/Sub/a.txt", L"/content/sub/b.txt"})}));
    EXPECT_EQ(files(0), "Sub\n  a.txt\n  b.txt\n");
}

TEST_F(ExamplesBundleContentModelTest, FilesAndFoldersStandInOneSequenceAsFirstMet)
{
    model.setBundle(barrelOf({example(
        "a.zip", "t",
        {L"/content/z/1.txt", L"/content/m.txt", L"/content/a/2.txt", L"/content/z/3.txt", L"content/50% ü #.txt"})}));
    EXPECT_EQ(files(0), "z\n  1.txt\n  3.txt\nm.txt\na\n  2.txt\n50% ü #.txt\n");
}

TEST_F(ExamplesBundleContentModelTest, AFileNamedContentIsARow)
{
    model.setBundle(barrelOf({example("a.zip", "t", {L"/content/content"})}));
    EXPECT_EQ(files(0), "content\n");
}

TEST_F(ExamplesBundleContentModelTest, AnExampleWithoutATitleHasAnEmptyName)
{
    model.setBundle(barrelOf({example("a.zip", "", {L"/content/a.txt"})}));
    EXPECT_EQ(model.index(0, 0, model.examplesIndex()).data(), QVariant{QString{}});
    EXPECT_EQ(titleCell(0).data(), QVariant{QString{}});
}

TEST_F(ExamplesBundleContentModelTest, AnExampleThatCannotBeOpenedIsARowWithoutANameAndWithoutFiles)
{
    const auto intact = example("b.zip", "intact", {L"/content/b.txt"});
    model.setBundle(withBrokenExample(barrelOf({example("a.zip", "broken", {L"/content/a.txt"}), intact}), folder));
    EXPECT_EQ(dump(model), "-\n"
                           "  \n"
                           "    \n"
                           "    -\n"
                           "      Title\n"
                           "  intact\n"
                           "    \n"
                           "      b.txt\n"
                           "    -\n"
                           "      Title\n"
                           "-\n");
    EXPECT_EQ(titleCell(0).data(), QVariant{QString{}});
}

TEST_F(ExamplesBundleContentModelTest, TheBarrelIsGoneAfterSetBundleAndItsExamplesAreNot)
{
    const FilePath2 path = toPath(folder / "barrel.kvexs");
    barrelOf({example("a.zip", "kept", {L"/content/a.txt"})})->writeToFile(path).value();
    model.setBundle(std::make_unique<BarrelOfExamplesBundle>(BarrelOfExamplesBundle::open(path).value()));
    std::filesystem::remove(folder / "barrel.kvexs");
    EXPECT_EQ(files(0), "a.txt\n");
    EXPECT_TRUE(model.setData(titleCell(0), QStringLiteral("changed")));
    EXPECT_EQ(titleCell(0).data().toString(), QStringLiteral("changed"));
}

TEST_F(ExamplesBundleContentModelTest, ColumnCountIsTwoBelowPropertiesAndOneEverywhereElse)
{
    model.setBundle(barrelOf({example("a.zip", "t", {L"/content/sub/a.txt"})}));
    const QModelIndex exampleRow = model.index(0, 0, model.examplesIndex());
    EXPECT_EQ(model.columnCount(model.examplesPropertiesIndex()), 2);
    EXPECT_EQ(model.columnCount(model.examplePropertiesIndex(0)), 2);
    const QModelIndex folderRow = model.index(0, 0, model.exampleContentIndex(0));
    for (const QModelIndex& parent : {QModelIndex{}, model.examplesIndex(), exampleRow, model.exampleContentIndex(0),
                                      folderRow, model.index(0, 0, folderRow), titleCell(0)})
        EXPECT_EQ(model.columnCount(parent), 1);
}

TEST_F(ExamplesBundleContentModelTest, OnlyDisplayAndEditRolesHaveText)
{
    model.setBundle(barrelOf({example("a.zip", "t", {L"/content/sub/a.txt"})}));
    const QModelIndex exampleRow = model.index(0, 0, model.examplesIndex());
    const QModelIndex folderRow = model.index(0, 0, model.exampleContentIndex(0));
    for (const QModelIndex& index : {exampleRow, folderRow, model.index(0, 0, folderRow), titleCell(0)}) {
        EXPECT_EQ(index.data(Qt::EditRole), index.data(Qt::DisplayRole));
        EXPECT_TRUE(index.data(Qt::EditRole).isValid());
        EXPECT_FALSE(index.data(Qt::ToolTipRole).isValid());
        EXPECT_FALSE(index.data(Qt::UserRole).isValid());
    }
    for (const QModelIndex& index :
         {QModelIndex{}, model.examplesIndex(), model.examplesPropertiesIndex(), model.examplePropertiesIndex(0)})
        EXPECT_FALSE(model.data(index, Qt::DisplayRole).isValid());
}

TEST_F(ExamplesBundleContentModelTest, SetDataTakesTheValueOfAPropertyWithoutASignal)
{
    model.setBundle(barrelOf({example("a.zip", "old")}));
    SignalLog log{model};
    EXPECT_TRUE(model.setData(titleCell(0), QStringLiteral("new ü")));
    EXPECT_EQ(log.take(), "");
    EXPECT_EQ(titleCell(0).data().toString(), QStringLiteral("new ü"));
}

// Kept: the example's row shows the title with which it was read.
TEST_F(ExamplesBundleContentModelTest, SetDataLeavesTheNameOfTheExampleAsItWas)
{
    model.setBundle(barrelOf({example("a.zip", "old")}));
    model.setData(titleCell(0), QStringLiteral("new"));
    EXPECT_EQ(model.index(0, 0, model.examplesIndex()).data().toString(), QStringLiteral("old"));
}

TEST_F(ExamplesBundleContentModelTest, ANewTitleIsThatOfThePackageOfTheExample)
{
    ExamplePart part = barrelOf({example("a.zip", "old")})->example(OpcPackagePartUri{L"/examples/0.zip"}).value();
    ExamplesBundleContentModel::ExamplePropertiesItem properties{nullptr, &part};
    EXPECT_TRUE(properties.child(0)->setData(1, QStringLiteral("new ü"), Qt::EditRole));
    EXPECT_EQ(part.package().packageProperties().value()->title().value(), String2{u8"new ü"});
}

TEST_F(ExamplesBundleContentModelTest, SetDataElsewhereReturnsFalseAndChangesNothing)
{
    model.setBundle(barrelOf({example("a.zip", "old", {L"/content/a.txt"})}));
    const std::string before = dump(model, {}, {{0, 1}, {Qt::DisplayRole}});
    const QModelIndex nameCell = titleCell(0).sibling(0, 0);
    EXPECT_FALSE(model.setData(nameCell, QStringLiteral("x")));
    EXPECT_FALSE(model.setData(titleCell(0), QStringLiteral("x"), Qt::DisplayRole));
    EXPECT_FALSE(model.setData({}, QStringLiteral("x")));
    EXPECT_FALSE(model.setData(model.examplesIndex(), QStringLiteral("x")));
    EXPECT_FALSE(model.setData(model.index(0, 0, model.exampleContentIndex(0)), QStringLiteral("x")));
    EXPECT_EQ(dump(model, {}, {{0, 1}, {Qt::DisplayRole}}), before);
}

TEST_F(ExamplesBundleContentModelTest, SetDataWithTextThatIsNoUnicodeThrowsAndKeepsTheValue)
{
    model.setBundle(barrelOf({example("a.zip", "old")}));
    EXPECT_THROW(model.setData(titleCell(0), QString{QChar{0xD800}}), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(titleCell(0).data().toString(), QStringLiteral("old"));
}

TEST_F(ExamplesBundleContentModelTest, ATitleThatThePackageRefusesIsShownAllTheSame)
{
    model.setBundle(barrelOf({example("a.zip", "old")}));
    // a character that no XML can hold
    ASSERT_FALSE(exampleBundle({})->setTitle(u8"\u0001"));
    EXPECT_TRUE(model.setData(titleCell(0), QStringLiteral("\u0001")));
    EXPECT_EQ(titleCell(0).data().toString(), QStringLiteral("\u0001"));
}

TEST_F(ExamplesBundleContentModelTest, NoCellIsMarkedEditable)
{
    model.setBundle(barrelOf({example("a.zip", "t")}));
    EXPECT_FALSE(model.flags(titleCell(0)) & Qt::ItemIsEditable);
}

TEST_F(ExamplesBundleContentModelTest, HasNoIndexPastItsEnds)
{
    model.setBundle(barrelOf({example("a.zip", "t", {L"/content/a.txt"})}));
    EXPECT_FALSE(model.index(2, 0).isValid());
    EXPECT_FALSE(model.index(0, 1).isValid());
    EXPECT_FALSE(model.index(1, 0, model.examplesIndex()).isValid());
    EXPECT_FALSE(model.index(1, 0, model.exampleContentIndex(0)).isValid());
    EXPECT_FALSE(model.index(0, 2, model.examplePropertiesIndex(0)).isValid());
    EXPECT_FALSE(model.index(0, 0, model.examplesPropertiesIndex()).isValid());
    EXPECT_FALSE(model.parent({}).isValid());
}

TEST_F(ExamplesBundleContentModelTest, ParentsAreFoundAtAnyDepth)
{
    model.setBundle(
        barrelOf({example("a.zip", "one"), example("b.zip", "two", {L"/content/x.txt", L"/content/a/b.txt"})}));
    const QModelIndex exampleRow = model.index(1, 0, model.examplesIndex());
    EXPECT_EQ(exampleRow.parent(), model.examplesIndex());
    EXPECT_EQ(model.exampleContentIndex(1).parent(), exampleRow);
    EXPECT_EQ(model.examplePropertiesIndex(1).parent(), exampleRow);
    EXPECT_EQ(titleCell(1).parent(), model.examplePropertiesIndex(1));
    const QModelIndex folderRow = model.index(1, 0, model.exampleContentIndex(1));
    EXPECT_EQ(folderRow.data().toString(), QStringLiteral("a"));
    EXPECT_EQ(model.index(0, 0, folderRow).parent(), folderRow);
    EXPECT_EQ(folderRow.parent(), model.exampleContentIndex(1));
    EXPECT_FALSE(model.examplesIndex().parent().isValid());
}

TEST_F(ExamplesBundleContentModelTest, ItemsAnswerNullAndMinusOneForStrangers)
{
    model.setBundle(barrelOf({example("a.zip", "t", {L"/content/a.txt"})}));
    using Item = ExamplesBundleContentModel::ModelItem;
    auto* const examples = static_cast<Item*>(model.examplesIndex().internalPointer());
    auto* const root = examples->parent();
    EXPECT_EQ(root->parent(), nullptr);
    EXPECT_EQ(root->child(2), nullptr);
    EXPECT_EQ(root->rowOf(root), -1);
    EXPECT_EQ(examples->rowOf(root), -1);
    EXPECT_EQ(examples->child(0)->child(2), nullptr);
    EXPECT_EQ(examples->child(0)->rowOf(root), -1);
    auto* const directory = examples->child(0)->child(0);
    EXPECT_EQ(directory->rowOf(root), -1);
    EXPECT_EQ(directory->child(0)->rowOf(root), -1);
    EXPECT_EQ(directory->child(0)->child(0), nullptr);
    EXPECT_EQ(examples->child(0)->child(1)->rowOf(root), -1);
}

TEST_F(ExamplesBundleContentModelTest, SetBundleResetsTheModelAndReplacesTheExamples)
{
    model.setBundle(barrelOf({example("a.zip", "one"), example("b.zip", "two")}));
    const QPersistentModelIndex kept = model.index(1, 0, model.examplesIndex());
    SignalLog log{model};
    model.setBundle(barrelOf({example("c.zip", "three")}));
    EXPECT_EQ(log.take(), "modelAboutToBeReset\nmodelReset\n");
    EXPECT_FALSE(kept.isValid());
    EXPECT_EQ(model.rowCount(model.examplesIndex()), 1);
    EXPECT_EQ(model.index(0, 0, model.examplesIndex()).data().toString(), QStringLiteral("three"));
}

// Kept: nothing is caught, and the reset has no end.
TEST_F(ExamplesBundleContentModelTest, AnExampleThatIsNotThereThrowsAndLeavesTheResetOpen)
{
    auto barrel = withMissingExample(example("a.zip", "first"));
    SignalLog log{model};
    EXPECT_THROW(model.setBundle(std::move(barrel)), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(log.take(), "modelAboutToBeReset\n");
    EXPECT_EQ(model.rowCount(model.examplesIndex()), 1);
}

// Kept as well: the name and the files of an example that cannot be read are missing, its properties may not be.
TEST_F(ExamplesBundleContentModelTest, PropertiesThatCannotBeReachedThrowAndLeaveTheResetOpen)
{
    const FilePath2 path = toPath(folder / "barrel.kvexs");
    barrelOf({example("a.zip", "first"), example("b.zip", "second")})->writeToFile(path).value();
    auto barrel = std::make_unique<BarrelOfExamplesBundle>(BarrelOfExamplesBundle::open(path).value());
    ASSERT_EQ(barrel->numberExamples(), 2U) << "the relationships are read ahead of the cut";
    std::filesystem::resize_file(folder / "barrel.kvexs", 1000);
    ExamplePart first = barrel->example(OpcPackagePartUri{L"/examples/0.zip"}).value();
    ASSERT_FALSE(first.package().packageProperties());
    SignalLog log{model};
    EXPECT_THROW(model.setBundle(std::move(barrel)), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(log.take(), "modelAboutToBeReset\n");
    EXPECT_EQ(model.rowCount(model.examplesIndex()), 0);
}

TEST_F(ExamplesBundleContentModelTest, ContentThatIsNotThereThrows)
{
    const auto bundle = exampleBundle({L"/content/a.txt"});
    (void)bundle->package()
        .createRelationship(OpcPackagePartUri{L"/content/missing.txt"}, OpcTargetMode::internal, contentRelationship)
        .value();
    const FilePath2 path = toPath(folder / "dangling.zip");
    bundle->writeToFile(path).value();
    EXPECT_THROW(model.setBundle(barrelOf({path})), bad_expected_access<ErrorCode2>);
}

TEST_F(ExamplesBundleContentModelTest, ContentWhoseNameIsNoTextThrows)
{
    const FilePath2 path = example("odd.zip", "t", {L"/content/b%FF.txt"});
    EXPECT_THROW(model.setBundle(barrelOf({path})), bad_expected_access<ErrorCode2>);
}

TEST_F(ExamplesBundleContentModelTest, HoldsWhatQtAsksOfAModel)
{
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    model.setBundle(
        barrelOf({example("a.zip", "one", {L"/content/a.txt", L"/content/sub/b.txt"}), example("b.zip", "two")}));
    model.setBundle(barrelOf({}));
    EXPECT_EQ(model.rowCount(), 2);
}

namespace {

// Views as the editor has them: each over one branch.
class ExamplesBundleViewTest : public ExamplesBundleContentModelTest
{
protected:
    ExamplesBundleViewTest()
    {
        model.setBundle(barrelOf({example("1.zip", "one", {L"/content/a.txt", L"/content/sub/b.txt"}),
                                  example("2.zip", "two", {L"/content/c.txt"})}));
        list.setModel(&model);
        list.setRootIndex(model.examplesIndex());
        content.setModel(&model);
        content.setRootIndex(model.exampleContentIndex(0));
        properties.setModel(&model);
        properties.setRootIndex(model.examplePropertiesIndex(0));
        content.expandAll();
        list.setCurrentIndex(model.index(1, 0, model.examplesIndex()));
        for (QWidget* const each : std::initializer_list<QWidget*>{&list, &content, &properties}) {
            each->resize(300, 200);
            each->show();
        }
        QApplication::processEvents();
    }

    void lookAtAll()
    {
        for (QAbstractItemView* const each : std::initializer_list<QAbstractItemView*>{&list, &content, &properties}) {
            for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Home, Qt::Key_Right})
                QTest::keyClick(each, key);
            each->keyboardSearch(QStringLiteral("t"));
            each->grab();
        }
        QApplication::processEvents();
    }

    QListView list;
    QTreeView content;
    QTableView properties;
};

} // namespace

TEST_F(ExamplesBundleViewTest, EachViewShowsItsBranch)
{
    EXPECT_EQ(list.currentIndex().data().toString(), QStringLiteral("two"));
    EXPECT_TRUE(content.isExpanded(rowNamed(model, QStringLiteral("sub"))));
    EXPECT_EQ(properties.horizontalHeader()->count(), 2);
    lookAtAll();
}

TEST_F(ExamplesBundleViewTest, SurvivesAnotherBarrel)
{
    model.setBundle(barrelOf({example("3.zip", "three")}));
    lookAtAll();
    EXPECT_FALSE(list.rootIndex().isValid()) << "a reset sends views back to the top";
}

TEST_F(ExamplesBundleViewTest, SurvivesAWalkThatFails)
{
    EXPECT_THROW(model.setBundle(withMissingExample(example("3.zip", "three"))), bad_expected_access<ErrorCode2>);
    lookAtAll();
    EXPECT_THROW(model.setBundle(withMissingExample(example("4.zip", "four"))), bad_expected_access<ErrorCode2>);
    lookAtAll();
    model.setBundle(barrelOf({}));
    lookAtAll();
}
