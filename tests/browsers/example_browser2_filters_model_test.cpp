#include "browsers/example_browser2_filters_model.h"

#include "tests/support/log_capture.h"
#include "tests/support/model_dump.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

// outside every namespace, as Qt wants it
static void initFilterOptions()
{
    Q_INIT_RESOURCE(example_browser_filter_options);
}

static void cleanUpFilterOptions()
{
    Q_CLEANUP_RESOURCE(example_browser_filter_options);
}

namespace {

constexpr int manufacturerRow = 1;
constexpr int simulatorRow = 2;

class FiltersModel : public testing::Test
{
protected:
    QModelIndex option(int category, const char* name) const
    {
        return rowNamed(model, QString::fromUtf8(name), model.index(category, 0));
    }

    QModelIndex manufacturer(const char* name) const { return option(manufacturerRow, name); }

    bool check(const QModelIndex& index, const QVariant& value = Qt::Checked)
    {
        return model.setData(index, value, Qt::CheckStateRole);
    }

    int stateOf(const QModelIndex& index) const { return index.data(Qt::CheckStateRole).toInt(); }

    QString lastSelection() const
    {
        return selections.isEmpty() ? QStringLiteral("never sent")
                                    : selections.last().at(0).toStringList().join(QLatin1Char{','});
    }

    ExampleBrowser2FiltersModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy selections{&model, &ExampleBrowser2FiltersModel::selectedManufacturersChanged};
    QSignalSpy dataChanges{&model, &QAbstractItemModel::dataChanged};
};

} // namespace

TEST_F(FiltersModel, ShowsCategoriesAndOptionsInTheOrderOfTheirNames)
{
    EXPECT_EQ(dump(model), "Example Type\n"
                           "  Application\n"
                           "  Manufacturer\n"
                           "  Tutorial\n"
                           "Manufacturer\n"
                           "  Analog Devices\n"
                           "  Brontel\n"
                           "  Kelvaris\n"
                           "  Microchip Technology\n"
                           "  Monolithic Power Systems\n"
                           "  Renesas\n"
                           "  STMicroelectronics\n"
                           "Simulator/Module\n"
                           "  Brontel\n"
                           "  Kelvaris\n"
                           "  QTM\n"
                           "  Verilog-A\n"
                           "  Verilog-HDL\n"
                           "  WCM\n");
}

TEST_F(FiltersModel, HasOneColumnEverywhere)
{
    EXPECT_EQ(model.columnCount(), 1);
    EXPECT_EQ(model.columnCount(model.index(0, 0)), 1);
}

TEST_F(FiltersModel, StartsWithEveryOptionClear)
{
    for (int category = 0; category < model.rowCount(); ++category) {
        for (int row = 0; row < model.rowCount(model.index(category, 0)); ++row)
            EXPECT_EQ(model.index(row, 0, model.index(category, 0)).data(Qt::CheckStateRole), QVariant{0});
    }
    EXPECT_TRUE(model.selectedManufacturers().isEmpty());
}

TEST_F(FiltersModel, GivesTheNameForEditingToo)
{
    EXPECT_EQ(manufacturer("Renesas").data(Qt::EditRole).toString(), QStringLiteral("Renesas"));
    EXPECT_FALSE(manufacturer("Renesas").data(Qt::ToolTipRole).isValid());
}

TEST_F(FiltersModel, LetsOptionsAloneBeChecked)
{
    EXPECT_TRUE(model.flags(manufacturer("Renesas")) & Qt::ItemIsUserCheckable);
    const Qt::ItemFlags category = model.flags(model.index(manufacturerRow, 0));
    EXPECT_FALSE(category & (Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate | Qt::ItemIsUserTristate));
    EXPECT_TRUE(category & Qt::ItemIsSelectable);
    EXPECT_FALSE(model.flags({}) & Qt::ItemIsUserCheckable);
}

TEST_F(FiltersModel, CheckingATutorialOrASimulatorChangesTheBoxAndSendsNoManufacturers)
{
    EXPECT_TRUE(check(option(0, "Tutorial")));
    EXPECT_TRUE(check(option(simulatorRow, "QTM")));
    EXPECT_EQ(stateOf(option(0, "Tutorial")), Qt::Checked);
    EXPECT_EQ(stateOf(option(simulatorRow, "QTM")), Qt::Checked);
    EXPECT_EQ(dataChanges.size(), 2);
    EXPECT_EQ(selections.size(), 0);
}

TEST_F(FiltersModel, SendsAllCheckedManufacturersInTheOrderOfTheTree)
{
    EXPECT_TRUE(check(manufacturer("Renesas")));
    EXPECT_EQ(lastSelection(), QStringLiteral("Renesas"));
    EXPECT_TRUE(check(manufacturer("Analog Devices")));
    EXPECT_EQ(lastSelection(), QStringLiteral("Analog Devices,Renesas"));
    EXPECT_EQ(model.selectedManufacturers().join(QLatin1Char{','}), lastSelection());
}

TEST_F(FiltersModel, SendsTheEmptyListOnceAllManufacturersAreClear)
{
    EXPECT_TRUE(check(manufacturer("Renesas")));
    EXPECT_TRUE(check(manufacturer("Renesas"), Qt::Unchecked));
    EXPECT_EQ(lastSelection(), QString{});
    EXPECT_EQ(selections.size(), 2);
}

TEST_F(FiltersModel, TellsTheTwoOptionsCalledKelvarisApart)
{
    EXPECT_TRUE(check(option(simulatorRow, "Kelvaris")));
    EXPECT_EQ(selections.size(), 0);
    EXPECT_EQ(stateOf(manufacturer("Kelvaris")), Qt::Unchecked);
    EXPECT_TRUE(check(manufacturer("Kelvaris")));
    EXPECT_EQ(lastSelection(), QStringLiteral("Kelvaris"));
}

TEST_F(FiltersModel, TakesTheOptionCalledManufacturerForNoFilter)
{
    EXPECT_TRUE(check(option(0, "Manufacturer")));
    EXPECT_EQ(selections.size(), 0);
}

TEST_F(FiltersModel, SendsAgainWhenAStateIsSetThatTheBoxHasAlready)
{
    EXPECT_TRUE(check(manufacturer("Renesas")));
    EXPECT_TRUE(check(manufacturer("Renesas")));
    EXPECT_EQ(dataChanges.size(), 2);
    EXPECT_EQ(selections.size(), 2);
}

TEST_F(FiltersModel, EmitsDataChangedForTheOptionAndTheCheckStateAlone)
{
    EXPECT_TRUE(check(manufacturer("Renesas")));
    ASSERT_EQ(dataChanges.size(), 1);
    EXPECT_EQ(dataChanges[0].at(0).toModelIndex(), manufacturer("Renesas"));
    EXPECT_EQ(dataChanges[0].at(1).toModelIndex(), manufacturer("Renesas"));
    EXPECT_THAT(dataChanges[0].at(2).value<QVector<int>>(), ElementsAre(Qt::CheckStateRole));
}

TEST_F(FiltersModel, RefusesEveryOtherRoleAndSendsNothing)
{
    EXPECT_FALSE(model.setData(manufacturer("Renesas"), QStringLiteral("x"), Qt::DisplayRole));
    EXPECT_FALSE(model.setData(manufacturer("Renesas"), Qt::Checked, Qt::EditRole));
    EXPECT_EQ(dataChanges.size() + selections.size(), 0);
}

TEST_F(FiltersModel, RefusesEverythingOnACategoryAndOnNoItem)
{
    EXPECT_FALSE(check(model.index(manufacturerRow, 0)));
    EXPECT_FALSE(model.setData(model.index(manufacturerRow, 0), QStringLiteral("x"), Qt::DisplayRole));
    EXPECT_FALSE(check({}));
    EXPECT_EQ(dataChanges.size() + selections.size(), 0);
}

TEST_F(FiltersModel, ChecksAnOptionWithTheNumberTwo)
{
    EXPECT_TRUE(check(manufacturer("Renesas"), 2));
    EXPECT_EQ(stateOf(manufacturer("Renesas")), Qt::Checked);
    EXPECT_EQ(lastSelection(), QStringLiteral("Renesas"));
}

TEST_F(FiltersModel, ClearsAnOptionWithATextThatIsNoState)
{
    EXPECT_TRUE(check(manufacturer("Renesas")));
    EXPECT_TRUE(check(manufacturer("Renesas"), QStringLiteral("no state")));
    EXPECT_EQ(stateOf(manufacturer("Renesas")), Qt::Unchecked);
    EXPECT_EQ(lastSelection(), QString{});
}

TEST_F(FiltersModel, TakesEveryValueAsItsConversionToACheckState)
{
    const QVariantList values{QVariant{},
                              QVariant{QVariant::Int},
                              QVariant{QVariant::String},
                              QVariant::fromValue(Qt::Checked),
                              QVariant::fromValue(Qt::PartiallyChecked),
                              true,
                              -1,
                              1U,
                              2.0,
                              1.5,
                              1e30,
                              std::numeric_limits<qlonglong>::max(),
                              QStringLiteral("2"),
                              QStringLiteral(" 2 "),
                              QStringLiteral("2.5"),
                              QStringLiteral("true"),
                              QStringLiteral("Checked"),
                              QStringLiteral("Qt::PartiallyChecked"),
                              QStringLiteral("CheckState::Checked"),
                              QStringLiteral("Unchecked"),
                              QStringLiteral("checked"),
                              QStringLiteral(" Checked"),
                              QStringLiteral("Checked|PartiallyChecked"),
                              QByteArray{"Checked"},
                              QByteArray{"1"},
                              QByteArray{"x"},
                              QChar{u'2'},
                              QStringList{QStringLiteral("2")},
                              QJsonValue{2},
                              QJsonValue{QStringLiteral("2")},
                              QVariantMap{}};
    for (const QVariant& value : values) {
        QVariant converted = value;
        const bool isState = converted.convert(qMetaTypeId<Qt::CheckState>());
        EXPECT_TRUE(check(manufacturer("Renesas"), value));
        EXPECT_EQ(stateOf(manufacturer("Renesas")), isState ? converted.toInt() : 0)
            << value.typeName() << " " << value.toString().toStdString();
    }
}

TEST_F(FiltersModel, CountsAHalfCheckedManufacturerAsNotChecked)
{
    EXPECT_TRUE(check(manufacturer("Renesas"), Qt::PartiallyChecked));
    EXPECT_EQ(stateOf(manufacturer("Renesas")), Qt::PartiallyChecked);
    EXPECT_EQ(lastSelection(), QString{});
}

TEST_F(FiltersModel, KeepsANumberThatIsNoStateAndDoesNotCountIt)
{
    EXPECT_TRUE(check(manufacturer("Renesas"), 7));
    EXPECT_EQ(stateOf(manufacturer("Renesas")), 7);
    EXPECT_EQ(lastSelection(), QString{});
}

TEST_F(FiltersModel, GivesNoCheckStateForACategory)
{
    EXPECT_FALSE(model.index(manufacturerRow, 0).data(Qt::CheckStateRole).isValid());
}

TEST_F(FiltersModel, HasNoRowsBelowAnOption)
{
    EXPECT_EQ(model.rowCount(manufacturer("Renesas")), 0);
    EXPECT_FALSE(model.index(0, 0, manufacturer("Renesas")).isValid());
}

TEST_F(FiltersModel, GivesTheCategoryOfAnOptionAsItsParent)
{
    const QModelIndex parent = model.parent(manufacturer("Renesas"));
    EXPECT_EQ(parent.row(), manufacturerRow);
    EXPECT_EQ(parent.column(), 0);
    EXPECT_EQ(parent, model.index(manufacturerRow, 0));
    EXPECT_FALSE(model.parent(parent).isValid());
    EXPECT_FALSE(model.parent({}).isValid());
}

TEST_F(FiltersModel, GivesNoIndexOnePastTheEnd)
{
    EXPECT_FALSE(model.index(3, 0).isValid());
    EXPECT_FALSE(model.index(7, 0, model.index(manufacturerRow, 0)).isValid());
    EXPECT_FALSE(model.index(0, 1).isValid());
    EXPECT_FALSE(model.data({}).isValid());
}

TEST_F(FiltersModel, ClearsEveryBoxWhenOptionsAreLoaded)
{
    EXPECT_TRUE(check(manufacturer("Renesas")));
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};
    model.loadOptions(QJsonDocument::fromJson(R"({"Manufacturer": {"Renesas": {"description": "x"}}})"));
    EXPECT_EQ(resets.size(), 1);
    EXPECT_EQ(dump(model), "Manufacturer\n  Renesas\n");
    EXPECT_TRUE(model.selectedManufacturers().isEmpty());
}

TEST_F(FiltersModel, TakesWhatIsNoObjectForAnEmptyOne)
{
    model.loadOptions(QJsonDocument::fromJson(R"({"B": 5, "A": {"x": "text", "w": null}})"));
    EXPECT_EQ(dump(model), "A\n  w\n  x\nB\n");
}

TEST_F(FiltersModel, IsEmptyForABrokenDocumentAndSaysNothing)
{
    LogCapture log;
    model.loadOptions(QJsonDocument::fromJson("{\"Manufacturer\": "));
    EXPECT_EQ(dump(model), "");
    EXPECT_TRUE(model.selectedManufacturers().isEmpty());
    EXPECT_THAT(log.lines(), ElementsAre());
}

TEST_F(FiltersModel, SendsNothingWithoutACategoryCalledManufacturer)
{
    model.loadOptions(QJsonDocument::fromJson(R"({"Maker": {"Renesas": {}}})"));
    EXPECT_TRUE(check(model.index(0, 0, model.index(0, 0))));
    EXPECT_EQ(selections.size(), 0);
    EXPECT_TRUE(model.selectedManufacturers().isEmpty());
}

TEST(FiltersModelWithoutItsResource, LogsOneLineAndStaysEmpty)
{
    cleanUpFilterOptions();
    LogCapture log;
    ExampleBrowser2FiltersModel model;
    initFilterOptions();
    EXPECT_EQ(dump(model), "");
    EXPECT_THAT(log.lines(), ElementsAre("error [ui] Unable to open default example browser filter options"));
}
