#include "browsers/example_browser2_example_sort_filter_model.h"

#include "browsers/example_browser2_example_model.h"
#include "tests/browsers/sample_barrels.h"

#include <QtCore/QIdentityProxyModel>
#include <QtCore/QItemSelectionModel>
#include <QtGui/QStandardItemModel>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <ctime>
#include <utility>

namespace {

class ExampleSortFilterModel : public testing::Test
{
protected:
    void SetUp() override { proxy.setSourceModel(&model); }

    void add(const std::vector<SampleExample>& examples)
    {
        model.addBarrels({toFilePath(writeBarrel(folder, "barrel.kvexs", examples))});
    }

    std::string search(const char* text)
    {
        proxy.setFilterRegularExpression(searchPattern(QString::fromUtf8(text)));
        return rowsOf(proxy);
    }

    std::string choose(const QStringList& manufacturers)
    {
        proxy.setManufacturers(manufacturers);
        return rowsOf(proxy);
    }

    static SampleExample madeBy(const char* title, const char* manufacturer)
    {
        return {.title = QString::fromUtf8(title), .manufacturer = QString::fromUtf8(manufacturer)};
    }

    TemporaryFolder folder;
    ExampleBrowser2ExampleModel model;
    ExampleBrowser2ExampleSortFilterModel proxy;
};

const std::vector<SampleExample> differentHits = {
    {.title = QStringLiteral("Foo in the title")},
    {.title = QStringLiteral("B"), .description = QStringLiteral("the foo of it")},
    {.title = QStringLiteral("C"), .manufacturer = QStringLiteral("FOO Inc")},
    {.title = QStringLiteral("D"), .keywords = {QStringLiteral("bar"), QStringLiteral("Foobar")}},
    {.title = QStringLiteral("E"), .keywords = {QStringLiteral("f"), QStringLiteral("oo")}},
};

/// Another model's rows, and how many texts it was asked for.
class AskedModel : public QIdentityProxyModel
{
public:
    QVariant data(const QModelIndex& index, int role) const override
    {
        ++m_asked;
        return QIdentityProxyModel::data(index, role);
    }

    /// Since the question before.
    int asked() const { return std::exchange(m_asked, 0); }

private:
    mutable int m_asked = 0;
};

} // namespace

TEST_F(ExampleSortFilterModel, ShowsNoGhostRowForTheRowThatIsAnnouncedAndNotThere)
{
    EXPECT_EQ(proxy.rowCount(), 0);
    add({{QStringLiteral("One")}, {QStringLiteral("Two")}, {QStringLiteral("Three")}});
    EXPECT_EQ(proxy.rowCount(), 3);
    EXPECT_EQ(rowsOf(proxy), "One\nTwo\nThree\n");
}

TEST_F(ExampleSortFilterModel, ShowsNoRowAtAllWithNoBarrel)
{
    EXPECT_EQ(proxy.rowCount(), 0);
    model.addBarrels({});
    EXPECT_EQ(proxy.rowCount(), 0);
}

TEST_F(ExampleSortFilterModel, ShowsNoRowAtAllForABarrelWithoutExamples)
{
    EXPECT_EQ(proxy.rowCount(), 0);
    add({});
    EXPECT_EQ(proxy.rowCount(), 0);
}

TEST_F(ExampleSortFilterModel, ShowsNoGhostRowAfterSearchesAndAfterASecondAppend)
{
    EXPECT_EQ(proxy.rowCount(), 0);
    add({{QStringLiteral("One")}, {QStringLiteral("Two")}});
    EXPECT_EQ(search("two"), "Two\n");
    EXPECT_EQ(search(""), "One\nTwo\n");
    add({{QStringLiteral("Three")}});
    EXPECT_EQ(rowsOf(proxy), "One\nTwo\nThree\n");
    EXPECT_EQ(search("e"), "One\nThree\n");
}

TEST_F(ExampleSortFilterModel, SearchesTitleDescriptionManufacturerAndEachKeyword)
{
    add(differentHits);
    EXPECT_EQ(search("foo"), "Foo in the title\nB\nC\nD\n") << "a pattern does not lead from a keyword into the next";
}

TEST_F(ExampleSortFilterModel, FindsARowWhoseOnlyHitIsAKeyword)
{
    add({{.title = QStringLiteral("D"), .keywords = {QStringLiteral("Foobar")}}, {QStringLiteral("E")}});
    EXPECT_EQ(search("foo"), "D\n");
}

TEST_F(ExampleSortFilterModel, TakesABarForAnAlternation)
{
    add({{QStringLiteral("a1")}, {QStringLiteral("b2")}, {QStringLiteral("c3")}});
    EXPECT_EQ(search("a|b"), "a1\nb2\n");
}

TEST_F(ExampleSortFilterModel, AcceptsEveryRowWithAnyFieldForALoneFullStop)
{
    add({{QStringLiteral("One")}, {}, {.title = {}, .keywords = {QStringLiteral("k")}}});
    EXPECT_EQ(search("."), "One\n\n");
}

TEST_F(ExampleSortFilterModel, AcceptsNothingForALoneOpeningParenthesisUntilTheTextChanges)
{
    add({{QStringLiteral("(One)")}, {QStringLiteral("Two")}});
    EXPECT_EQ(search("("), "");
    EXPECT_EQ(search("(t"), "");
    EXPECT_EQ(search("(t)"), "Two\n");
}

TEST_F(ExampleSortFilterModel, AcceptsAnExampleWithoutAnyTextForTheEmptySearch)
{
    add({{}, {QStringLiteral("Two")}});
    EXPECT_EQ(search(""), "\nTwo\n");
}

TEST_F(ExampleSortFilterModel, IgnoresCaseOnlyBecauseThePatternSaysSo)
{
    add({{QStringLiteral("Buck")}});
    proxy.setFilterRegularExpression(QRegularExpression{QStringLiteral("buck")});
    EXPECT_EQ(rowsOf(proxy), "");
    EXPECT_EQ(search("buck"), "Buck\n");
}

TEST_F(ExampleSortFilterModel, ComparesTheWholeManufacturerIgnoringCase)
{
    add({madeBy("A", "RENESAS"), madeBy("B", "Renesas Inc"), madeBy("C", ""), madeBy("D", "renesas")});
    EXPECT_EQ(choose({QStringLiteral("Renesas")}), "A\nD\n");
}

TEST_F(ExampleSortFilterModel, JoinsSeveralManufacturersByOr)
{
    add({madeBy("A", "Renesas"), madeBy("B", "Analog Devices"), madeBy("C", "Brontel")});
    EXPECT_EQ(choose({QStringLiteral("Renesas"), QStringLiteral("Analog Devices")}), "A\nB\n");
}

TEST_F(ExampleSortFilterModel, RestoresAllRowsOnceNoManufacturerIsChosen)
{
    add({madeBy("A", "Renesas"), madeBy("B", ""), madeBy("C", "Brontel")});
    EXPECT_EQ(choose({QStringLiteral("Renesas")}), "A\n");
    EXPECT_EQ(choose({}), "A\nB\nC\n");
}

TEST_F(ExampleSortFilterModel, JoinsManufacturerAndSearchByAnd)
{
    add({madeBy("Buck", "Renesas"), madeBy("Boost", "Renesas"), madeBy("Buck two", "Brontel")});
    EXPECT_EQ(choose({QStringLiteral("Renesas")}), "Buck\nBoost\n");
    EXPECT_EQ(search("buck"), "Buck\n");
}

TEST_F(ExampleSortFilterModel, PaysNoHeedToKeyColumnAndRole)
{
    add(differentHits);
    proxy.setFilterKeyColumn(5);
    proxy.setFilterRole(Qt::ToolTipRole);
    EXPECT_EQ(search("foobar"), "D\n");
}

TEST_F(ExampleSortFilterModel, KeepsTheSourcesOrder)
{
    add({{QStringLiteral("z")}, {QStringLiteral("a")}, {QStringLiteral("m")}});
    EXPECT_EQ(search("a|m|z"), "z\na\nm\n");
}

namespace {

/// Ten thousand rows on which "(a+)+$" has no end.
class ManyRows : public ExampleBrowser2ExampleSortFilterModel
{
public:
    explicit ManyRows(QAbstractItemModel& rows) { setSourceModel(&rows); }
};

/// A list as long as wanted, of one example's texts: barrels of that size would take the test too long to write.
class RepeatedExamples : public QAbstractListModel
{
public:
    RepeatedExamples(int count, QString text) : m_count{count}, m_text{std::move(text)} {}

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : m_count; }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role == ExampleBrowser2ExampleModel::KeywordsRole)
            return QStringList{m_text, m_text};
        return role == ExampleBrowser2ExampleModel::TitleRole ? m_text + QString::number(index.row()) : m_text;
    }

private:
    int m_count;
    QString m_text;
};

template <class Step>
double secondsOf(Step step)
{
    // the processor's time: other programs must not make the test fail
    const std::clock_t start = std::clock();
    step();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

} // namespace

TEST(ExampleSortFilterModelOfTenThousandRows, AnswersWithinASecondForAPatternWithoutAnEnd)
{
    RepeatedExamples rows{10'000, QString{40, QLatin1Char{'a'}} + QLatin1Char{'!'}};
    ManyRows proxy{rows};
    ASSERT_EQ(proxy.rowCount(), 10'000);
    EXPECT_LT(secondsOf([&] { proxy.setFilterRegularExpression(searchPattern(QStringLiteral("(a+)+$"))); }), 1.0);
    EXPECT_EQ(proxy.rowCount(), 0);
    EXPECT_LT(secondsOf([&] { proxy.setManufacturers({}); }), 1.0) << "a second pass of the same pattern";
    EXPECT_LT(secondsOf([&] { proxy.setFilterRegularExpression(QRegularExpression{}); }), 1.0);
    EXPECT_EQ(proxy.rowCount(), 10'000);
}

namespace {

/// A long list of which every other title holds "even".
class ExampleSortFilterModelOfALongList : public testing::Test
{
protected:
    static constexpr int rows = 2 * ExampleBrowser2ExampleSortFilterModel::longList;

    void SetUp() override
    {
        for (int row = 0; row < rows; ++row) {
            auto* const item = new QStandardItem;
            item->setData((row % 2 == 0 ? QStringLiteral("even %1") : QStringLiteral("odd %1")).arg(row),
                          ExampleBrowser2ExampleModel::TitleRole);
            list.appendRow(item);
        }
        proxy.setSourceModel(&list);
        ASSERT_EQ(proxy.rowCount(), rows);
    }

    int sourceRow(const QModelIndex& index) const { return proxy.mapToSource(index).row(); }

    QStandardItemModel list;
    ExampleBrowser2ExampleSortFilterModel proxy;
};

} // namespace

TEST_F(ExampleSortFilterModelOfALongList, ASearchIsAnnouncedInAFewStretches)
{
    const QSignalSpy removed{&proxy, &QAbstractItemModel::rowsRemoved};
    const QSignalSpy inserted{&proxy, &QAbstractItemModel::rowsInserted};
    for (const auto& [text, left] : {std::pair{"even", rows / 2}, {"", rows}, {"even 12", 56}}) {
        proxy.setFilterRegularExpression(searchPattern(QString::fromUtf8(text)));
        EXPECT_EQ(proxy.rowCount(), left) << text;
    }
    EXPECT_LE(removed.size() + inserted.size(), 6);
    for (int row = 0; row < proxy.rowCount(); ++row)
        EXPECT_EQ(sourceRow(proxy.index(row, 0)) % 2, 0);
}

TEST_F(ExampleSortFilterModelOfALongList, ASelectedRowThatIsFoundStaysSelectedAndCurrent)
{
    QItemSelectionModel selection{&proxy};
    selection.setCurrentIndex(proxy.index(700, 0), QItemSelectionModel::Select);
    const QSignalSpy changed{&selection, &QItemSelectionModel::selectionChanged};
    const QSignalSpy moved{&selection, &QItemSelectionModel::currentChanged};
    proxy.setFilterRegularExpression(searchPattern(QStringLiteral("even")));
    ASSERT_EQ(selection.selectedIndexes().size(), 1);
    EXPECT_EQ(sourceRow(selection.selectedIndexes().front()), 700);
    EXPECT_EQ(sourceRow(selection.currentIndex()), 700);
    EXPECT_EQ(selection.currentIndex().row(), 350);
    EXPECT_EQ(changed.size() + moved.size(), 0);
}

TEST_F(ExampleSortFilterModelOfALongList, ASelectedRowThatIsNotFoundGoesAlone)
{
    QItemSelectionModel selection{&proxy};
    selection.setCurrentIndex(proxy.index(701, 0), QItemSelectionModel::Select);
    proxy.setFilterRegularExpression(searchPattern(QStringLiteral("even")));
    EXPECT_TRUE(selection.selectedIndexes().isEmpty());
    EXPECT_EQ(proxy.rowCount(), rows / 2);
}

TEST_F(ExampleSortFilterModelOfALongList, ASearchKnowsOfEveryChangeSinceTheOneBefore)
{
    const auto rowsWith = [this](const char* word) {
        proxy.setFilterRegularExpression(searchPattern(QString::fromUtf8(word)));
        return proxy.rowCount();
    };
    EXPECT_EQ(rowsWith("pump"), 0);
    list.item(7)->setData(QStringLiteral("PUMP"), ExampleBrowser2ExampleModel::KeywordsRole);
    EXPECT_EQ(proxy.rowCount(), 1);
    EXPECT_EQ(rowsWith("even"), rows / 2);
    EXPECT_EQ(rowsWith("pump"), 1);
    list.removeRow(3);
    EXPECT_EQ(sourceRow(proxy.index(0, 0)), 6);
    EXPECT_EQ(rowsWith("odd 3"), 55); // 3 itself is gone
    auto* const added = new QStandardItem;
    added->setData(QStringLiteral("a pump"), ExampleBrowser2ExampleModel::DescriptionRole);
    list.insertRow(0, added);
    EXPECT_EQ(rowsWith("pump"), 2);
    list.clear();
    EXPECT_EQ(rowsWith("pump"), 0);
}

TEST_F(ExampleSortFilterModelOfALongList, ASearchTellsRowsBelowARowFromThoseAtTheTop)
{
    QStandardItemModel tree;
    auto* const top = new QStandardItem;
    top->setData(QStringLiteral("a pump"), ExampleBrowser2ExampleModel::TitleRole);
    for (const char* title : {"a pump", "a fan"}) {
        auto* const below = new QStandardItem;
        below->setData(QString::fromUtf8(title), ExampleBrowser2ExampleModel::TitleRole);
        top->appendRow(below);
    }
    tree.appendRow(top);
    proxy.setSourceModel(&tree);
    proxy.setFilterRegularExpression(searchPattern(QStringLiteral("pump")));
    ASSERT_EQ(proxy.rowCount(), 1);
    EXPECT_EQ(proxy.rowCount(proxy.index(0, 0)), 1);
}

TEST_F(ExampleSortFilterModelOfALongList, ASearchIsInTheSourceThatIsSetAndNotInTheOneBefore)
{
    proxy.setFilterRegularExpression(searchPattern(QStringLiteral("odd")));
    EXPECT_EQ(proxy.rowCount(), rows / 2);
    QStandardItemModel other;
    auto* const item = new QStandardItem;
    item->setData(QStringLiteral("odd one"), ExampleBrowser2ExampleModel::TitleRole);
    other.appendRow(item);
    for (int again = 0; again < 2; ++again) {
        proxy.setSourceModel(&other);
        EXPECT_EQ(proxy.rowCount(), 1);
    }
    item->setData(QStringLiteral("even"), ExampleBrowser2ExampleModel::TitleRole);
    EXPECT_EQ(proxy.rowCount(), 0);
    list.item(0)->setData(QStringLiteral("odd"), ExampleBrowser2ExampleModel::TitleRole);
    EXPECT_EQ(proxy.rowCount(), 0);
    proxy.setSourceModel(nullptr);
    EXPECT_EQ(proxy.rowCount(), 0);
}

TEST_F(ExampleSortFilterModelOfALongList, AChoiceOfManufacturersLeavesTheirRows)
{
    list.item(5)->setData(QStringLiteral("Acme"), ExampleBrowser2ExampleModel::ManufacturerRole);
    proxy.setManufacturers({QStringLiteral("acme")});
    ASSERT_EQ(proxy.rowCount(), 1);
    EXPECT_EQ(sourceRow(proxy.index(0, 0)), 5);
    proxy.setManufacturers({});
    EXPECT_EQ(proxy.rowCount(), rows);
}

TEST_F(ExampleSortFilterModelOfALongList, EachTextIsAskedForOnceAndNoneForTheEmptySearch)
{
    AskedModel asked;
    asked.setSourceModel(&list);
    proxy.setSourceModel(&asked);
    EXPECT_EQ(proxy.rowCount(), rows);
    EXPECT_EQ(asked.asked(), 0);
    const auto search = [this](const char* text) {
        proxy.setFilterRegularExpression(searchPattern(QString::fromUtf8(text)));
    };
    search("o");
    EXPECT_EQ(asked.asked(), 4 * rows);
    for (const char* text : {"od", "odd", "od", ""}) {
        search(text);
        EXPECT_EQ(asked.asked(), 0) << text;
    }
    EXPECT_EQ(proxy.rowCount(), rows);
}
