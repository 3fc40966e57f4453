#include "browsers/prototype_examples_model.h"

#include "tests/browsers/sample_barrels.h"
#include "tests/support/model_dump.h"

#include <QtTest/QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

namespace {

class PrototypeModel : public testing::Test
{
protected:
    PrototypeExamplesModel& read()
    {
        model = std::make_unique<PrototypeExamplesModel>(toFilePath(folder / "examples"), nullptr);
        return *model;
    }

    void SetUp() override { std::filesystem::create_directories(folder / "examples"); }

    TemporaryFolder folder;
    std::unique_ptr<PrototypeExamplesModel> model;
    const DumpedCells allColumns{.columns = {0, 1, 2}};
};

} // namespace

TEST_F(PrototypeModel, HasNoRowsForADirectoryWithoutBundles)
{
    const auto& found = read();
    EXPECT_EQ(found.rowCount(), 0);
    EXPECT_EQ(found.columnCount(), 3);
}

TEST_F(PrototypeModel, ShowsTitleDescriptionAndKeywords)
{
    writeExample(folder, "examples/deep/er/a.kvbdl.zip",
                 {.title = QStringLiteral("Buck"),
                  .description = QStringLiteral("Steps down"),
                  .keywords = {QStringLiteral("a"), QStringLiteral("b")}});
    const auto& found = read();
    EXPECT_EQ(dump(found, {}, allColumns), "Buck | Steps down | a; b\n");
}

TEST_F(PrototypeModel, PassesOverFilesThatAreNoExampleBundlesByNameOrByContent)
{
    writeExample(folder, "examples/plain.zip", {QStringLiteral("Named otherwise")});
    writeExample(folder, "examples/upper.KVBDL.zip", {QStringLiteral("In capitals")});
    writeExample(folder, "examples/untitled.kvbdl.zip", {});
    folder.write("examples/garbage.kvbdl.zip", "no package");
    writeExample(folder, "examples/dir.kvbdl.zip/good.kvbdl.zip", {QStringLiteral("Good")});
    EXPECT_EQ(dump(read()), "Good\n");
}

TEST_F(PrototypeModel, GivesKeywordsAsOneTextForDisplayAndAsAListForEditing)
{
    writeExample(folder, "examples/a.kvbdl.zip",
                 {.title = QStringLiteral("T"), .keywords = {QStringLiteral("a"), QStringLiteral("b")}});
    const auto& found = read();
    EXPECT_EQ(found.index(0, 2).data(Qt::DisplayRole), QVariant{QStringLiteral("a; b")});
    EXPECT_EQ(found.index(0, 2).data(Qt::EditRole), QVariant(QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(found.index(0, 0).data(Qt::EditRole), QVariant{QStringLiteral("T")});
    EXPECT_EQ(found.index(0, 1).data(Qt::EditRole), QVariant{QString{}});
}

TEST_F(PrototypeModel, ShowsAnEmptyCellForNoKeywords)
{
    writeExample(folder, "examples/a.kvbdl.zip", {.title = QStringLiteral("T")});
    const auto& found = read();
    EXPECT_EQ(found.index(0, 2).data(Qt::DisplayRole), QVariant{QString{}});
}

TEST_F(PrototypeModel, GivesNothingForOtherRolesColumnsAndNoIndex)
{
    writeExample(folder, "examples/a.kvbdl.zip", {.title = QStringLiteral("T")});
    const auto& found = read();
    EXPECT_FALSE(found.index(0, 0).data(Qt::UserRole).isValid());
    EXPECT_FALSE(found.index(0, 0).data(Qt::ToolTipRole).isValid());
    EXPECT_FALSE(found.data({}).isValid());
    EXPECT_FALSE(found.index(0, 3).isValid());
    EXPECT_FALSE(found.index(1, 0).isValid());
    EXPECT_EQ(found.rowCount(found.index(0, 0)), 0);
    EXPECT_FALSE(found.parent(found.index(0, 0)).isValid());
}

TEST_F(PrototypeModel, NamesItsThreeColumnsAndNothingElse)
{
    const auto& found = read();
    EXPECT_EQ(found.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Title"));
    EXPECT_EQ(found.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Description"));
    EXPECT_EQ(found.headerData(2, Qt::Horizontal).toString(), QStringLiteral("Keywords"));
    EXPECT_FALSE(found.headerData(3, Qt::Horizontal).isValid());
    EXPECT_FALSE(found.headerData(0, Qt::Vertical).isValid());
    EXPECT_FALSE(found.headerData(0, Qt::Horizontal, Qt::ToolTipRole).isValid());
}

TEST_F(PrototypeModel, KeepsTheRulesOfAnItemModel)
{
    writeExample(folder, "examples/a.kvbdl.zip", {.title = QStringLiteral("T")});
    auto& found = read();
    QAbstractItemModelTester tester{&found, QAbstractItemModelTester::FailureReportingMode::Fatal};
    EXPECT_EQ(found.rowCount(), 1);
}

TEST_F(PrototypeModel, RaisesForADirectoryThatIsNotThere)
{
    EXPECT_THROW((PrototypeExamplesModel{toFilePath(folder / "missing"), nullptr}), std::filesystem::filesystem_error);
}
