#include "editors/package_viewers.h"

#include "tests/editors/window_fixture.h"
#include "tests/support/model_dump.h"

#include <QtTest/QTest>
#include <QtWidgets/QHeaderView>

using namespace Kelvaris::System;

namespace {

using PackageViewersTest = WindowFixture;

} // namespace

TEST_F(PackageViewersTest, ViewerShowsEveryPartByItsName)
{
    openBundleViewer(pathOf(writeExample(folder, "x.kvbdl.zip", {"a.kvsch", "sub/b.kvsch"})));
    auto* view = shownWindow<QTreeView>();
    ASSERT_NE(view, nullptr);
    const QModelIndex content = rowNamed(*view->model(), QStringLiteral("content"));
    EXPECT_EQ(dump(*view->model(), content), "a.kvsch\nsub\n  b.kvsch\n");
    EXPECT_EQ(view->model()->columnCount(), 4);
    EXPECT_FALSE(view->isHeaderHidden());
    EXPECT_TRUE(view->windowTitle().isEmpty());
}

TEST_F(PackageViewersTest, ViewerOnAFileThatCannotBeReadFailsTheCallAndShowsNoWindow)
{
    EXPECT_THROW(openBundleViewer(pathOf(folder.write("text.zip", "no package"))), bad_expected_access<ErrorCode2>);
    EXPECT_THROW(openBundleViewer(pathOf(folder / "missing.zip")), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(shownWindow<QTreeView>(), nullptr);
}

TEST_F(PackageViewersTest, BrowserShowsPartsAndRelationships)
{
    openPackageBrowser(pathOf(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"})));
    auto* view = shownWindow<QTreeView>();
    ASSERT_NE(view, nullptr);
    const QModelIndex parts = rowNamed(*view->model(), QStringLiteral("Parts"));
    EXPECT_NE(dump(*view->model(), parts).find("content\n  a.kvsch\n"), std::string::npos);
    EXPECT_EQ(view->model()->index(1, 0).data().toString(), QStringLiteral("Relationships"));
}

TEST_F(PackageViewersTest, BrowserOnAFileThatCannotBeReadShowsAnEmptyWindowAndLogsNothing)
{
    openPackageBrowser(pathOf(folder.write("text.zip", "no package")));
    auto* view = shownWindow<QTreeView>();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->model()->rowCount(), 2);
    EXPECT_FALSE(view->model()->index(0, 0).data().isValid());
    view->expandAll();
    QTest::keyClick(view, Qt::Key_Down);
    QTest::keyClick(view, Qt::Key_Right);
    QTest::keyClicks(view, QStringLiteral("par"));
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(PackageViewersTest, BrowserDoesNotAskForAnEmptyPath)
{
    openPackageBrowser(FilePath2{});
    EXPECT_NE(shownWindow<QTreeView>(), nullptr);
}

TEST_F(PackageViewersTest, BrowserAsksWithoutAPathAndShowsWhatWasChosen)
{
    const auto path = writeExample(folder, "x.kvbdl.zip", {"a.kvsch"});
    ModalDriver driver;
    driver.when<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Select OPC package"));
        chooseFile(dialog, textOf(path));
    });
    openPackageBrowser(std::nullopt);
    auto* view = shownWindow<QTreeView>();
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(rowNamed(*view->model(), QStringLiteral("a.kvsch")).isValid());
}

TEST_F(PackageViewersTest, CancellingTheQuestionShowsNoWindow)
{
    ModalDriver driver;
    cancelDialog(driver);
    openPackageBrowser(std::nullopt);
    EXPECT_EQ(shownWindow<QTreeView>(), nullptr);
}

TEST_F(PackageViewersTest, ClosingAViewEndsItsModelToo)
{
    openBundleViewer(pathOf(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"})));
    auto* view = shownWindow<QTreeView>();
    const QPointer<QAbstractItemModel> model{view->model()};
    view->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(model.isNull());
}
