#include "browsers/example_browser2.h"

#include "kelvaris/system/qt/path_bridge.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/log_capture.h"
#include "tests/support/modal_driver.h"
#include "tests/support/model_dump.h"

#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionViewItem>
#include <QtWidgets/QTreeView>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

/// What a user does in the dialog, with keys and mouse alone.
class User
{
public:
    explicit User(ExampleBrowser2& dialog) : m_dialog{dialog} {}

    template <class Widget>
    Widget& the(const char* name) const
    {
        return *m_dialog.findChild<Widget*>(QString::fromUtf8(name));
    }

    void press(int key) const { QTest::keyClick(m_dialog.windowHandle(), static_cast<Qt::Key>(key)); }

    /// Types into whatever has the focus.
    void type(const QString& text) const { typeText(*m_dialog.focusWidget(), text); }

    void click(const char* button) const
    {
        auto& widget = the<QPushButton>(button);
        ASSERT_TRUE(widget.isVisible() && widget.isEnabled()) << button;
        QTest::mouseClick(&widget, Qt::LeftButton);
    }

    void clickIn(QWidget& widget, const QPoint& position) const
    {
        QTest::mouseClick(m_dialog.windowHandle(), Qt::LeftButton, {}, widget.mapTo(&m_dialog, position));
    }

    /// Opens the category of manufacturers with the keyboard and clicks the box of one.
    void checkManufacturer(const char* name) const
    {
        auto& filters = the<QTreeView>("filterView");
        const QModelIndex category = filters.model()->index(1, 0);
        if (!filters.isExpanded(category)) {
            clickIn(*filters.viewport(), filters.visualRect(category).center());
            press(Qt::Key_Right);
        }
        const QModelIndex option = rowNamed(*filters.model(), QString::fromUtf8(name), category);
        filters.scrollTo(option);
        QStyleOptionViewItem item;
        item.initFrom(&filters);
        item.rect = filters.visualRect(option);
        item.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
        clickIn(*filters.viewport(),
                filters.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item, &filters).center());
    }

    /// One a line.
    std::string checkedManufacturers() const
    {
        std::string names;
        const QAbstractItemModel& filters = *the<QTreeView>("filterView").model();
        const QModelIndex category = filters.index(1, 0);
        for (int row = 0; row < filters.rowCount(category); ++row) {
            const QModelIndex option = filters.index(row, 0, category);
            if (option.data(Qt::CheckStateRole) == Qt::Checked)
                names += option.data().toString().toStdString() + '\n';
        }
        return names;
    }

    std::string titles() const { return rowsOf(*the<QListView>("examplesView").model()); }
    QString location() const { return the<QLineEdit>("targetDirectoryBox").text(); }
    bool seesMark() const { return the<QLabel>("locationWarningLabel").isVisible(); }
    bool isOn(const char* page) const
    {
        return &the<QWidget>(page) == the<QStackedWidget>("stackedWidget").currentWidget();
    }

private:
    ExampleBrowser2& m_dialog;
};

class UserOfTheExampleBrowser : public testing::Test
{
protected:
    QString below(const char* name) const
    {
        return QString::fromStdString(folder.path().string()) + QLatin1Char{'/'} + QString::fromUtf8(name);
    }

    TemporaryFolder folder;
    LogCapture log;
};

} // namespace

TEST_F(UserOfTheExampleBrowser, FindsAnExampleAndHasANewDesignAMomentLater)
{
    const auto power = writeBarrel(
        folder, "power.kvexs",
        {{.title = QStringLiteral("Buck converter"), .manufacturer = QStringLiteral("Renesas"), .bytes = "buck"},
         {.title = QStringLiteral("Boost converter"), .manufacturer = QStringLiteral("Analog Devices")},
         {.title = QStringLiteral("Charger"),
          .manufacturer = QStringLiteral("Brontel"),
          .keywords = {QStringLiteral("converter")}}});
    const auto motors = writeBarrel(folder, "motors.kvexs",
                                    {{.title = QStringLiteral("Drive <b>3</b>"),
                                      .description = QStringLiteral("A converter for motors"),
                                      .manufacturer = QStringLiteral("RENESAS"),
                                      .file = "drive/main 100%.kvsch",
                                      .bytes = "the bytes of the drive"},
                                     {.title = QStringLiteral("Sensor")}});
    folder.write("designs/full/file", "somebody's work");
    folder.write("designs/Drive <b>3<b>/file", "not quite the title");

    ModalDriver driver;
    driver.when<ExampleBrowser2>([&](ExampleBrowser2& dialog) {
        const User user{dialog};
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        EXPECT_EQ(user.titles(), "Buck converter\nBoost converter\nCharger\nDrive <b>3</b>\nSensor\n");

        user.type(QStringLiteral("convert"));
        EXPECT_EQ(user.titles(), "Buck converter\nBoost converter\nCharger\nDrive <b>3</b>\n");
        user.checkManufacturer("Renesas");
        EXPECT_EQ(user.titles(), "Buck converter\nDrive <b>3</b>\n");
        user.checkManufacturer("Analog Devices");
        EXPECT_EQ(user.titles(), "Buck converter\nBoost converter\nDrive <b>3</b>\n");
        user.checkManufacturer("Renesas");
        user.checkManufacturer("Analog Devices");
        EXPECT_EQ(user.titles(), "Buck converter\nBoost converter\nCharger\nDrive <b>3</b>\n");

        auto& list = user.the<QListView>("examplesView");
        user.clickIn(*list.viewport(), list.visualRect(list.model()->index(2, 0)).center());
        user.press(Qt::Key_Down);
        user.press(Qt::Key_Return);
        EXPECT_TRUE(user.isOn("configurePage"));
        EXPECT_EQ(user.the<QLabel>("exampleName").text(), QStringLiteral("Drive <b>3</b>"));
        EXPECT_EQ(user.location(), below("designs/Drive <b>3</b>"));
        EXPECT_FALSE(user.seesMark());

        user.press(Qt::Key_Home);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_A, Qt::ControlModifier);
        user.type(below("designs/full"));
        EXPECT_TRUE(user.seesMark());
        user.type(QStringLiteral(" or not"));
        EXPECT_FALSE(user.seesMark());

        user.click("backButton");
        EXPECT_TRUE(user.isOn("browsePage"));
        EXPECT_EQ(user.titles(), "Buck converter\nBoost converter\nCharger\nDrive <b>3</b>\n");
        user.click("nextButton");
        EXPECT_EQ(user.location(), below("designs/Drive <b>3</b>")) << "proposed anew";
        user.click("createButton");
    });
    const auto result =
        runExampleBrowser2({toFilePath(power), toFilePath(motors)}, toFilePath(folder / "designs"), {}, nullptr);
    ASSERT_TRUE(result);
    EXPECT_EQ(toQString(*result), below("designs/Drive <b>3</b>/content/drive/main 100%.kvsch"));
    EXPECT_EQ(readFile(toQString(*result).toStdString()), "the bytes of the drive");
    EXPECT_TRUE(driver.isDone());
}

TEST_F(UserOfTheExampleBrowser, FindsSearchBoxesAndSelectionAsTheyWereAfterALookAtTheConfigurePage)
{
    const auto barrel =
        writeBarrel(folder, "b.kvexs",
                    {{.title = QStringLiteral("Buck converter"), .manufacturer = QStringLiteral("Renesas")},
                     {.title = QStringLiteral("Boost converter"), .manufacturer = QStringLiteral("Renesas")},
                     {.title = QStringLiteral("Flyback converter"), .manufacturer = QStringLiteral("Analog Devices")},
                     {.title = QStringLiteral("Sensor"), .manufacturer = QStringLiteral("Renesas")}});
    ModalDriver driver;
    driver.when<ExampleBrowser2>([&](ExampleBrowser2& dialog) {
        const User user{dialog};
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        auto& list = user.the<QListView>("examplesView");
        user.type(QStringLiteral("convert"));
        user.checkManufacturer("Renesas");
        user.clickIn(*list.viewport(), list.visualRect(list.model()->index(1, 0)).center());
        user.click("nextButton");
        EXPECT_TRUE(user.isOn("configurePage"));
        user.click("backButton");

        EXPECT_EQ(user.the<QLineEdit>("searchBox").text(), QStringLiteral("convert"));
        EXPECT_EQ(user.checkedManufacturers(), "Renesas\n");
        EXPECT_EQ(user.titles(), "Buck converter\nBoost converter\n");
        const QModelIndexList selected = list.selectionModel()->selectedIndexes();
        ASSERT_EQ(selected.size(), 1);
        EXPECT_EQ(selected.first().data().toString(), QStringLiteral("Boost converter"));
        EXPECT_EQ(list.currentIndex(), selected.first());
        user.click("nextButton");
        EXPECT_EQ(user.the<QLabel>("exampleName").text(), QStringLiteral("Boost converter"));
        user.press(Qt::Key_Escape);
    });
    EXPECT_FALSE(runExampleBrowser2({toFilePath(barrel)}, toFilePath(folder / "designs"), {}, nullptr));
    EXPECT_TRUE(driver.isDone());
}

TEST_F(UserOfTheExampleBrowser, NeedsTheKeyboardAlone)
{
    const auto barrel =
        writeBarrel(folder, "b.kvexs", {{.title = QStringLiteral("One")}, {.title = QStringLiteral("Two")}});
    ModalDriver driver;
    driver.when<ExampleBrowser2>([&](ExampleBrowser2& dialog) {
        const User user{dialog};
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        for (const int key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Return})
            user.press(key);
        EXPECT_EQ(user.the<QLabel>("exampleName").text(), QStringLiteral("Two"));
        for (const int key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return})
            user.press(key);
    });
    const auto result = runExampleBrowser2({toFilePath(barrel)}, toFilePath(folder / "out"), {}, nullptr);
    ASSERT_TRUE(result);
    EXPECT_EQ(toQString(*result), below("out/Two/content/design.kvsch"));
}
