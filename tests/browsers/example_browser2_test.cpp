#include "browsers/example_browser2.h"

#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/core_error.h"
#include "kelvaris/system/qt/path_bridge.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/log_capture.h"
#include "tests/support/modal_driver.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeView>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <optional>

namespace fs = std::filesystem;
using Kelvaris::System::bad_expected_access;
using Kelvaris::System::CoreError;
using Kelvaris::System::ErrorCode2;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const std::vector<SampleExample> threeExamples = {
    {.title = QStringLiteral("Buck"), .manufacturer = QStringLiteral("Renesas")},
    {.title = QStringLiteral("Boost"), .manufacturer = QStringLiteral("Analog Devices")},
    {.title = QStringLiteral("Motor drive")}};

class ExampleBrowser : public testing::Test
{
protected:
    void open(const std::vector<SampleExample>& examples, const BarrelChange& change = {})
    {
        dialog.setTargetDirectory(toFilePath(folder / "out"));
        dialog.addBarrels({toFilePath(writeBarrel(folder, "barrel.kvexs", examples, change))});
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }

    template <class Widget>
    Widget* child(const char* name) const
    {
        auto* const widget = dialog.findChild<Widget*>(QString::fromUtf8(name));
        if (widget == nullptr)
            throw std::runtime_error{name};
        return widget;
    }

    QListView* list() const { return child<QListView>("examplesView"); }
    QLineEdit* searchBox() const { return child<QLineEdit>("searchBox"); }
    QLineEdit* locationBox() const { return child<QLineEdit>("targetDirectoryBox"); }
    QLabel* warning() const { return child<QLabel>("locationWarningLabel"); }
    QPushButton* button(const char* name) const { return child<QPushButton>(name); }
    QStackedWidget* pages() const { return child<QStackedWidget>("stackedWidget"); }
    QString page() const { return pages()->currentWidget()->objectName(); }

    QString shownTitles() const
    {
        QStringList titles;
        for (int row = 0; row < list()->model()->rowCount(); ++row)
            titles += list()->model()->index(row, 0).data().toString();
        return titles.join(QLatin1Char{','});
    }

    QPoint centreOf(int row) const { return list()->visualRect(list()->model()->index(row, 0)).center(); }

    void clickRow(int row, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, modifiers, centreOf(row));
    }

    void click(const char* name) { QTest::mouseClick(button(name), Qt::LeftButton); }

    void configure(int row)
    {
        clickRow(row);
        click("nextButton");
        ASSERT_EQ(page(), QStringLiteral("configurePage"));
    }

    void search(const char* text)
    {
        searchBox()->clear();
        typeText(*searchBox(), QString::fromUtf8(text));
    }

    void typeLocation(const QString& text)
    {
        locationBox()->clear();
        typeText(*locationBox(), text);
    }

    QString below(const char* name) const
    {
        return QString::fromStdString(folder.path().string()) + QLatin1Char{'/'} + QString::fromUtf8(name);
    }

    /// "page back next(enabled) create" as the user sees them.
    std::string state() const
    {
        const auto seen = [&](const char* name) {
            QPushButton* const b = button(name);
            return !b->isVisible() ? "-" : b->isEnabled() ? "on" : "off";
        };
        return page().toStdString() + " " + seen("backButton") + " " + seen("nextButton") + " " + seen("createButton");
    }

    TemporaryFolder folder;
    LogCapture log;
    ExampleBrowser2 dialog;
};

} // namespace

TEST_F(ExampleBrowser, StartsOnTheBrowsePageWithNextDisabled)
{
    open(threeExamples);
    EXPECT_EQ(state(), "browsePage - off -");
    EXPECT_EQ(shownTitles(), QStringLiteral("Buck,Boost,Motor drive"));
}

TEST_F(ExampleBrowser, HasTheSizeTheTitleAndTheTextsOfItsForm)
{
    EXPECT_EQ(dialog.size(), QSize(804, 487));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Dialog"));
    EXPECT_EQ(dialog.objectName(), QStringLiteral("ExampleBrowserDialog"));
    EXPECT_EQ(child<QLabel>("browsePageTitle")->text(), QStringLiteral("Examples browser"));
    EXPECT_EQ(child<QLabel>("configurePageTitle")->text(), QStringLiteral("Configure example"));
    EXPECT_EQ(child<QLabel>("filterLabel")->text(), QStringLiteral("Filters"));
    EXPECT_EQ(child<QLabel>("label")->text(), QStringLiteral("Location"));
    EXPECT_EQ(child<QLabel>("exampleName")->text(), QStringLiteral("EXAMPLE NAME"));
    EXPECT_EQ(searchBox()->placeholderText(), QStringLiteral("Search"));
    EXPECT_EQ(child<QToolButton>("selectDirectoryButton")->text(), QStringLiteral("..."));
    EXPECT_EQ(warning()->text(), QStringLiteral("<html><head/><body><p>[ ! ]</p></body></html>"));
    EXPECT_EQ(button("backButton")->text(), QStringLiteral("Back"));
    EXPECT_EQ(button("nextButton")->text(), QStringLiteral("Next"));
    EXPECT_EQ(button("createButton")->text(), QStringLiteral("Create"));
}

TEST_F(ExampleBrowser, HasTheFontsAndSizesOfItsForm)
{
    const QFont title = child<QLabel>("browsePageTitle")->font();
    EXPECT_EQ(title.pointSize(), 18);
    EXPECT_EQ(title.weight(), 75);
    EXPECT_EQ(child<QLabel>("configurePageTitle")->font(), title);
    EXPECT_EQ(child<QLabel>("exampleName")->font().pointSize(), 14);
    EXPECT_EQ(child<QLabel>("exampleName")->font().weight(), 50);
    EXPECT_EQ(child<QLabel>("filterLabel")->font().pointSize(), 12);
    EXPECT_EQ(child<QWidget>("configureWidget")->maximumSize(), QSize(500, 16777215));
    EXPECT_TRUE(child<QTreeView>("filterView")->isHeaderHidden());
    EXPECT_EQ(child<QWidget>("searchFilterWidget")->sizePolicy().verticalPolicy(), QSizePolicy::MinimumExpanding);
    auto* const row = dialog.findChild<QHBoxLayout*>(QStringLiteral("horizontalLayout_2"));
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->stretch(0), 1);
    EXPECT_EQ(row->stretch(1), 2);
}

TEST_F(ExampleBrowser, ShowsNoToolTip)
{
    for (const QWidget* widget : dialog.findChildren<QWidget*>())
        EXPECT_EQ(widget->toolTip(), QString{}) << qPrintable(widget->objectName());
}

TEST_F(ExampleBrowser, KeepsTheFilterTreeCollapsed)
{
    open(threeExamples);
    auto* const filters = child<QTreeView>("filterView");
    ASSERT_EQ(filters->model()->rowCount(), 3);
    for (int row = 0; row < 3; ++row)
        EXPECT_FALSE(filters->isExpanded(filters->model()->index(row, 0)));
}

TEST_F(ExampleBrowser, EnablesNextWhenARowIsSelected)
{
    open(threeExamples);
    clickRow(1);
    EXPECT_EQ(state(), "browsePage - on -");
}

TEST_F(ExampleBrowser, DisablesNextWhenTheRowIsDeselected)
{
    open(threeExamples);
    clickRow(1);
    clickRow(1, Qt::ControlModifier);
    EXPECT_EQ(state(), "browsePage - off -");
}

TEST_F(ExampleBrowser, KeepsNextEnabledWhenAnotherRowIsSelected)
{
    open(threeExamples);
    clickRow(1);
    clickRow(2);
    EXPECT_EQ(state(), "browsePage - on -");
}

TEST_F(ExampleBrowser, DropsASelectionThatASearchFiltersOut)
{
    open(threeExamples);
    clickRow(0);
    search("boost");
    EXPECT_EQ(shownTitles(), QStringLiteral("Boost"));
    EXPECT_EQ(state(), "browsePage - off -");
    EXPECT_FALSE(list()->selectionModel()->hasSelection()) << "no neighbour takes its place";
    EXPECT_FALSE(list()->currentIndex().isValid());
}

TEST_F(ExampleBrowser, DropsASelectionThatAManufacturerFiltersOut)
{
    open(threeExamples);
    clickRow(2);
    auto* const filters = child<QTreeView>("filterView");
    const QModelIndex renesas = filters->model()->index(5, 0, filters->model()->index(1, 0));
    ASSERT_EQ(renesas.data().toString(), QStringLiteral("Renesas"));
    filters->model()->setData(renesas, Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(shownTitles(), QStringLiteral("Buck"));
    EXPECT_EQ(state(), "browsePage - off -");
}

TEST_F(ExampleBrowser, KeepsASelectionThatASearchLeavesInTheList)
{
    open(threeExamples);
    clickRow(1);
    search("boost");
    EXPECT_EQ(state(), "browsePage - on -");
    EXPECT_EQ(list()->currentIndex().data().toString(), QStringLiteral("Boost"));
}

TEST_F(ExampleBrowser, EmptiesTheListForALoneParenthesisUntilTheTextIsCorrected)
{
    open(threeExamples);
    search("(");
    EXPECT_EQ(shownTitles(), QString{});
    QTest::keyClick(searchBox(), Qt::Key_Backspace);
    EXPECT_EQ(shownTitles(), QStringLiteral("Buck,Boost,Motor drive"));
}

TEST_F(ExampleBrowser, TakesTheSearchForARegularExpressionThatIgnoresCase)
{
    open(threeExamples);
    search("^b|DRIVE$");
    EXPECT_EQ(shownTitles(), QStringLiteral("Buck,Boost,Motor drive"));
    search("^b.c");
    EXPECT_EQ(shownTitles(), QStringLiteral("Buck"));
}

TEST_F(ExampleBrowser, ShowsAnEmptyListWithNextDisabledWithoutBarrels)
{
    dialog.addBarrels({});
    dialog.show();
    EXPECT_EQ(list()->model()->rowCount(), 0);
    EXPECT_EQ(state(), "browsePage - off -");
    QTest::keyClick(list(), Qt::Key_Down);
    QTest::keyClick(list(), Qt::Key_Return);
    EXPECT_EQ(state(), "browsePage - off -");
}

TEST_F(ExampleBrowser, ShowsTheExamplesOfTheOtherBarrelsWhenOneCannotBeRead)
{
    const auto good = writeBarrel(folder, "good.kvexs", threeExamples);
    dialog.addBarrels({toFilePath(folder / "missing.kvexs"), toFilePath(good)});
    EXPECT_EQ(shownTitles(), QStringLiteral("Buck,Boost,Motor drive"));
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("[example browser]")));
}

TEST_F(ExampleBrowser, GoesToTheConfigurePageByNextAndBackByBack)
{
    open(threeExamples);
    configure(0);
    EXPECT_EQ(state(), "configurePage on - on");
    click("backButton");
    EXPECT_EQ(state(), "browsePage - on -");
}

TEST_F(ExampleBrowser, GoesToTheConfigurePageByADoubleClick)
{
    open(threeExamples);
    clickRow(1);
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, centreOf(1));
    EXPECT_EQ(state(), "configurePage on - on");
    EXPECT_EQ(child<QLabel>("exampleName")->text(), QStringLiteral("Boost"));
}

TEST_F(ExampleBrowser, GoesToTheConfigurePageOnceByReturnInTheListAndLeavesTheKeyboardInTheLocation)
{
    open(threeExamples);
    QSignalSpy changes{pages(), &QStackedWidget::currentChanged};
    list()->setFocus();
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Down);
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
    EXPECT_EQ(state(), "configurePage on - on");
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(dialog.focusWidget(), locationBox());
    EXPECT_FALSE(fs::exists(folder / "out")) << "the same key must not press Create";
    EXPECT_EQ(dialog.result(), 0);
}

TEST_F(ExampleBrowser, GoesOnByEnterOfTheKeypadToo)
{
    open(threeExamples);
    list()->setFocus();
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Down);
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Enter);
    EXPECT_EQ(page(), QStringLiteral("configurePage"));
    EXPECT_EQ(dialog.focusWidget(), locationBox());
}

TEST_F(ExampleBrowser, StaysOnThePageForReturnInTheSearchBox)
{
    open(threeExamples);
    clickRow(0);
    searchBox()->setFocus();
    QTest::keyClick(dialog.windowHandle(), Qt::Key_B);
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
    EXPECT_EQ(state(), "browsePage - on -");
    EXPECT_EQ(dialog.focusWidget(), searchBox());
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(ExampleBrowser, StaysOnThePageForReturnInTheLocation)
{
    open(threeExamples);
    configure(0);
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
    EXPECT_EQ(state(), "configurePage on - on");
    EXPECT_FALSE(fs::exists(folder / "out"));
}

TEST_F(ExampleBrowser, PressesTheButtonThatHasTheFocusByReturn)
{
    open(threeExamples);
    configure(0);
    button("backButton")->setFocus();
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
    EXPECT_EQ(page(), QStringLiteral("browsePage"));
    button("nextButton")->setFocus();
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Enter);
    EXPECT_EQ(page(), QStringLiteral("configurePage"));
}

TEST_F(ExampleBrowser, PutsTheKeyboardInTheLocationAfterNextAndInTheListAfterBack)
{
    open(threeExamples);
    configure(0);
    EXPECT_EQ(dialog.focusWidget(), locationBox());
    click("backButton");
    EXPECT_EQ(dialog.focusWidget(), list());
}

TEST_F(ExampleBrowser, ReachesEveryControlByTabInReadingOrder)
{
    open(threeExamples);
    clickRow(0);
    searchBox()->setFocus();
    QStringList order;
    for (int i = 0; i < 4; ++i) {
        order += dialog.focusWidget()->objectName();
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
    }
    EXPECT_EQ(order.join(QLatin1Char{' '}), QStringLiteral("searchBox filterView examplesView nextButton"));
    click("nextButton");
    order.clear();
    for (int i = 0; i < 4; ++i) {
        order += dialog.focusWidget()->objectName();
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
    }
    EXPECT_EQ(order.join(QLatin1Char{' '}),
              QStringLiteral("targetDirectoryBox selectDirectoryButton backButton createButton"));
}

TEST_F(ExampleBrowser, HasAnAccessibleNameForEveryControlAndABuddyForTheLocation)
{
    for (const char* name : {"searchBox", "filterView", "examplesView", "targetDirectoryBox", "selectDirectoryButton"})
        EXPECT_NE(child<QWidget>(name)->accessibleName(), QString{}) << name;
    EXPECT_EQ(child<QLabel>("label")->buddy(), locationBox());
}

TEST_F(ExampleBrowser, ProposesAFreePlaceForTheCurrentExample)
{
    open(threeExamples);
    folder.write("out/Buck", "a file counts as taken");
    fs::create_directories(folder / "out/Buck_1");
    configure(0);
    EXPECT_EQ(child<QLabel>("exampleName")->text(), QStringLiteral("Buck"));
    EXPECT_EQ(locationBox()->text(), below("out/Buck_2"));
    EXPECT_FALSE(fs::exists(folder / "out/Buck_2"));
}

TEST_F(ExampleBrowser, ProposesAnewOnEachVisitOverWhateverWasTyped)
{
    open(threeExamples);
    configure(0);
    typeLocation(below("typed"));
    click("backButton");
    fs::create_directories(folder / "out/Buck");
    click("nextButton");
    EXPECT_EQ(locationBox()->text(), below("out/Buck_1"));
}

TEST_F(ExampleBrowser, ShowsTheMarkWhenTheLastNumberIsTakenToo)
{
    open(threeExamples);
    fs::create_directories(folder / "out/Buck");
    for (int n = 1; n <= 1000; ++n)
        fs::create_directory(folder / ("out/Buck_" + std::to_string(n)));
    folder.write("out/Buck_1000/file", "");
    configure(0);
    EXPECT_EQ(locationBox()->text(), below("out/Buck_1000"));
    EXPECT_TRUE(warning()->isVisible());
}

TEST_F(ExampleBrowser, ShowsATitleAsItIsWritten)
{
    const QString title = QStringLiteral("<b>x</b> & <img src=\"http://127.0.0.1/x.png\">");
    open({{.title = title}});
    configure(0);
    EXPECT_EQ(child<QLabel>("exampleName")->text(), title);
    EXPECT_EQ(child<QLabel>("exampleName")->textFormat(), Qt::PlainText);
}

TEST_F(ExampleBrowser, KeepsItsSizeForALongTitle)
{
    open({{.title = QStringLiteral("A very long title of an example that goes on ").repeated(8).trimmed()},
          {.title = QString{200, QLatin1Char{'W'}}}});
    const QSize before = dialog.size();
    configure(0);
    QTest::qWait(50);
    EXPECT_EQ(dialog.size(), before);
    EXPECT_GE(child<QLabel>("exampleName")->height(), child<QLabel>("exampleName")->heightForWidth(before.width()));
    click("backButton");
    configure(1);
    QTest::qWait(50);
    EXPECT_EQ(dialog.size(), before) << "a title without a blank";
}

TEST_F(ExampleBrowser, ShowsTheMarkForADirectoryThatHoldsSomethingAndStopsNothing)
{
    open(threeExamples);
    folder.write("full/file", "");
    fs::create_directory(folder / "empty");
    configure(0);
    EXPECT_FALSE(warning()->isVisible()) << "the proposed place is free";
    typeLocation(below("full"));
    EXPECT_TRUE(warning()->isVisible());
    EXPECT_TRUE(button("createButton")->isEnabled());
    typeLocation(below("empty"));
    EXPECT_FALSE(warning()->isVisible());
    typeLocation(below("nothing there"));
    EXPECT_FALSE(warning()->isVisible());
}

TEST_F(ExampleBrowser, HasTheMarkUntilTheLocationChangesForTheFirstTime)
{
    EXPECT_FALSE(warning()->isHidden());
}

TEST_F(ExampleBrowser, RaisesForALocationThatIsAFile)
{
    folder.write("file", "");
    try {
        dialog.updateLocationWarning(below("file"));
        FAIL() << "nothing raised";
    } catch (const fs::filesystem_error& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("directory_iterator::directory_iterator"));
    }
}

TEST_F(ExampleBrowser, RaisesForAPlaceThatCannotBeLookedAt)
{
    dialog.setTargetDirectory(toFilePath(folder / std::string(300, 'x')));
    child<QStackedWidget>("stackedWidget")->blockSignals(true);
    pages()->setCurrentIndex(1);
    try {
        dialog.updatePage();
        FAIL() << "nothing raised";
    } catch (const fs::filesystem_error& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("exists"));
    }
}

TEST_F(ExampleBrowser, EndsTypingTheNameOfAFileQuietlyWithOneLogLine)
{
    open(threeExamples);
    folder.write("f", "");
    configure(0);
    locationBox()->setText(below(""));
    typeText(*locationBox(), QStringLiteral("f"));
    EXPECT_EQ(locationBox()->text(), below("f"));
    EXPECT_THAT(log.lines(), ElementsAre(AllOf(HasSubstr("error [ui] "), HasSubstr("directory_iterator"))));
}

TEST_F(ExampleBrowser, EndsTypingAPathThatIsTooLongQuietly)
{
    open(threeExamples);
    configure(0);
    locationBox()->setText(below(std::string(300, 'x').c_str()));
    EXPECT_THAT(log.lines(), ElementsAre(AllOf(HasSubstr("error [ui] "), HasSubstr("exists"))));
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(ExampleBrowser, OpensTheConfigurePageAlsoWhenNoPlaceCanBeProposed)
{
    open(threeExamples);
    dialog.setTargetDirectory(toFilePath(folder / std::string(300, 'x')));
    configure(0);
    EXPECT_EQ(state(), "configurePage on - on");
    EXPECT_EQ(child<QLabel>("exampleName")->text(), QStringLiteral("Buck"));
    EXPECT_EQ(dialog.focusWidget(), locationBox());
    EXPECT_THAT(log.lines(), ElementsAre(AllOf(HasSubstr("error [ui] "), HasSubstr("exists"))));
}

TEST_F(ExampleBrowser, TakesTheDirectoryThatIsChosen)
{
    open(threeExamples);
    fs::create_directories(folder / "chosen");
    configure(0);
    typeLocation(below(""));
    QString caption;
    QString start;
    ModalDriver driver;
    driver.when<QFileDialog>([&](QFileDialog& files) {
        caption = files.windowTitle();
        start = files.directory().absolutePath();
        EXPECT_TRUE(files.testOption(QFileDialog::ShowDirsOnly));
        EXPECT_EQ(files.parentWidget(), &dialog);
        chooseFile(files, below("chosen"));
    });
    QTest::mouseClick(child<QToolButton>("selectDirectoryButton"), Qt::LeftButton);
    EXPECT_EQ(caption, QStringLiteral("Choose target directory"));
    EXPECT_EQ(start, QString::fromStdString(folder.path().string()));
    EXPECT_EQ(locationBox()->text(), below("chosen"));
}

TEST_F(ExampleBrowser, ChangesNothingWhenTheChoiceOfADirectoryIsCancelled)
{
    open(threeExamples);
    configure(0);
    const QString before = locationBox()->text();
    ModalDriver driver;
    driver.when<QFileDialog>([](QFileDialog& files) { QTest::keyClick(&files, Qt::Key_Escape); });
    QTest::mouseClick(child<QToolButton>("selectDirectoryButton"), Qt::LeftButton);
    EXPECT_EQ(locationBox()->text(), before);
}

TEST_F(ExampleBrowser, AcceptsWithThePrimaryFileInTheTargetDirectory)
{
    open({{.title = QStringLiteral("One"), .file = "sub dir/größe 100%.kvsch", .bytes = "these bytes"}});
    configure(0);
    click("createButton");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
    const QString created = toQString(dialog.createdExampleFile());
    EXPECT_EQ(created, below("out/One/content/sub dir/größe 100%.kvsch"));
    EXPECT_EQ(readFile(created.toStdString()), "these bytes");
}

TEST_F(ExampleBrowser, FoldsDotsInThePathOfTheCreatedFile)
{
    open(threeExamples);
    configure(0);
    typeLocation(below("out/./x/../design"));
    click("createButton");
    EXPECT_EQ(toQString(dialog.createdExampleFile()), below("out/design/content/design.kvsch"));
}

TEST_F(ExampleBrowser, RaisesWhenTheCreatedFileIsAskedForBeforeThereIsOne)
{
    EXPECT_THROW((void)dialog.createdExampleFile(), std::bad_optional_access);
}

namespace {

struct Warning
{
    QString title;
    QString text;
    Qt::TextFormat format;
    QMessageBox::StandardButtons buttons;
    QWidget* parent;
};

/// Creates, closes the warning that must come up, and gives what it said.
std::optional<Warning> createAndReadWarning(QPushButton* create)
{
    std::optional<Warning> warning;
    ModalDriver driver;
    driver.when<QMessageBox>([&](QMessageBox& box) {
        warning = Warning{box.windowTitle(), box.text(), box.textFormat(), box.standardButtons(), box.parentWidget()};
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.defaultButton(), nullptr);
        clickButton(box, QStringLiteral("OK"));
    });
    QTest::mouseClick(create, Qt::LeftButton);
    return warning;
}

} // namespace

TEST_F(ExampleBrowser, WarnsWithTheReasonAndStaysWhenTheFilesAreThereAlready)
{
    open(threeExamples);
    folder.write("mine/content/design.kvsch", "my own work");
    configure(0);
    typeLocation(below("mine"));
    const auto shown = createAndReadWarning(button("createButton"));
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->title, QStringLiteral("Create example failed"));
    EXPECT_TRUE(shown->text.startsWith(QStringLiteral("Create example failed: \n"))) << qPrintable(shown->text);
    EXPECT_TRUE(shown->text.contains(QStringLiteral("design.kvsch"))) << qPrintable(shown->text);
    EXPECT_EQ(shown->format, Qt::PlainText);
    EXPECT_EQ(shown->buttons, QMessageBox::Ok);
    EXPECT_EQ(shown->parent, &dialog);
    EXPECT_EQ(readFile(folder / "mine/content/design.kvsch"), "my own work");
    EXPECT_EQ(state(), "configurePage on - on");
    EXPECT_EQ(locationBox()->text(), below("mine"));
    EXPECT_THROW((void)dialog.createdExampleFile(), std::bad_optional_access);
}

TEST_F(ExampleBrowser, CreatesAtAnotherPlaceAfterAWarning)
{
    open(threeExamples);
    folder.write("mine/content/design.kvsch", "my own work");
    configure(0);
    typeLocation(below("mine"));
    ASSERT_TRUE(createAndReadWarning(button("createButton")));
    typeLocation(below("other"));
    click("createButton");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(toQString(dialog.createdExampleFile()), below("other/content/design.kvsch"));
}

TEST_F(ExampleBrowser, WarnsWhenTheTargetCannotBeCreated)
{
    open(threeExamples);
    folder.write("file", "");
    configure(0);
    typeLocation(below("file/below"));
    EXPECT_TRUE(createAndReadWarning(button("createButton")));
    EXPECT_EQ(state(), "configurePage on - on");
}

TEST_F(ExampleBrowser, WarnsWhenTheBarrelIsGone)
{
    open(threeExamples);
    fs::remove(folder / "barrel.kvexs");
    configure(0);
    const auto shown = createAndReadWarning(button("createButton"));
    ASSERT_TRUE(shown);
    EXPECT_TRUE(shown->text.contains(QStringLiteral("barrel.kvexs"))) << qPrintable(shown->text);
    EXPECT_FALSE(fs::exists(folder / "out/Buck"));
}

TEST_F(ExampleBrowser, WarnsWhenTheExampleHasNoPrimaryFile)
{
    open({{.title = QStringLiteral("One"), .hasPrimaryFile = false}});
    configure(0);
    EXPECT_TRUE(createAndReadWarning(button("createButton")));
    EXPECT_EQ(state(), "configurePage on - on");
    EXPECT_THROW((void)dialog.createdExampleFile(), std::bad_optional_access);
}

TEST_F(ExampleBrowser, LogsAPrimaryFileWhoseNameNoFileCanHaveAndStays)
{
    open(threeExamples, addExampleWithNamelessPrimaryFile(folder));
    configure(3);
    typeLocation(below("out/nameless"));
    click("createButton");
    EXPECT_THAT(log.lines(), ElementsAre(AllOf(HasSubstr("error [ui] "), HasSubstr("%FF.kvsch"))));
    EXPECT_EQ(state(), "configurePage on - on");
    EXPECT_EQ(locationBox()->text(), below("out/nameless"));
    EXPECT_THROW((void)dialog.createdExampleFile(), std::bad_optional_access);
}

TEST_F(ExampleBrowser, FindsTheExampleOfTheRowAmongSeveralBarrels)
{
    const auto first =
        writeBarrel(folder, "a.kvexs", {{.title = QStringLiteral("A0")}, {.title = QStringLiteral("A1")}});
    const auto second =
        writeBarrel(folder, "b.kvexs",
                    {{.title = QStringLiteral("B0"), .bytes = "b0"}, {.title = QStringLiteral("B1"), .bytes = "b1"}});
    dialog.addBarrels({toFilePath(first), toFilePath(second)});
    dialog.setTargetDirectory(toFilePath(folder / "out"));
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    search("1");
    configure(1);
    click("createButton");
    EXPECT_EQ(readFile(folder / "out/B1/content/design.kvsch"), "b1");
}

TEST_F(ExampleBrowser, AnswersAKeyWithinASecondForAPatternWithoutAnEnd)
{
    std::vector<SampleExample> examples;
    for (int i = 0; i < 30; ++i)
        examples.push_back({.title = QString{40 + i, QLatin1Char{'a'}} + QLatin1Char{'!'}});
    open(examples);
    const std::clock_t start = std::clock();
    search("(a+)+$");
    EXPECT_LT(std::clock() - start, 6 * CLOCKS_PER_SEC) << "six keys";
    EXPECT_EQ(shownTitles(), QString{});
    search("aaa");
    EXPECT_EQ(list()->model()->rowCount(), 30);
}

TEST(RunExampleBrowser, RaisesForABrokenRelationshipAndShowsNoDialog)
{
    TemporaryFolder folder;
    const auto broken = writeBarrel(folder, "b.kvexs", threeExamples, addLostExample());
    EXPECT_THROW((void)runExampleBrowser2({toFilePath(broken)}, toFilePath(folder / "out"), {}, nullptr),
                 bad_expected_access<ErrorCode2>);
}

TEST(RunExampleBrowser, GivesTheCodeForCancelledWhenTheWindowIsClosed)
{
    TemporaryFolder folder;
    ModalDriver driver;
    driver.when<ExampleBrowser2>([](ExampleBrowser2& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Dialog")) << "the title that was handed in is not shown";
        dialog.close();
    });
    const auto result = runExampleBrowser2({}, toFilePath(folder / "out"), QStringLiteral("A title"), nullptr);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(),
              (ErrorCode2{static_cast<int>(CoreError::cancelled), Kelvaris::System::core_error_category()}));
}

TEST(RunExampleBrowser, GivesTheCodeForCancelledAfterEscape)
{
    TemporaryFolder folder;
    ModalDriver driver;
    driver.when<ExampleBrowser2>([](ExampleBrowser2& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    const auto result = runExampleBrowser2({}, toFilePath(folder / "out"), {}, nullptr);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().value(), 1);
}
