#include "browsers/examples_sort_filter_proxy_model.h"

#include "browsers/examples_model.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/model_dump.h"

#include <QtCore/QStringListModel>
#include <QtTest/QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <ctime>

namespace {

class ExamplesProxy : public testing::Test
{
protected:
    void SetUp() override
    {
        proxy.setSourceModel(&model);
        model.setBundle(openBarrel(
            writeBarrel(folder, "barrel.kvexs",
                        {{.title = QStringLiteral("Foo")},
                         {.title = QStringLiteral("B"), .description = QStringLiteral("a FOO")},
                         {.title = QStringLiteral("C"), .manufacturer = QStringLiteral("foo")},
                         {.title = QStringLiteral("D"), .keywords = {QStringLiteral("x"), QStringLiteral("Foobar")}},
                         {.title = QString{}}})));
    }

    std::string search(const char* text)
    {
        proxy.setFilterRegularExpression(searchPattern(QString::fromUtf8(text)));
        return dump(proxy);
    }

    TemporaryFolder folder;
    ExamplesModel model;
    ExamplesSortFilterProxyModel proxy;
    QAbstractItemModelTester tester{&proxy, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(ExamplesProxy, FindsTitleDescriptionAndAnyKeywordIgnoringCaseButNotTheManufacturer)
{
    EXPECT_EQ(search("foo"), "Foo\nB\nD\n");
}

TEST_F(ExamplesProxy, TakesTheTextForARegularExpression)
{
    EXPECT_EQ(search("^(c|d)$"), "C\nD\n");
    EXPECT_EQ(search("("), "");
}

TEST_F(ExamplesProxy, ShowsAllRowsForTheEmptyText)
{
    EXPECT_EQ(search("foo"), "Foo\nB\nD\n");
    EXPECT_EQ(search(""), "Foo\nB\nC\nD\n\n");
}

TEST_F(ExamplesProxy, ShowsNoRowForWhichItsSourceHasNoIndex)
{
    struct OneRowTooMany : QStringListModel
    {
        int rowCount(const QModelIndex& parent = {}) const override { return QStringListModel::rowCount(parent) + 1; }
        QModelIndex index(int row, int column, const QModelIndex& parent) const override
        {
            return row < stringList().size() ? QStringListModel::index(row, column, parent) : QModelIndex{};
        }
    } source;
    source.setStringList({QStringLiteral("One")});
    ExamplesSortFilterProxyModel filtered;
    filtered.setSourceModel(&source);
    EXPECT_EQ(filtered.rowCount(), 1);
}

TEST_F(ExamplesProxy, AnswersWithinASecondForAPatternWithoutAnEnd)
{
    QStringList titles;
    for (int i = 0; i < 10'000; ++i)
        titles += QString{40, QLatin1Char{'a'}} + QLatin1Char{'!'};
    struct Titles : QStringListModel
    {
        QVariant data(const QModelIndex& index, int role) const override
        {
            return role == ExamplesModel::KeywordsRole ? QVariant{} : QStringListModel::data(index, Qt::DisplayRole);
        }
    } source;
    source.setStringList(titles);
    ExamplesSortFilterProxyModel filtered;
    filtered.setSourceModel(&source);
    ASSERT_EQ(filtered.rowCount(), 10'000);
    const std::clock_t start = std::clock();
    filtered.setFilterRegularExpression(searchPattern(QStringLiteral("(a+)+$")));
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC);
    EXPECT_EQ(filtered.rowCount(), 0);
}
