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

TEST_F(PackageViewersTest, BothHaveNoTitleNoMenuAndTheHeaderOfAnyTree)
{
    const auto path = pathOf(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}));
    for (const auto& open : {std::function<void()>{[&] { openBundleViewer(path); }},
                             std::function<void()>{[&] { openPackageBrowser(path); }}}) {
        open();
        const std::unique_ptr<QTreeView> view{shownWindow<QTreeView>()};
        ASSERT_NE(view, nullptr);
        EXPECT_TRUE(view->windowTitle().isEmpty());
        EXPECT_TRUE(view->actions().isEmpty());
        EXPECT_EQ(view->contextMenuPolicy(), Qt::DefaultContextMenu);
        EXPECT_FALSE(view->isHeaderHidden());
        for (int column = 0; column + 1 < view->model()->columnCount(); ++column)
            EXPECT_EQ(view->columnWidth(column), view->header()->defaultSectionSize()) << column;
    }
}

TEST_F(PackageViewersTest, BrowserOnAFileThatCannotBeReadShowsAnEmptyWindowAndLogsNothing)
{
    openPackageBrowser(pathOf(folder.write("text.zip", "no package")));
    auto* view = shownWindow<QTreeView>();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->model()->rowCount(), 2);
    EXPECT_FALSE(view->model()->index(0, 0).data().isValid());
    view->expandAll();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Asterisk})
        QTest::keyClick(view, key);
    QTest::keyClicks(view, QStringLiteral("par"));
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(PackageViewersTest, BrowserDoesNotAskForAnEmptyPath)
{
    openPackageBrowser(FilePath2{});
    EXPECT_NE(shownWindow<QTreeView>(), nullptr);
}

TEST_F(PackageViewersTest, AsteriskOpensEverythingBelowTheCurrentRow)
{
    openBundleViewer(pathOf(writeExample(folder, "x.kvbdl.zip", {"sub/deep/b.kvsch"})));
    auto* view = shownWindow<QTreeView>();
    ASSERT_NE(view, nullptr);
    view->setCurrentIndex(rowNamed(*view->model(), QStringLiteral("content")));
    QTest::keyClick(view, Qt::Key_Asterisk);
    EXPECT_TRUE(view->isExpanded(rowNamed(*view->model(), QStringLiteral("deep"))));
    EXPECT_TRUE(view->isExpanded(view->currentIndex()));
}

TEST_F(PackageViewersTest, AsteriskStopsBeforeTheStackIsFull)
{
    constexpr int levels = 30'000;
    const QString name = QStringLiteral("content/") + QStringLiteral("a/").repeated(levels) + QStringLiteral("b.kvsch");
    auto bundle = IO::Bundle::ExampleBundle::create().value();
    bundle
        .addFile(pathOf(folder.write("b.kvsch", "bytes")),
                 IO::OpcPackaging::OpcPackagePartUri{name.toStdWString().c_str()},
                 IO::OpcPackaging::OpcPackageCompressionType::normal)
        .value();
    const FilePath2 path = pathOf(folder / "deep.zip");
    bundle.writeToFile(path).value();
    openBundleViewer(path);
    auto* view = shownWindow<QTreeView>();
    ASSERT_NE(view, nullptr);
    view->setCurrentIndex(rowNamed(*view->model(), QStringLiteral("content")));
    QTest::keyClick(view, Qt::Key_Asterisk);
    EXPECT_TRUE(view->isExpanded(view->currentIndex()));
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
