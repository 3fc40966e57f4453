#include "browsers/example_browser2_example_model.h"

#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/error_code2.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/log_capture.h"

#include <QtTest/QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Model = ExampleBrowser2ExampleModel;
using Kelvaris::System::bad_expected_access;
using Kelvaris::System::ErrorCode2;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ExampleModel : public testing::Test
{
protected:
    std::filesystem::path barrel(const char* name, const std::vector<SampleExample>& examples,
                                 const BarrelChange& change = {})
    {
        return writeBarrel(folder, name, examples, change);
    }

    void add(const std::vector<std::filesystem::path>& paths)
    {
        std::vector<Kelvaris::System::FilePath2> files;
        for (const auto& path : paths)
            files.push_back(toFilePath(path));
        model.addBarrels(files);
    }

    QVariant data(int row, int role) const { return model.index(row, 0).data(role); }

    TemporaryFolder folder;
    LogCapture log;
    Model model;
    QSignalSpy inserts{&model, &QAbstractItemModel::rowsInserted};
};

} // namespace

TEST_F(ExampleModel, ListsBarrelsInOrderAndTheirExamplesInTheirs)
{
    const auto first = barrel("b.kvexs", {{QStringLiteral("Zeta")}, {QStringLiteral("Alpha")}});
    const auto second = barrel("a.kvexs", {{QStringLiteral("Mü 電 🔌")}});
    add({first, second});
    EXPECT_EQ(rowsOf(model), "Zeta\nAlpha\nMü 電 🔌\n");
    EXPECT_THAT(log.lines(), ElementsAre());
}

TEST_F(ExampleModel, GivesEachFieldUnderItsRole)
{
    const auto path = barrel("b.kvexs", {{.title = QStringLiteral("Buck"),
                                          .description = QStringLiteral("Steps down"),
                                          .manufacturer = QStringLiteral("Renesas"),
                                          .keywords = {QStringLiteral("power"), QStringLiteral("dc dc")}}});
    add({path});
    EXPECT_EQ(data(0, Qt::DisplayRole), QVariant{QStringLiteral("Buck")});
    EXPECT_EQ(data(0, Qt::EditRole), QVariant{QStringLiteral("Buck")});
    EXPECT_EQ(data(0, 256), QVariant{QStringLiteral("Buck")});
    EXPECT_EQ(data(0, 257), QVariant{QStringLiteral("Steps down")});
    EXPECT_EQ(data(0, 258), QVariant(QStringList{QStringLiteral("power"), QStringLiteral("dc dc")}));
    EXPECT_EQ(data(0, 259), QVariant{QStringLiteral("Renesas")});
    EXPECT_EQ(data(0, 260), QVariant{QString::fromStdString(path.string())});
    EXPECT_EQ(data(0, 261), QVariant{QStringLiteral("/examples/example0.kvbdl.zip")});
    EXPECT_FALSE(data(0, 262).isValid());
    EXPECT_FALSE(data(0, Qt::ToolTipRole).isValid());
}

TEST_F(ExampleModel, GivesTheBarrelsPathAsItWasHandedIn)
{
    barrel("b.kvexs", {{QStringLiteral("Buck")}});
    add({folder / "./b.kvexs"});
    EXPECT_EQ(data(0, Model::BarrelPathRole).toString(), QString::fromStdString((folder / "./b.kvexs").string()));
}

TEST_F(ExampleModel, GivesNothingForAnInvalidIndex)
{
    EXPECT_FALSE(model.data({}).isValid());
}

TEST_F(ExampleModel, AnnouncesOneRowMoreThanItAdds)
{
    add({barrel("b.kvexs", {{QStringLiteral("One")}, {QStringLiteral("Two")}, {QStringLiteral("Three")}})});
    ASSERT_EQ(inserts.size(), 1);
    EXPECT_FALSE(inserts[0].at(0).toModelIndex().isValid());
    EXPECT_EQ(inserts[0].at(1).toInt(), 0);
    EXPECT_EQ(inserts[0].at(2).toInt(), 3);
    EXPECT_EQ(model.rowCount(), 3);
}

TEST_F(ExampleModel, AnnouncesOneRowForNoExampleAtAll)
{
    add({});
    ASSERT_EQ(inserts.size(), 1);
    EXPECT_EQ(inserts[0].at(1).toInt(), 0);
    EXPECT_EQ(inserts[0].at(2).toInt(), 0);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(ExampleModel, AppendsBehindTheRowsThatItHas)
{
    const auto path = barrel("b.kvexs", {{QStringLiteral("One")}, {QStringLiteral("Two")}});
    add({path});
    add({path});
    EXPECT_EQ(rowsOf(model), "One\nTwo\nOne\nTwo\n") << "the same example twice is two rows";
    ASSERT_EQ(inserts.size(), 2);
    EXPECT_EQ(inserts[1].at(1).toInt(), 2);
    EXPECT_EQ(inserts[1].at(2).toInt(), 4);
}

TEST_F(ExampleModel, IsEmptyWithOneLogLineForEachFileWhenNoBarrelOpens)
{
    add({folder / "missing.kvexs", folder.write("garbage.kvexs", "no package")});
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_THAT(log.lines(), ElementsAre(AllOf(StartsWith("error [example browser] "), HasSubstr("missing.kvexs")),
                                         AllOf(StartsWith("error [example browser] "), HasSubstr("garbage.kvexs"))));
}

TEST_F(ExampleModel, KeepsTheOtherBarrelsWhenOneDoesNotOpen)
{
    const auto first = barrel("a.kvexs", {{QStringLiteral("One")}});
    const auto last = barrel("c.kvexs", {{QStringLiteral("Two")}});
    add({first, folder / "missing.kvexs", last});
    EXPECT_EQ(rowsOf(model), "One\nTwo\n");
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST_F(ExampleModel, LogsABundleOfAnotherKindAndGoesOn)
{
    const auto example = writeExample(folder, "example.kvbdl.zip", {QStringLiteral("Alone")});
    add({example});
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST_F(ExampleModel, AddsNoRowAndSaysNothingForABarrelWithoutExamples)
{
    add({barrel("empty.kvexs", {})});
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_THAT(log.lines(), ElementsAre());
}

TEST_F(ExampleModel, RaisesForARelationshipToNoExampleAndAddsNoRow)
{
    const auto good = barrel("a.kvexs", {{QStringLiteral("One")}});
    const auto broken = barrel("b.kvexs", {{QStringLiteral("Two")}}, addLostExample());
    EXPECT_THROW(add({good, broken}), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(inserts.size(), 0);
}

TEST_F(ExampleModel, LeavesAnExampleThatCannotBeReadOutInSilence)
{
    add({barrel("a.kvexs", {{QStringLiteral("One")}, {QStringLiteral("Two")}}, addUnreadableExample(folder))});
    EXPECT_EQ(rowsOf(model), "One\nTwo\n");
    EXPECT_THAT(log.lines(), ElementsAre());
}

TEST_F(ExampleModel, ListsAnExampleWhoseTextsCannotBeReadWithEmptyOnes)
{
    const SampleExample damaged{.title = QStringLiteral("Damaged"),
                                .description = QStringLiteral("Steps down"),
                                .manufacturer = QStringLiteral("Renesas"),
                                .keywords = {QStringLiteral("power")}};
    add({barrel("a.kvexs", {{QStringLiteral("Sound")}}, addExampleWithDamagedTexts(folder, damaged))});
    EXPECT_EQ(rowsOf(model), "Sound\n\n");
    EXPECT_EQ(data(1, Model::TitleRole), QVariant{QString{}});
    EXPECT_EQ(data(1, Model::DescriptionRole), QVariant{QString{}});
    EXPECT_EQ(data(1, Model::KeywordsRole), QVariant{QStringList{}});
    EXPECT_EQ(data(1, Model::ManufacturerRole), QVariant{QStringLiteral("Renesas")}) << "which stands elsewhere";
    EXPECT_EQ(data(1, Model::PartUriRole), QVariant{QStringLiteral("/examples/damaged.kvbdl.zip")});
    EXPECT_THAT(log.lines(), ElementsAre());
}

TEST_F(ExampleModel, ListsAnExampleWithoutAnyText)
{
    add({barrel("a.kvexs", {{}})});
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(data(0, Model::TitleRole), QVariant{QString{}});
    EXPECT_EQ(data(0, Model::DescriptionRole), QVariant{QString{}});
    EXPECT_EQ(data(0, Model::ManufacturerRole), QVariant{QString{}});
    EXPECT_EQ(data(0, Model::KeywordsRole), QVariant{QStringList{}});
}

TEST_F(ExampleModel, HoldsNoBarrelOpenAfterReading)
{
    const auto path = barrel("a.kvexs", {{QStringLiteral("One")}});
    add({path});
    std::filesystem::remove(path);
    EXPECT_EQ(data(0, Model::TitleRole).toString(), QStringLiteral("One"));
    for (const auto& descriptor : std::filesystem::directory_iterator{"/proc/self/fd"}) {
        std::error_code gone;
        EXPECT_NE(std::filesystem::read_symlink(descriptor.path(), gone).string(), path.string() + " (deleted)");
    }
}

TEST_F(ExampleModel, CountsAllRowsBelowARowAlthoughNoRowHasAParent)
{
    add({barrel("a.kvexs", {{QStringLiteral("One")}, {QStringLiteral("Two")}})});
    EXPECT_EQ(model.rowCount(model.index(1, 0)), 2);
    EXPECT_FALSE(model.parent(model.index(1, 0)).isValid());
    EXPECT_EQ(model.columnCount(), 1);
}

TEST_F(ExampleModel, GivesNoIndexOnePastTheEnd)
{
    add({barrel("a.kvexs", {{QStringLiteral("One")}})});
    EXPECT_TRUE(model.index(0, 0).isValid());
    EXPECT_FALSE(model.index(1, 0).isValid());
    EXPECT_FALSE(model.index(0, 1).isValid());
}

TEST_F(ExampleModel, IsReadOnly)
{
    add({barrel("a.kvexs", {{QStringLiteral("One")}})});
    EXPECT_FALSE(model.setData(model.index(0, 0), QStringLiteral("x")));
    EXPECT_FALSE(model.flags(model.index(0, 0)) & Qt::ItemIsEditable);
}
