#include "browsers/examples_model.h"

#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/error_code2.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/model_dump.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

using Kelvaris::System::bad_expected_access;
using Kelvaris::System::ErrorCode2;

namespace {

class ExamplesModelTest : public testing::Test
{
protected:
    std::filesystem::path barrel(const std::vector<SampleExample>& examples, const BarrelChange& change = {})
    {
        return writeBarrel(folder, "barrel.kvexs", examples, change);
    }

    void show(const std::vector<SampleExample>& examples) { model.setBundle(openBarrel(barrel(examples))); }

    QVariant data(int row, int role) const { return model.index(row, 0).data(role); }

    TemporaryFolder folder;
    ExamplesModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};
};

} // namespace

TEST_F(ExamplesModelTest, ShowsNoRowBeforeABarrelIsSet)
{
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 1);
}

TEST_F(ExamplesModelTest, ListsTheExamplesInTheBarrelsOrder)
{
    show({{QStringLiteral("Zeta")}, {QStringLiteral("Alpha")}});
    EXPECT_EQ(dump(model), "Zeta\nAlpha\n");
    EXPECT_EQ(resets.size(), 1);
}

TEST_F(ExamplesModelTest, GivesEachFieldUnderItsRole)
{
    show({{.title = QStringLiteral("Buck"),
           .description = QStringLiteral("Steps down"),
           .keywords = {QStringLiteral("power"), QStringLiteral("dc dc")},
           .page = "<p>Page</p>"}});
    EXPECT_EQ(data(0, Qt::DisplayRole), QVariant{QStringLiteral("Buck")});
    EXPECT_EQ(data(0, 256), QVariant{QStringLiteral("Steps down")});
    EXPECT_EQ(data(0, 257), QVariant{QByteArray{"<p>Page</p>"}});
    EXPECT_EQ(data(0, 258), QVariant{QStringLiteral("Buck")});
    EXPECT_EQ(data(0, 259), QVariant(QStringList{QStringLiteral("power"), QStringLiteral("dc dc")}));
    EXPECT_FALSE(data(0, 260).isValid());
}

TEST_F(ExamplesModelTest, GivesNothingForTheEditRole)
{
    show({{QStringLiteral("Buck")}});
    EXPECT_FALSE(data(0, Qt::EditRole).isValid());
}

TEST_F(ExamplesModelTest, GivesNothingForAnInvalidIndex)
{
    EXPECT_FALSE(model.data({}).isValid());
    EXPECT_FALSE(model.data({}, ExamplesModel::DocumentationRole).isValid());
}

TEST_F(ExamplesModelTest, HasNoRowsBelowARow)
{
    show({{QStringLiteral("Buck")}, {QStringLiteral("Boost")}});
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 0);
    EXPECT_FALSE(model.index(0, 0, model.index(0, 0)).isValid());
    EXPECT_FALSE(model.index(2, 0).isValid());
    EXPECT_FALSE(model.parent(model.index(1, 0)).isValid());
}

TEST_F(ExamplesModelTest, GivesEmptyTextsForPropertiesThatAreNotThere)
{
    show({{}});
    EXPECT_EQ(data(0, Qt::DisplayRole), QVariant{QString{}});
    EXPECT_EQ(data(0, ExamplesModel::DescriptionRole), QVariant{QString{}});
    EXPECT_EQ(data(0, ExamplesModel::KeywordsRole), QVariant{QStringList{}});
}

TEST_F(ExamplesModelTest, GivesNoByteForAnExampleWithoutAPageOrWithAnEmptyOne)
{
    show({{.title = QStringLiteral("None")}, {.title = QStringLiteral("Empty"), .hasEmptyPage = true}});
    EXPECT_EQ(data(0, ExamplesModel::DocumentationRole), QVariant{QByteArray{}});
    EXPECT_EQ(data(1, ExamplesModel::DocumentationRole), QVariant{QByteArray{}});
}

TEST_F(ExamplesModelTest, GivesNoByteForAPageThatCannotBeReadAndKeepsTheRow)
{
    const SampleExample damaged{
        .title = QStringLiteral("Damaged"), .description = QStringLiteral("Steps down"), .page = "<p>Page</p>"};
    model.setBundle(openBarrel(barrel({{.title = QStringLiteral("Sound"), .page = "<p>Page</p>"}},
                                      addExampleWithDamagedPage(folder, damaged))));
    EXPECT_EQ(dump(model), "Sound\nDamaged\n");
    EXPECT_EQ(data(0, ExamplesModel::DocumentationRole), QVariant{QByteArray{"<p>Page</p>"}});
    EXPECT_EQ(data(1, ExamplesModel::DocumentationRole), QVariant{QByteArray{}});
    EXPECT_EQ(data(1, ExamplesModel::DescriptionRole), QVariant{QStringLiteral("Steps down")});
}

TEST_F(ExamplesModelTest, GivesEmptyTextsForPropertiesThatCannotBeReadAndKeepsTheRow)
{
    const SampleExample damaged{.title = QStringLiteral("Damaged"),
                                .description = QStringLiteral("Steps down"),
                                .keywords = {QStringLiteral("power")},
                                .page = "<p>Page</p>",
                                .bytes = "still here"};
    model.setBundle(openBarrel(barrel({{QStringLiteral("Sound")}}, addExampleWithDamagedTexts(folder, damaged))));
    EXPECT_EQ(dump(model), "Sound\n\n");
    EXPECT_EQ(data(1, ExamplesModel::DescriptionRole), QVariant{QString{}});
    EXPECT_EQ(data(1, ExamplesModel::KeywordsRole), QVariant{QStringList{}});
    EXPECT_EQ(data(1, ExamplesModel::DocumentationRole), QVariant{QByteArray{"<p>Page</p>"}});
    model.unpack(model.index(1, 0), toFilePath(folder / "out"));
    EXPECT_EQ(readFile(folder / "out/content/design.kvsch"), "still here");
}

TEST_F(ExamplesModelTest, GivesThePagesBytesAsTheyAre)
{
    const std::string page = std::string{"<p>\0\xff \xc3\xa4"} + std::string{"\0end", 4};
    show({{.title = QStringLiteral("Bytes"), .page = page}});
    EXPECT_EQ(data(0, ExamplesModel::DocumentationRole).toByteArray(), QByteArray::fromStdString(page));
}

TEST_F(ExamplesModelTest, ShowsANewBarrelInThePlaceOfTheOneBefore)
{
    show({{QStringLiteral("One")}, {QStringLiteral("Two")}});
    show({{QStringLiteral("Three")}});
    EXPECT_EQ(dump(model), "Three\n");
    EXPECT_EQ(resets.size(), 2);
}

TEST_F(ExamplesModelTest, RaisesForARelationshipToNoExample)
{
    auto broken = openBarrel(barrel({{QStringLiteral("One")}}, addLostExample()));
    EXPECT_THROW(model.setBundle(std::move(broken)), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(resets.size(), 1) << "views must hear the end of the reset";
}

TEST_F(ExamplesModelTest, RaisesForOneExampleThatCannotBeReadAmongOthers)
{
    auto broken = openBarrel(barrel({{QStringLiteral("One")}, {QStringLiteral("Two")}}, addUnreadableExample(folder)));
    EXPECT_THROW(model.setBundle(std::move(broken)), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(resets.size(), 1);
}

TEST_F(ExamplesModelTest, UnpacksTheExampleOfARow)
{
    show({{.title = QStringLiteral("One"), .bytes = "first"}, {.title = QStringLiteral("Two"), .bytes = "second"}});
    model.unpack(model.index(1, 0), toFilePath(folder / "out"));
    EXPECT_EQ(readFile(folder / "out/content/design.kvsch"), "second");
}

TEST_F(ExamplesModelTest, UnpacksNothingForAnIndexWithoutAnExample)
{
    show({{QStringLiteral("One")}});
    model.unpack({}, toFilePath(folder / "out"));
    EXPECT_FALSE(std::filesystem::exists(folder / "out"));
}

TEST_F(ExamplesModelTest, RaisesForAnUnpackOverExistingFilesAndLeavesThem)
{
    show({{QStringLiteral("One")}});
    folder.write("out/content/design.kvsch", "my own work");
    EXPECT_THROW(model.unpack(model.index(0, 0), toFilePath(folder / "out")), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(readFile(folder / "out/content/design.kvsch"), "my own work");
}

TEST_F(ExamplesModelTest, IsReadOnly)
{
    show({{QStringLiteral("One")}});
    EXPECT_FALSE(model.setData(model.index(0, 0), QStringLiteral("x")));
}
