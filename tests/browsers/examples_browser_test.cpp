#include "browsers/examples_browser.h"

#include "browsers/examples_sort_filter_proxy_model.h"
#include "kelvaris/system/bad_expected_access.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/log_capture.h"
#include "tests/support/modal_driver.h"
#include "tests/support/model_dump.h"

#include <QtTest/QTest>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTreeView>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

#ifdef HOLLERWICK_HAVE_WEBKIT
#include <QtWebKitWidgets/QWebFrame>
#include <QtWebKitWidgets/QWebView>
using PageWidget = QWebView;
#else
#include <QtWidgets/QTextBrowser>
using PageWidget = QTextBrowser;
#endif

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class ExamplesWindow : public testing::Test
{
protected:
    void open(const std::vector<SampleExample>& examples, const BarrelChange& change = {})
    {
        browser.setBundle(openBarrel(writeBarrel(folder, "barrel.kvexs", examples, change)));
        browser.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&browser));
    }

    QTreeView* view() const { return browser.findChild<QTreeView*>(); }
    QLineEdit* searchBox() const { return browser.findChild<QLineEdit*>(); }

    PageWidget* page() const { return browser.findChild<PageWidget*>(); }

    QString pageText() const
    {
        QTest::qWait(50);
#ifdef HOLLERWICK_HAVE_WEBKIT
        return page()->page()->mainFrame()->toPlainText().trimmed();
#else
        return page()->toPlainText().trimmed();
#endif
    }

    QPoint centreOf(int row) const
    {
        return view()->visualRect(view()->model()->index(row, 0)).center();
    }
    void clickRow(int row)
    {
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, centreOf(row));
    }

    /// Right click on a row, the menu's one entry, then what `step` does in the dialog for the directory.
    void startDesign(int row, const std::function<void(QFileDialog&)>& step)
    {
        ModalDriver driver;
        driver.when<QMenu>([](QMenu& menu) { chooseEntry(menu, QStringLiteral("Start new design with...")); });
        driver.when<QFileDialog>([&](QFileDialog& files) { step(files); });
        rightClick(*view()->viewport(), centreOf(row));
        EXPECT_TRUE(driver.isDone());
    }

    QString below(const char* name) const
    {
        return QString::fromStdString(folder.path().string()) + QLatin1Char{'/'} + QString::fromUtf8(name);
    }

    TemporaryFolder folder;
    LogCapture log;
    ExamplesBrowser browser;
};

const std::vector<SampleExample> twoExamples = {
    {.title = QStringLiteral("Buck"), .description = QStringLiteral("Steps down"), .page = "<h1>The buck page</h1>"},
    {.title = QStringLiteral("Boost"), .description = QStringLiteral("Steps up, <i>Größe</i>"), .bytes = "boost"}};

} // namespace

TEST_F(ExamplesWindow, HasTheListOverTheSearchBoxOnTheLeftAndThePageOnTheRight)
{
    auto* const layout = dynamic_cast<QHBoxLayout*>(browser.layout());
    ASSERT_NE(layout, nullptr);
    ASSERT_EQ(layout->count(), 2);
    auto* const left = dynamic_cast<QVBoxLayout*>(layout->itemAt(0)->layout());
    ASSERT_NE(left, nullptr);
    EXPECT_EQ(left->itemAt(0)->widget(), view());
    EXPECT_EQ(left->itemAt(1)->widget(), searchBox());
    EXPECT_EQ(layout->itemAt(1)->widget(), page());
    EXPECT_EQ(layout->stretch(0) + layout->stretch(1), 0);
}

TEST_F(ExamplesWindow, HasTheSettingsOfItsViewsAndNoTitleOrName)
{
    EXPECT_TRUE(view()->isHeaderHidden());
    EXPECT_EQ(view()->contextMenuPolicy(), Qt::CustomContextMenu);
    EXPECT_EQ(searchBox()->placeholderText(), QStringLiteral("Search"));
    EXPECT_EQ(browser.windowTitle(), QString{});
    EXPECT_EQ(browser.objectName(), QString{});
}

TEST_F(ExamplesWindow, HasAnAccessibleNameForEveryControl)
{
    for (const QWidget* control : std::initializer_list<QWidget*>{view(), searchBox(), page()})
        EXPECT_NE(control->accessibleName(), QString{});
}

TEST_F(ExamplesWindow, ReachesListSearchBoxAndPageByTabInReadingOrder)
{
    open(twoExamples);
    view()->setFocus();
    QTest::keyClick(browser.windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(browser.focusWidget(), searchBox());
    QTest::keyClick(browser.windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(browser.focusWidget(), page());
}

TEST_F(ExamplesWindow, ShowsNoRowBeforeABarrelIsSet)
{
    EXPECT_EQ(view()->model()->rowCount(), 0);
}

TEST_F(ExamplesWindow, ShowsTheDocumentationOfTheCurrentExample)
{
    open(twoExamples);
    clickRow(0);
    EXPECT_EQ(pageText(), QStringLiteral("The buck page"));
}

TEST_F(ExamplesWindow, ShowsTheDescriptionInThePlaceOfAPageAsAPage)
{
    open(twoExamples);
    clickRow(1);
    EXPECT_EQ(pageText(), QStringLiteral("Steps up, Größe"));
}

TEST_F(ExamplesWindow, ShowsTheDescriptionForAnEmptyPage)
{
    open({{.title = QStringLiteral("A"), .description = QStringLiteral("Described"), .hasEmptyPage = true}});
    clickRow(0);
    EXPECT_EQ(pageText(), QStringLiteral("Described"));
}

TEST_F(ExamplesWindow, ShowsTheDescriptionForAPageThatCannotBeReadAndSaysNothing)
{
    const SampleExample damaged{
        .title = QStringLiteral("Damaged"), .description = QStringLiteral("Described"), .page = "<p>Page</p>"};
    open(twoExamples, addExampleWithDamagedPage(folder, damaged));
    clickRow(0);
    EXPECT_EQ(pageText(), QStringLiteral("The buck page"));
    clickRow(2);
    EXPECT_EQ(pageText(), QStringLiteral("Described"));
    EXPECT_THAT(log.lines(), ElementsAre());
}

TEST_F(ExamplesWindow, FollowsTheKeyboardThroughTheList)
{
    open(twoExamples);
    clickRow(0);
    QTest::keyClick(browser.windowHandle(), Qt::Key_Down);
    EXPECT_EQ(pageText(), QStringLiteral("Steps up, Größe"));
    QTest::keyClick(browser.windowHandle(), Qt::Key_Up);
    EXPECT_EQ(pageText(), QStringLiteral("The buck page"));
}

TEST_F(ExamplesWindow, StaysFluidWhileTheKeyIsHeldDown)
{
    std::vector<SampleExample> examples;
    for (int i = 0; i < 300; ++i)
        examples.push_back({.title = QString::number(i), .page = "<h1>Page " + std::to_string(i) + "</h1>"});
    open(examples);
    clickRow(0);
    const std::clock_t start = std::clock();
    for (int i = 1; i < 300; ++i) {
        QTest::keyClick(browser.windowHandle(), Qt::Key_Down);
        QCoreApplication::processEvents();
    }
    EXPECT_LT(std::clock() - start, 300 * CLOCKS_PER_SEC / 20) << "50 ms for each row";
    EXPECT_EQ(pageText(), QStringLiteral("Page 299"));
}

TEST_F(ExamplesWindow, NarrowsTheListByTheSearchBox)
{
    open(twoExamples);
    QTest::keyClicks(searchBox(), QStringLiteral("UP|nothing"));
    EXPECT_EQ(dump(*view()->model()), "Boost\n");
    searchBox()->clear();
    EXPECT_EQ(dump(*view()->model()), "Buck\nBoost\n");
    QTest::keyClicks(searchBox(), QStringLiteral("("));
    EXPECT_EQ(dump(*view()->model()), "");
}

TEST_F(ExamplesWindow, HidesARowForATextThatStandsInTheManufacturerAlone)
{
    open({{.title = QStringLiteral("A"), .manufacturer = QStringLiteral("Renesas")}});
    QTest::keyClicks(searchBox(), QStringLiteral("renesas"));
    EXPECT_EQ(view()->model()->rowCount(), 0);
}

TEST_F(ExamplesWindow, UnpacksAnExampleFromTheContextMenu)
{
    open(twoExamples);
    fs::create_directories(folder / "out");
    startDesign(1, [&](QFileDialog& files) {
        EXPECT_EQ(files.windowTitle(), QStringLiteral("Directory to Save Example to"));
        EXPECT_TRUE(files.testOption(QFileDialog::ShowDirsOnly));
        EXPECT_EQ(files.parentWidget(), &browser);
        chooseFile(files, below("out"));
    });
    EXPECT_EQ(readFile(folder / "out/content/design.kvsch"), "boost");
    EXPECT_THAT(log.lines(), ElementsAre());
}

TEST_F(ExamplesWindow, UnpacksTheExampleThatTheSearchHasLeftAtThePlace)
{
    open(twoExamples);
    fs::create_directories(folder / "out");
    QTest::keyClicks(searchBox(), QStringLiteral("boost"));
    startDesign(0, [&](QFileDialog& files) { chooseFile(files, below("out")); });
    EXPECT_EQ(readFile(folder / "out/content/design.kvsch"), "boost");
}

TEST_F(ExamplesWindow, UnpacksNothingWhenTheDirectoryDialogIsCancelled)
{
    open(twoExamples);
    const fs::path before = fs::current_path();
    startDesign(0, [](QFileDialog& files) { QTest::keyClick(&files, Qt::Key_Escape); });
    EXPECT_FALSE(fs::exists(before / "content"));
    EXPECT_THAT(log.lines(), ElementsAre());
}

TEST_F(ExamplesWindow, LogsAFailedUnpackGoesOnAndOverwritesNothing)
{
    open(twoExamples);
    folder.write("out/content/design.kvsch", "my own work");
    startDesign(0, [&](QFileDialog& files) { chooseFile(files, below("out")); });
    EXPECT_EQ(readFile(folder / "out/content/design.kvsch"), "my own work");
    EXPECT_THAT(log.lines(), ElementsAre(AllOf(HasSubstr("error [ui] "), HasSubstr("design.kvsch"))));
    clickRow(0);
    EXPECT_EQ(pageText(), QStringLiteral("The buck page"));
}

TEST_F(ExamplesWindow, ShowsNoMenuBesideTheRows)
{
    open(twoExamples);
    rightClick(*view()->viewport(), view()->viewport()->rect().bottomLeft() + QPoint{20, -5});
    QTest::qWait(50);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(ExamplesWindow, HasOneMenuEntryWithoutAShortcut)
{
    open(twoExamples);
    ModalDriver driver;
    driver.when<QMenu>([](QMenu& menu) {
        ASSERT_EQ(menu.actions().size(), 1);
        EXPECT_EQ(menu.actions().first()->text(), QStringLiteral("Start new design with..."));
        EXPECT_TRUE(menu.actions().first()->shortcut().isEmpty());
        menu.close();
    });
    rightClick(*view()->viewport(), centreOf(0));
}

TEST_F(ExamplesWindow, PutsTheMenuWhereTheMenusOwnMappingOfTheGlobalPositionLeads)
{
    open(twoExamples);
    browser.move(130, 110);
    QTest::qWait(50);
    const QPoint position = centreOf(1);
    QPoint shownAt;
    ModalDriver driver;
    driver.when<QMenu>([&](QMenu& menu) {
        shownAt = menu.pos();
        menu.close();
    });
    rightClick(*view()->viewport(), position);
    // A menu that is not shown yet stands at the origin, so that its mapping changes nothing.
    EXPECT_EQ(shownAt, view()->mapToGlobal(position));
}

TEST_F(ExamplesWindow, RaisesForABarrelWithAnExampleThatCannotBeRead)
{
    auto broken = openBarrel(writeBarrel(folder, "b.kvexs", twoExamples, addUnreadableExample(folder)));
    EXPECT_THROW(browser.setBundle(std::move(broken)),
                 Kelvaris::System::bad_expected_access<Kelvaris::System::ErrorCode2>);
}

TEST_F(ExamplesWindow, ShowsATitleAsItIsWritten)
{
    open({{.title = QStringLiteral("<b>x</b> & <img src=x>")}});
    EXPECT_EQ(dump(*view()->model()), "<b>x</b> & <img src=x>\n");
}
