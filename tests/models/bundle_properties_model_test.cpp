#include "models/bundle_properties_model.h"

#include "kelvaris/system/bad_expected_access.h"
#include "tests/models/package_fixtures.h"
#include "tests/models/raw_package.h"
#include "tests/models/signal_log.h"
#include "tests/support/model_dump.h"

#include <QtTest/QAbstractItemModelTester>

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;

namespace {

constexpr int created = 2;
constexpr int keywords = 6;
constexpr int title = 13;

/// With what subclasses have at hand.
class OpenPropertiesModel : public BundlePropertiesModel
{
public:
    using BundlePropertiesModel::addRow;
    using BundlePropertiesModel::setRowValue;
};

std::string valueOf(const BundlePropertiesModel& model, int row)
{
    return model.index(row, 1).data().toString().toStdString();
}

bool commit(BundlePropertiesModel& model, int row, const QString& text)
{
    return model.setData(model.index(row, 1), text);
}

// A bundle whose core properties part is no XML, so that every getter and setter of it fails.
std::shared_ptr<ContentBundle> bundleWithBrokenProperties(const TemporaryFolder& folder)
{
    RawPackage package;
    package.relationship("http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties",
                         "docProps/core.xml");
    package.entry("[Content_Types].xml",
                  "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
                  "<Default Extension=\"rels\" "
                  "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                  "<Override PartName=\"/docProps/core.xml\" "
                  "ContentType=\"application/vnd.openxmlformats-package.core-properties+xml\"/></Types>");
    package.entry("docProps/core.xml", "this is no XML");
    return std::make_shared<ContentBundle>(ContentBundle::open(package.write(folder)).value());
}

class BundlePropertiesModelTest : public testing::Test
{
protected:
    BundlePropertiesModelTest() { model.setBundle(bundle); }

    /// What another model reads from the bundle.
    std::string stored(int row) const
    {
        BundlePropertiesModel other;
        other.setBundle(bundle);
        return valueOf(other, row);
    }

    std::size_t storedKeywords() const { return bundle->keywords().value().size(); }

    std::shared_ptr<ContentBundle> bundle = contentBundle({});
    OpenPropertiesModel model;
};

} // namespace

TEST(BundlePropertiesModel, StartsWithTheFifteenNamesAndEmptyValues)
{
    const BundlePropertiesModel model;
    EXPECT_EQ(dump(model, {}, {{0, 1}, {Qt::DisplayRole}}),
              "Category | \nContent Status | \nCreated | \nCreator | \nDescription | \nIdentifier | \nKeywords | \n"
              "Language | \nLast Modified By | \nLast Printed | \nModified | \nRevision | \nSubject | \nTitle | \n"
              "Version | \n");
    EXPECT_EQ(model.bundle(), nullptr);
}

TEST(BundlePropertiesModel, IsFlat)
{
    const BundlePropertiesModel model;
    EXPECT_EQ(model.rowCount(), 15);
    for (int row = 0; row < 15; ++row) {
        EXPECT_EQ(model.rowCount(model.index(row, 0)), 0);
        EXPECT_FALSE(model.parent(model.index(row, 1)).isValid());
        EXPECT_FALSE(model.index(0, 0, model.index(row, 0)).isValid());
    }
}

TEST(BundlePropertiesModel, HasTwoColumnsWhateverTheParent)
{
    const BundlePropertiesModel model;
    EXPECT_EQ(model.columnCount(), 2);
    EXPECT_EQ(model.columnCount(model.index(3, 0)), 2);
}

TEST(BundlePropertiesModel, HasNoIndexPastItsEnds)
{
    const BundlePropertiesModel model;
    EXPECT_FALSE(model.index(15, 0).isValid());
    EXPECT_FALSE(model.index(-1, 0).isValid());
    EXPECT_FALSE(model.index(0, 2).isValid());
    EXPECT_FALSE(model.index(0, -1).isValid());
    EXPECT_EQ(model.index(14, 1).internalPointer(), nullptr);
}

TEST_F(BundlePropertiesModelTest, AnyOtherRoleThanDisplayAndEditGivesNothingInEveryCell)
{
    for (int row = 0; row < 15; ++row) {
        for (int column = 0; column < 2; ++column) {
            const QModelIndex index = model.index(row, column);
            EXPECT_EQ(index.data(Qt::EditRole), index.data(Qt::DisplayRole));
            for (const int role : {int{Qt::ToolTipRole}, int{Qt::DecorationRole}, int{Qt::UserRole}})
                EXPECT_FALSE(index.data(role).isValid());
        }
    }
    EXPECT_FALSE(model.data({}, Qt::DisplayRole).isValid());
}

TEST_F(BundlePropertiesModelTest, EveryCellOfColumnOneIsEditableAndNoOther)
{
    for (int row = 0; row < 15; ++row) {
        EXPECT_TRUE(model.flags(model.index(row, 1)) & Qt::ItemIsEditable) << row;
        EXPECT_FALSE(model.flags(model.index(row, 0)) & Qt::ItemIsEditable) << row;
    }
    EXPECT_EQ(model.flags({}), Qt::ItemFlags{});
}

TEST(BundlePropertiesModel, SetBundleReadsTheRowsInOrderInsideOneReset)
{
    BundlePropertiesModel model;
    SignalLog log{model};
    const auto bundle = contentBundle({});
    model.setBundle(bundle);

    std::string expected = "modelAboutToBeReset\n";
    for (int key = 0; key < 15; ++key)
        expected += "dataChanged " + std::to_string(key) + ",0 " + std::to_string(key) + ",0 roles 0\n";
    EXPECT_EQ(log.take(), expected + "modelReset\n");
    EXPECT_EQ(model.bundle(), bundle.get());
}

TEST(BundlePropertiesModel, SetBundleReleasesTheOldBundle)
{
    BundlePropertiesModel model;
    auto first = contentBundle({});
    const std::weak_ptr<ContentBundle> watched = first;
    model.setBundle(std::move(first));
    EXPECT_FALSE(watched.expired());
    model.setBundle(contentBundle({}));
    EXPECT_TRUE(watched.expired());
}

TEST(BundlePropertiesModel, AnotherBundleReplacesEveryValue)
{
    const auto first = contentBundle({});
    first->setTitle(u8"first").value();
    BundlePropertiesModel model;
    model.setBundle(first);
    EXPECT_EQ(valueOf(model, title), "first");
    model.setBundle(contentBundle({}));
    EXPECT_EQ(valueOf(model, title), "");
}

TEST_F(BundlePropertiesModelTest, AnEditOfEachRowReachesTheBundle)
{
    for (int row = 0; row < 15; ++row) {
        const bool isDate = row == created || row == 9 || row == 10;
        const QString text = isDate ? QStringLiteral("2026-03-%1T12:30:00.5+01:00").arg(10 + row)
                                    : QStringLiteral("Wert %1 ü \U0001F600").arg(row);
        EXPECT_TRUE(commit(model, row, text));
        EXPECT_EQ(valueOf(model, row), text.toStdString());
        EXPECT_EQ(stored(row), text.toStdString());
    }
    EXPECT_EQ(stored(0), "Wert 0 ü \U0001F600");
}

TEST_F(BundlePropertiesModelTest, AnEditReportsItsCellWithTheEditRole)
{
    SignalLog log{model};
    commit(model, title, QStringLiteral("x"));
    EXPECT_EQ(log.take(), "dataChanged 13,1 13,1 roles 2\n");
}

// Kept: whoever writes to a row need not know in which column its value stands.
TEST_F(BundlePropertiesModelTest, AnEditOfColumnZeroChangesTheValueAndNotTheName)
{
    SignalLog log{model};
    EXPECT_TRUE(model.setData(model.index(title, 0), QStringLiteral("x")));
    EXPECT_EQ(log.take(), "dataChanged 13,0 13,0 roles 2\n");
    EXPECT_EQ(model.index(title, 0).data().toString(), QStringLiteral("Title"));
    EXPECT_EQ(valueOf(model, title), "x");
    EXPECT_EQ(stored(title), "x");
}

TEST_F(BundlePropertiesModelTest, AnotherRoleOrAnInvalidIndexIsNoEdit)
{
    SignalLog log{model};
    EXPECT_FALSE(model.setData(model.index(title, 1), QStringLiteral("x"), Qt::DisplayRole));
    EXPECT_FALSE(model.setData({}, QStringLiteral("x")));
    EXPECT_EQ(log.take(), "");
    EXPECT_EQ(valueOf(model, title), "");
}

TEST_F(BundlePropertiesModelTest, ARefusedDateThrowsAndStaysInTheCellWhileThePropertyKeepsItsValue)
{
    commit(model, created, QStringLiteral("2026-03-01T12:30:00Z"));
    SignalLog log{model};
    EXPECT_THROW(commit(model, created, QStringLiteral("tomorrow")), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(log.take(), "");
    EXPECT_EQ(valueOf(model, created), "tomorrow");
    EXPECT_EQ(stored(created), "2026-03-01T12:30:00Z");
}

TEST_F(BundlePropertiesModelTest, TextThatIsNoUnicodeThrowsAndStaysInTheCellWhileThePropertyKeepsItsValue)
{
    commit(model, title, QStringLiteral("good"));
    SignalLog log{model};
    EXPECT_THROW(commit(model, title, QString{QChar{0xD800}}), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(log.take(), "");
    EXPECT_EQ(model.index(title, 1).data().toString(), QString{QChar{0xD800}});
    EXPECT_EQ(stored(title), "good");
}

TEST_F(BundlePropertiesModelTest, AnEmptyTextSetsAnEmptyProperty)
{
    commit(model, title, QStringLiteral("x"));
    EXPECT_TRUE(commit(model, title, {}));
    EXPECT_EQ(valueOf(model, title), "");
    EXPECT_EQ(stored(title), "");
}

TEST_F(BundlePropertiesModelTest, AnEmptyDateIsNoTimeAndShowsAsNoText)
{
    commit(model, created, QStringLiteral("2026-03-01T12:30:00Z"));
    EXPECT_TRUE(commit(model, created, {}));
    EXPECT_EQ(stored(created), "");
}

TEST_F(BundlePropertiesModelTest, KeywordsAreReadJoinedWithABlank)
{
    StringVector2 texts;
    texts.push_back(u8"alpha").value();
    texts.push_back(u8"beta").value();
    bundle->setKeywords(texts).value();
    model.updateProperties();
    EXPECT_EQ(valueOf(model, keywords), "alpha beta");
}

// Kept: the separators of reading and writing differ, and neither is to be aligned with the other.
TEST_F(BundlePropertiesModelTest, KeywordsCommittedAsTheyAreShownBecomeOneKeyword)
{
    commit(model, keywords, QStringLiteral("alpha; beta"));
    EXPECT_EQ(storedKeywords(), 2U);
    model.updateProperties();
    commit(model, keywords, model.index(keywords, 1).data().toString());
    EXPECT_EQ(storedKeywords(), 1U);
    EXPECT_EQ(bundle->keywords().value().data()[0], String2{u8"alpha beta"});
}

TEST_F(BundlePropertiesModelTest, KeywordsAreWrittenSplitAtSemicolons)
{
    commit(model, keywords, QStringLiteral("alpha; beta gamma"));
    ASSERT_EQ(storedKeywords(), 2U);
    EXPECT_EQ(bundle->keywords().value().data()[1], String2{u8"beta gamma"});
}

TEST_F(BundlePropertiesModelTest, TheKeywordCellKeepsWhatWasTypedUntilTheNextUpdate)
{
    commit(model, keywords, QStringLiteral("alpha; beta"));
    EXPECT_EQ(valueOf(model, keywords), "alpha; beta");
    model.updateProperties();
    EXPECT_EQ(valueOf(model, keywords), "alpha beta");
}

TEST_F(BundlePropertiesModelTest, AChangeElsewhereShowsAfterAnUpdateOnly)
{
    bundle->setTitle(u8"elsewhere").value();
    EXPECT_EQ(valueOf(model, title), "");
    model.updateProperties();
    EXPECT_EQ(valueOf(model, title), "elsewhere");
}

TEST(BundlePropertiesModel, PropertiesThatCannotBeReadShowAsEmptyOnes)
{
    const TemporaryFolder folder;
    const auto bundle = bundleWithBrokenProperties(folder);
    ASSERT_FALSE(bundle->title());
    BundlePropertiesModel model;
    model.setBundle(bundle);
    for (int row = 0; row < 15; ++row)
        EXPECT_EQ(valueOf(model, row), "") << row;
}

TEST(BundlePropertiesModel, AnEditThatTheBundleRefusesShowsTheTextAndReportsSuccess)
{
    const TemporaryFolder folder;
    const auto bundle = bundleWithBrokenProperties(folder);
    ASSERT_FALSE(bundle->setTitle(u8"x"));
    BundlePropertiesModel model;
    model.setBundle(bundle);
    SignalLog log{model};
    EXPECT_TRUE(commit(model, title, QStringLiteral("x")));
    EXPECT_EQ(log.take(), "dataChanged 13,1 13,1 roles 2\n");
    EXPECT_EQ(valueOf(model, title), "x");
    EXPECT_FALSE(bundle->title());
}

TEST_F(BundlePropertiesModelTest, AddRowAnnouncesTheRowBehindTheLast)
{
    SignalLog log{model};
    model.addRow(QStringLiteral("More"), QStringLiteral("value"), 15);
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted / 15-15\nrowsInserted / 15-15\n");
    EXPECT_EQ(valueOf(model, 15), "value");
}

TEST_F(BundlePropertiesModelTest, ARowBeyondTheFifteenTouchesNoProperty)
{
    model.addRow(QStringLiteral("More"), {}, 15);
    SignalLog log{model};
    EXPECT_TRUE(commit(model, 15, QStringLiteral("tomorrow")));
    EXPECT_EQ(log.take(), "dataChanged 15,1 15,1 roles 2\n");
    for (int row = 0; row < 15; ++row)
        EXPECT_EQ(stored(row), "") << row;
}

// Kept: listeners know a property by its key and column 0, not by where its text stands.
TEST_F(BundlePropertiesModelTest, SetRowValueReportsTheKeyAsTheRowAndColumnZero)
{
    model.addRow(QStringLiteral("Row 15"), {}, 20);
    model.addRow(QStringLiteral("Row 16"), {}, 15);
    SignalLog log{model};
    model.setRowValue(15, QStringLiteral("x"));
    EXPECT_EQ(valueOf(model, 16), "x");
    EXPECT_EQ(log.take(), "dataChanged 15,0 15,0 roles 0\n");
    model.setRowValue(20, QStringLiteral("y"));
    EXPECT_EQ(valueOf(model, 15), "y");
    EXPECT_EQ(log.take(), "dataChanged none none roles 0\n");
}

TEST_F(BundlePropertiesModelTest, SetRowValueWithAnUnknownKeyDoesNothing)
{
    const std::string before = dump(model, {}, {{0, 1}, {Qt::DisplayRole}});
    SignalLog log{model};
    model.setRowValue(99, QStringLiteral("x"));
    EXPECT_EQ(log.take(), "");
    EXPECT_EQ(dump(model, {}, {{0, 1}, {Qt::DisplayRole}}), before);
}

TEST_F(BundlePropertiesModelTest, SetRowValueTakesTheFirstOfSeveralRowsWithOneKey)
{
    model.addRow(QStringLiteral("Second title"), {}, title);
    model.setRowValue(title, QStringLiteral("x"));
    EXPECT_EQ(valueOf(model, title), "x");
    EXPECT_EQ(valueOf(model, 15), "");
}

TEST_F(BundlePropertiesModelTest, HoldsWhatQtAsksOfAModel)
{
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    commit(model, title, QStringLiteral("x"));
    model.addRow(QStringLiteral("More"), {}, 15);
    model.setBundle(contentBundle({}));
    EXPECT_EQ(model.rowCount(), 16);
}
