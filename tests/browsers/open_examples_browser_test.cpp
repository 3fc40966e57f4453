#include "browsers/open_examples_browser.h"

#include "browsers/examples_browser.h"
#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/error_code2.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/log_capture.h"
#include "tests/support/modal_driver.h"
#include "tests/support/model_dump.h"

#include <QtCore/QPointer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QTreeView>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::vector<ExamplesBrowser*> openBrowsers()
{
    std::vector<ExamplesBrowser*> found;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* const browser = dynamic_cast<ExamplesBrowser*>(widget))
            found.push_back(browser);
    }
    return found;
}

std::string titlesIn(const ExamplesBrowser& browser)
{
    return dump(*browser.findChild<QTreeView*>()->model());
}

class OpenExamplesBrowser : public testing::Test
{
protected:
    void TearDown() override
    {
        for (ExamplesBrowser* browser : openBrowsers())
            delete browser;
    }

    std::filesystem::path barrel() { return writeBarrel(folder, "b.kvexs", {{QStringLiteral("Buck")}}); }

    TemporaryFolder folder;
    LogCapture log;
};

} // namespace

TEST_F(OpenExamplesBrowser, ShowsTheExamplesOfTheBarrel)
{
    openExamplesBrowser(toFilePath(barrel()));
    ASSERT_EQ(openBrowsers().size(), 1U);
    EXPECT_TRUE(openBrowsers()[0]->isVisible());
    EXPECT_EQ(titlesIn(*openBrowsers()[0]), "Buck\n");
}

TEST_F(OpenExamplesBrowser, DeletesTheWindowWhenItIsClosed)
{
    openExamplesBrowser(toFilePath(barrel()));
    QPointer<QWidget> browser = openBrowsers().at(0);
    browser->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(browser.isNull());
}

TEST_F(OpenExamplesBrowser, OpensAWindowOfItsOwnForEachCall)
{
    openExamplesBrowser(toFilePath(barrel()));
    openExamplesBrowser(toFilePath(barrel()));
    EXPECT_EQ(openBrowsers().size(), 2U);
}

TEST_F(OpenExamplesBrowser, ShowsAnEmptyWindowAndLogsOneLineForABarrelThatDoesNotOpen)
{
    openExamplesBrowser(toFilePath(folder / "missing.kvexs"));
    ASSERT_EQ(openBrowsers().size(), 1U);
    EXPECT_TRUE(openBrowsers()[0]->isVisible());
    EXPECT_EQ(titlesIn(*openBrowsers()[0]), "");
    EXPECT_THAT(log.lines(), ElementsAre(AllOf(HasSubstr("error [ui] "), HasSubstr("missing.kvexs"))));
}

TEST_F(OpenExamplesBrowser, RaisesForAnExampleThatCannotBeReadAndShowsNoWindow)
{
    const auto broken = writeBarrel(folder, "b.kvexs", {{QStringLiteral("Buck")}}, addUnreadableExample(folder));
    EXPECT_THROW(openExamplesBrowser(toFilePath(broken)),
                 Kelvaris::System::bad_expected_access<Kelvaris::System::ErrorCode2>);
    EXPECT_TRUE(openBrowsers().empty());
}

TEST_F(OpenExamplesBrowser, AsksForTheBarrelWithoutAPath)
{
    const QString path = QString::fromStdString(barrel().string());
    ModalDriver driver;
    driver.when<QFileDialog>([&](QFileDialog& files) {
        EXPECT_EQ(files.windowTitle(), QStringLiteral("Select examples bundle"));
        EXPECT_EQ(files.nameFilters(), QStringList{QStringLiteral("Barrel of Examples (*.kvexs *.kvexs.zip)")});
        EXPECT_EQ(files.parentWidget(), nullptr);
        chooseFile(files, path);
    });
    openExamplesBrowser({});
    ASSERT_EQ(openBrowsers().size(), 1U);
    EXPECT_EQ(titlesIn(*openBrowsers()[0]), "Buck\n");
}

TEST_F(OpenExamplesBrowser, OpensNothingAndSaysNothingWhenTheQuestionIsCancelled)
{
    ModalDriver driver;
    driver.when<QFileDialog>([](QFileDialog& files) { QTest::keyClick(&files, Qt::Key_Escape); });
    openExamplesBrowser({});
    EXPECT_TRUE(openBrowsers().empty());
    EXPECT_THAT(log.lines(), ElementsAre());
}
