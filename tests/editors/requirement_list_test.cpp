#include "editors/requirement_list.h"

#include "tests/support/model_dump.h"
#include "tests/support/model_rules.h"
#include "tests/support/random_steps.h"

#include <QtCore/QMetaMethod>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListView>

#include <gtest/gtest.h>

using Kelvaris::System::IO::Bundle::detail::RequirementList;

namespace {

const DumpedCells squares{{0}, {Qt::DisplayRole, Qt::DecorationRole}};

class RequirementListTest : public testing::Test
{
protected:
    using Status = QList<QVariant>;

    void addTwo()
    {
        list.addRequirement(7, QStringLiteral("first"), false);
        list.addRequirement(3, QStringLiteral("second"), false);
        status.clear();
        inserted.clear();
    }

    /// The index that the last `dataChanged` named, after a look at its other arguments.
    QModelIndex changedIndex()
    {
        const QList<QVariant> arguments = changed.takeLast();
        EXPECT_EQ(arguments[0].toModelIndex(), arguments[1].toModelIndex());
        EXPECT_EQ(arguments[2].value<QVector<int>>(), QVector<int>{Qt::DecorationRole});
        return arguments[0].toModelIndex();
    }

    RequirementList list;
    QSignalSpy status{&list, &RequirementList::fulfillmentStatusChanged};
    QSignalSpy changed{&list, &QAbstractItemModel::dataChanged};
    QSignalSpy inserted{&list, &QAbstractItemModel::rowsInserted};
};

} // namespace

TEST_F(RequirementListTest, StartsWithoutRowsAndReportsNothing)
{
    EXPECT_EQ(list.rowCount(), 0);
    EXPECT_FALSE(list.index(0, 0).isValid());
    EXPECT_TRUE(status.isEmpty());
}

TEST_F(RequirementListTest, MetRequirementsAreGreenAndOthersRed)
{
    list.addRequirement(1, QStringLiteral("met"), true);
    list.addRequirement(2, QStringLiteral("not met"), false);
    EXPECT_EQ(dump(list, {}, squares), "met | #00ff00\nnot met | #ff0000\n");
    list.setRequirementFulfilled(2, true);
    list.setRequirementFulfilled(1, false);
    EXPECT_EQ(dump(list, {}, squares), "met | #ff0000\nnot met | #00ff00\n");
}

TEST_F(RequirementListTest, AnyOtherRoleAndTheInvalidIndexGiveNothing)
{
    addTwo();
    for (const int role : {int{Qt::EditRole}, int{Qt::ToolTipRole}, int{Qt::CheckStateRole}, int{Qt::UserRole}})
        EXPECT_FALSE(list.index(0, 0).data(role).isValid());
    EXPECT_FALSE(list.data({}, Qt::DisplayRole).isValid());
    EXPECT_FALSE(list.data({}, Qt::DecorationRole).isValid());
}

TEST_F(RequirementListTest, HasNoIndexPastItsEnds)
{
    addTwo();
    EXPECT_FALSE(list.index(2, 0).isValid());
    EXPECT_FALSE(list.index(-1, 0).isValid());
    EXPECT_FALSE(list.index(0, 1).isValid());
}

// Kept, and the reason why QAbstractItemModelTester cannot look at a list with rows: a row would have rows of its own.
TEST_F(RequirementListTest, CountsItsRowsWhateverTheParent)
{
    addTwo();
    EXPECT_EQ(list.rowCount(), 2);
    EXPECT_EQ(list.rowCount(list.index(1, 0)), 2);
}

TEST_F(RequirementListTest, NothingIsEditable)
{
    addTwo();
    EXPECT_FALSE(list.flags(list.index(0, 0)) & Qt::ItemIsEditable);
    EXPECT_FALSE(list.setData(list.index(0, 0), QStringLiteral("x")));
}

TEST_F(RequirementListTest, AddRequirementAnnouncesItsRowAndThenTheStatus)
{
    QSignalSpy about{&list, &QAbstractItemModel::rowsAboutToBeInserted};
    int rowsAtTheSignal = -1;
    QObject::connect(&list, &RequirementList::fulfillmentStatusChanged, [&] { rowsAtTheSignal = inserted.size(); });
    list.addRequirement(0, QStringLiteral("a"), true);
    EXPECT_EQ(about.takeFirst(), (Status{QModelIndex{}, 0, 0}));
    EXPECT_EQ(inserted.first(), (Status{QModelIndex{}, 0, 0}));
    EXPECT_EQ(rowsAtTheSignal, 1);
    EXPECT_EQ(status.takeFirst(), (Status{1, 1}));
    list.addRequirement(0, QStringLiteral("b"), false);
    EXPECT_EQ(inserted.last(), (Status{QModelIndex{}, 1, 1}));
    EXPECT_EQ(status.takeFirst(), (Status{1, 2}));
}

TEST_F(RequirementListTest, AddRequirementThatIsNotMetTakesTheEqualNumbersAway)
{
    list.addRequirement(0, QStringLiteral("a"), true);
    EXPECT_EQ(status.takeLast(), (Status{1, 1}));
    list.addRequirement(1, QStringLiteral("b"), false);
    EXPECT_EQ(status.takeLast(), (Status{1, 2}));
    EXPECT_EQ(status.size(), 0);
}

TEST_F(RequirementListTest, SetRequirementFulfilledWithAnUnknownIdentifierChangesAndEmitsNothing)
{
    addTwo();
    const std::string before = dump(list, {}, squares);
    list.setRequirementFulfilled(0, true);
    EXPECT_EQ(dump(list, {}, squares), before);
    EXPECT_TRUE(status.isEmpty());
    EXPECT_TRUE(changed.isEmpty());
}

TEST_F(RequirementListTest, OfTwoRowsWithOneIdentifierOnlyTheFirstIsEverChanged)
{
    list.addRequirement(5, QStringLiteral("first"), false);
    list.addRequirement(5, QStringLiteral("second"), false);
    list.setRequirementFulfilled(5, true);
    list.setRequirementFulfilled(5, true);
    EXPECT_EQ(dump(list, {}, squares), "first | #00ff00\nsecond | #ff0000\n");
    EXPECT_EQ(status.takeLast(), (Status{1, 2}));
}

TEST_F(RequirementListTest, SetRequirementFulfilledWithThePresentValueEmitsBothSignalsAllTheSame)
{
    addTwo();
    list.setRequirementFulfilled(3, false);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(status.takeFirst(), (Status{0, 2}));
}

// Kept: the index is counted from the end.
TEST_F(RequirementListTest, TheOnlyRowIsReportedWithTheInvalidIndexAndThenTheStatus)
{
    list.addRequirement(0, QStringLiteral("a"), false);
    status.clear();
    int changesAtTheStatus = -1;
    QObject::connect(&list, &RequirementList::fulfillmentStatusChanged, [&] { changesAtTheStatus = changed.size(); });
    list.setRequirementFulfilled(0, true);
    EXPECT_EQ(changesAtTheStatus, 1);
    EXPECT_FALSE(changedIndex().isValid());
    EXPECT_EQ(status.takeFirst(), (Status{1, 1}));
}

TEST_F(RequirementListTest, OfTwoRowsTheSecondIsReportedAsRowOneAndTheFirstWithTheInvalidIndex)
{
    addTwo();
    list.setRequirementFulfilled(3, true);
    EXPECT_EQ(changedIndex(), list.index(1, 0));
    list.setRequirementFulfilled(7, true);
    EXPECT_FALSE(changedIndex().isValid());
    EXPECT_EQ(status.last(), (Status{2, 2}));
}

TEST_F(RequirementListTest, OfThreeRowsTheSecondIsReportedAsRowTwoAndTheThirdAsRowOne)
{
    for (const int id : {10, 11, 12})
        list.addRequirement(id, QString::number(id), false);
    list.setRequirementFulfilled(11, true);
    EXPECT_EQ(changedIndex(), list.index(2, 0));
    list.setRequirementFulfilled(12, true);
    EXPECT_EQ(changedIndex(), list.index(1, 0));
    list.setRequirementFulfilled(10, true);
    EXPECT_FALSE(changedIndex().isValid());
}

TEST_F(RequirementListTest, TheSignalHasItsNamesInTheMetaObject)
{
    const QMetaObject& meta = RequirementList::staticMetaObject;
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 1);
    const QMetaMethod method = meta.method(meta.methodOffset());
    EXPECT_EQ(method.methodType(), QMetaMethod::Signal);
    EXPECT_EQ(method.methodSignature(), QByteArray{"fulfillmentStatusChanged(int,int)"});
    EXPECT_EQ(method.parameterNames(), (QList<QByteArray>{"fulfilled", "requirements"}));
}

TEST_F(RequirementListTest, AViewSurvivesTheOddIndexes)
{
    QListView view;
    view.setModel(&list);
    view.show();
    addTwo();
    view.setCurrentIndex(list.index(0, 0));
    for (const int id : {7, 3, 7})
        list.setRequirementFulfilled(id, true);
    QApplication::processEvents();
    view.grab();
    EXPECT_EQ(view.currentIndex(), list.index(0, 0));
}

TEST_F(RequirementListTest, IsAListAllTheTimeInWhateverOrderRequirementsComeAndChange)
{
    QListView view;
    view.setModel(&list);
    view.show();
    RandomSteps steps{1};
    int requirements = 0;
    steps.may("add", [&] {
        list.addRequirement(steps.below(20), QStringLiteral("text"), steps.below(2) == 0);
        ++requirements;
    });
    steps.may("fulfil", [&] { list.setRequirementFulfilled(steps.below(20), true); });
    steps.may("spoil", [&] { list.setRequirementFulfilled(steps.below(20), false); });
    steps.may("paint", [&] { EXPECT_FALSE(view.grab().isNull()); });
    steps.take(100, [&] {
        ASSERT_EQ(list.rowCount(), requirements);
        expectTree(list);
        const int green = QString::fromStdString(dump(list, {}, squares)).count(QStringLiteral("#00ff00"));
        if (!status.isEmpty()) {
            EXPECT_EQ(status.last(), (Status{green, requirements}));
        }
    });
}

TEST(RequirementListWithoutRows, HoldsWhatQtAsksOfAModel)
{
    RequirementList list;
    const QAbstractItemModelTester tester{&list, QAbstractItemModelTester::FailureReportingMode::Fatal};
    EXPECT_EQ(list.rowCount(), 0);
}
