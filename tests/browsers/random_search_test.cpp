#include "browsers/example_browser2_example_model.h"
#include "browsers/example_browser2_example_sort_filter_model.h"
#include "browsers/example_browser2_filters_model.h"
#include "browsers/examples_model.h"
#include "browsers/examples_sort_filter_proxy_model.h"
#include "browsers/prototype_examples_filter_proxy_model.h"
#include "browsers/prototype_examples_model.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/log_capture.h"
#include "tests/support/model_rules.h"
#include "tests/support/random_steps.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonDocument>
#include <QtTest/QAbstractItemModelTester>
#include <QtWidgets/QTreeView>

#include <gtest/gtest.h>

// Lists of examples, searched, sorted, filtered and filled anew in a random order below a view, with Qt's tester
// attached.

namespace {

constexpr int stepsOfRandomSearch = 200;
constexpr auto stopsAtOnce = QAbstractItemModelTester::FailureReportingMode::Fatal;

const std::vector<QString>& patternsInUse()
{
    static const std::vector<QString> patterns{{},
                                               QStringLiteral("motor"),
                                               QStringLiteral("^(buck|boost)$"),
                                               QStringLiteral("("),
                                               QStringLiteral("[a-"),
                                               QStringLiteral("(a+)+$"),
                                               QStringLiteral("電"),
                                               QStringLiteral("nothing like it"),
                                               QStringLiteral("."),
                                               QString{QChar{0xD800}}};
    return patterns;
}

const std::vector<SampleExample>& examplesInUse()
{
    static const std::vector<SampleExample> examples{
        {.title = QStringLiteral("Buck"),
         .description = QStringLiteral("Steps down"),
         .manufacturer = QStringLiteral("Renesas")},
        {.title = QStringLiteral("boost"), .keywords = {QStringLiteral("motor"), QStringLiteral("電路")}},
        {.title = {}, .description = QString{60, QLatin1Char{'a'}} + QLatin1Char{'!'}},
        {.title = QStringLiteral("Motor drive"), .manufacturer = QStringLiteral("renesas")}};
    return examples;
}

class RandomSearch : public testing::TestWithParam<unsigned>
{
protected:
    /// Searches and sorts `proxy`, as `view` shows it.
    void maySearch(QSortFilterProxyModel& proxy)
    {
        view.setModel(&proxy);
        view.show();
        for (int often = 0; often < 3; ++often) {
            steps.may("search", [&] { proxy.setFilterRegularExpression(searchPattern(steps.oneOf(patternsInUse()))); });
        }
        steps.may("sort", [&] {
            proxy.sort(steps.below(4) - 1, steps.below(2) == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
        });
        steps.may("select", [&] { view.setCurrentIndex(proxy.index(steps.below(4), 0)); });
        steps.may("paint", [&] {
            QCoreApplication::processEvents();
            EXPECT_FALSE(view.grab().isNull());
        });
    }

    std::filesystem::path barrel(std::size_t examples)
    {
        const auto& all = examplesInUse();
        return writeBarrel(folder, "barrel" + std::to_string(examples) + ".kvexs",
                           {all.begin(), all.begin() + static_cast<std::ptrdiff_t>(examples)});
    }

    RandomSteps steps{GetParam()};
    TemporaryFolder folder;
    QTreeView view;
};

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSearch, testing::Range(1U, 4U));

} // namespace

TEST_P(RandomSearch, TheExamplesOfABarrelKeepTheRulesOfAModel)
{
    ExamplesModel model;
    ExamplesSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    const QAbstractItemModelTester modelTester{&model, stopsAtOnce};
    const QAbstractItemModelTester proxyTester{&proxy, stopsAtOnce};
    maySearch(proxy);
    const std::vector<std::filesystem::path> barrels{barrel(0), barrel(1), barrel(4)};
    steps.may("open", [&] { model.setBundle(openBarrel(steps.oneOf(barrels))); });
    steps.take(stepsOfRandomSearch, [&] { expectTree(proxy); });
}

TEST_P(RandomSearch, TheExamplesOfADirectoryKeepTheRulesOfAModel)
{
    for (const SampleExample& example : examplesInUse())
        writeExample(folder, "found/" + std::to_string(&example - examplesInUse().data()) + ".kvbdl.zip", example);
    PrototypeExamplesModel model{toFilePath(folder / "found"), nullptr};
    PrototypeExamplesModel none{toFilePath(std::filesystem::path{folder.write("empty/file.txt", "")}.parent_path()),
                                nullptr};
    PrototypeExamplesFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    const QAbstractItemModelTester modelTester{&model, stopsAtOnce};
    const QAbstractItemModelTester proxyTester{&proxy, stopsAtOnce};
    maySearch(proxy);
    steps.may("other-directory", [&] { proxy.setSourceModel(&none); });
    steps.may("directory", [&] { proxy.setSourceModel(&model); });
    steps.take(stepsOfRandomSearch, [&] { expectTree(proxy); });
}

// The list announces a row more than it adds, and counts all its rows below each row; Qt's tester stops at both, behind
// the proxy, too. What has to hold is that the proxy, however it came to its rows, shows those that a new one shows.
TEST_P(RandomSearch, TheExamplesOfSeveralBarrelsAreThoseThatANewSearchFinds)
{
    const LogCapture log;
    ExampleBrowser2ExampleModel model;
    ExampleBrowser2ExampleSortFilterModel proxy;
    proxy.setSourceModel(&model);
    maySearch(proxy);
    const std::vector<std::filesystem::path> barrels{barrel(0), barrel(1), barrel(4),
                                                     folder.write("none", "no barrel")};
    steps.may("add", [&] {
        if (model.rowCount() < 30)
            model.addBarrels({toFilePath(steps.oneOf(barrels)), toFilePath(steps.oneOf(barrels))});
    });
    const std::vector<QStringList> choices{{}, {QStringLiteral("RENESAS")}, {QStringLiteral("x"), {}}};
    QStringList chosen;
    steps.may("choose", [&] { proxy.setManufacturers(chosen = steps.oneOf(choices)); });
    steps.take(stepsOfRandomSearch, [&] {
        ExampleBrowser2ExampleSortFilterModel fresh;
        fresh.setManufacturers(chosen);
        fresh.setFilterRegularExpression(proxy.filterRegularExpression());
        fresh.setSourceModel(&model);
        fresh.sort(proxy.sortColumn(), proxy.sortOrder());
        EXPECT_EQ(rowsOf(proxy), rowsOf(fresh));
    });
}

TEST_P(RandomSearch, TheFiltersKeepTheRulesOfAModel)
{
    ExampleBrowser2FiltersModel model;
    const QAbstractItemModelTester tester{&model, stopsAtOnce};
    view.setModel(&model);
    view.show();
    const std::vector<QByteArray> documents{R"({"Manufacturer": {"A": {}, "B": {}}, "Other": {"C": {}}})", "[1]", "{}",
                                            R"({"Manufacturer": {"A": 5}})"};
    const std::vector<QVariant> values{Qt::Checked, Qt::Unchecked, 7, QStringLiteral("Checked"), QVariant{}};
    steps.may("load", [&] { model.loadOptions(QJsonDocument::fromJson(steps.oneOf(documents))); });
    for (int often = 0; often < 3; ++often) {
        steps.may("check", [&] {
            const auto rows = everyRow(model);
            if (!rows.empty())
                model.setData(steps.oneOf(rows), steps.oneOf(values), Qt::CheckStateRole);
        });
    }
    steps.may("expand", [&] { view.expandAll(); });
    steps.may("collapse", [&] { view.collapseAll(); });
    steps.may("paint", [&] { EXPECT_FALSE(view.grab().isNull()); });
    steps.take(stepsOfRandomSearch, [&] { expectTree(model); });
}
