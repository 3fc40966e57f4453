#include "models/opc_package_model.h"
#include "tests/models/package_fixtures.h"
#include "tests/models/raw_package.h"
#include "tests/support/model_dump.h"

#include <QtGui/QAccessible>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

void typeAround(QTreeView& view)
{
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Plus, Qt::Key_Left,
                              Qt::Key_End, Qt::Key_Right, Qt::Key_PageUp, Qt::Key_A, Qt::Key_Space})
        QTest::keyClick(&view, key);
    QApplication::processEvents();
    view.grab();
}

// What a screen reader does: it asks for every child and its text.
int readAloud(QTreeView& view)
{
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&view);
    int rows = 0;
    for (int child = 0; child < accessible->childCount(); ++child) {
        if (QAccessibleInterface* const row = accessible->child(child)) {
            (void)row->text(QAccessible::Name);
            (void)row->state();
            ++rows;
        }
    }
    return rows;
}

} // namespace

TEST(OpcPackageView, WithoutAPackageSurvivesEverythingThatAUserCanDo)
{
    OpcPackageModel model{nullptr};
    QTreeView view;
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setModel(&model);
    view.resize(300, 200);
    view.show();
    QApplication::processEvents();
    for (const int row : {0, 1}) {
        const QModelIndex index = model.index(row, 0);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
        EXPECT_EQ(view.currentIndex(), index);
        typeAround(view);
    }
    view.keyboardSearch(QStringLiteral("x"));
    // this key opens by the number of rows, and there are rows without end: a view must not take it
    view.setItemsExpandable(false);
    QTest::keyClick(&view, Qt::Key_Asterisk);
    view.selectAll();
    EXPECT_EQ(view.selectionModel()->selectedRows().size(), 2);
    EXPECT_GT(readAloud(view), 0);
}

TEST(OpcPackageView, WithoutAPackageSurvivesBeingExpanded)
{
    OpcPackageModel model{nullptr};
    QTreeView view;
    view.setModel(&model);
    view.show();
    view.expand(model.index(0, 0));
    view.expand(model.index(1, 0));
    view.expandAll();
    view.expandToDepth(3);
    QApplication::processEvents();
    view.grab();
    view.collapseAll();
    EXPECT_EQ(view.indexBelow(model.index(0, 0)), model.index(1, 0));
    EXPECT_FALSE(view.indexBelow(model.index(1, 0)).isValid());
}

TEST(OpcPackageView, WithoutAPackageASearchThroughAllRowsEnds)
{
    const OpcPackageModel model{nullptr};
    const auto found = model.match(model.index(0, 0), Qt::DisplayRole, QStringLiteral("x"), -1,
                                   Qt::MatchContains | Qt::MatchRecursive | Qt::MatchWrap);
    EXPECT_TRUE(found.isEmpty());
}

TEST(OpcPackageView, ShowsAPackageThatIsSetAfterwards)
{
    OpcPackageModel model{nullptr};
    QTreeView view;
    view.setModel(&model);
    view.show();
    view.expandAll();
    view.setCurrentIndex(model.index(1, 0));
    const TemporaryFolder folder;
    OpcPackage package = open_package(RawPackage{}.part("/a/b.txt").write(folder)).value();
    model.setPackage(&package);
    view.expandAll();
    typeAround(view);
    EXPECT_TRUE(view.isExpanded(rowNamed(model, QStringLiteral("a"))));
    model.setPackage(nullptr);
    typeAround(view);
}

namespace {

// A window over the model with a current row, a selection, open branches and an open editor.
class OpcPackageViewTest : public testing::Test
{
protected:
    OpcPackageViewTest()
    {
        model.setPackage(&package);
        view.setModel(&model);
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.resize(400, 400);
        view.show();
        view.expandAll();
        view.setCurrentIndex(row("two"));
        view.openPersistentEditor(row("one"));
        QApplication::processEvents();
    }

    QModelIndex row(const char* name) const { return rowNamed(model, QLatin1String{name}); }

    void add(const FilePath2& file, const char* parent)
    {
        EXPECT_TRUE(model.addFile(file, row(parent), MIMEType{FileType::text}, model.partsIndex(),
                                  u8"http://x.example/t", OpcPackageCompressionType::normal));
    }

    FilePath2 file(const char* name) const { return toPath(folder.write(name, "bytes")); }

    // The editor of a row is where the row is.
    void expectAllInPlace()
    {
        QApplication::processEvents();
        view.grab();
        EXPECT_EQ(view.currentIndex(), row("two"));
        EXPECT_EQ(view.selectionModel()->selectedIndexes(), QModelIndexList{row("two")});
        for (const char* const name : {"Parts", "one", "deep", "two"})
            EXPECT_TRUE(view.isExpanded(row(name))) << name;
        ASSERT_TRUE(view.isPersistentEditorOpen(row("one")));
        const auto* const editor = view.findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        EXPECT_EQ(editor->geometry().top(), view.visualRect(row("one")).top());
        typeAround(view);
    }

    TemporaryFolder folder;
    OpcPackage package =
        open_package(RawPackage{}.part("/a.txt").part("/one/deep/b.txt").part("/two/c.txt").write(folder)).value();
    OpcPackageModel model{nullptr};
    QTreeView view;
};

} // namespace

TEST_F(OpcPackageViewTest, StaysInPlaceWhileFilesAreAddedAheadOfTheAnnouncedRow)
{
    add(file("new 1.txt"), "Parts");
    add(file("new 2.txt"), "Parts");
    add(file("new 3.txt"), "one");
    expectAllInPlace();
    EXPECT_EQ(dump(model), "Parts\n  a.txt\n  new 1.txt\n  new 2.txt\n  one\n    new 3.txt\n    deep\n      b.txt\n"
                           "  two\n    c.txt\nRelationships\n");
}

TEST_F(OpcPackageViewTest, StaysInPlaceWhenAFileIsAnnouncedAndRefused)
{
    add(file("a.txt"), "Parts");
    add(toPath(folder / "missing.txt"), "one");
    add(file("b.txt"), "deep");
    expectAllInPlace();
}

TEST_F(OpcPackageViewTest, StaysInPlaceWhileDirectoriesAreAdded)
{
    EXPECT_TRUE(model.addDirectory(QStringLiteral("new"), row("Parts")));
    EXPECT_TRUE(model.addDirectory(QStringLiteral("new"), row("deep")));
    EXPECT_FALSE(model.addDirectory(QStringLiteral("NEW"), row("Parts")));
    expectAllInPlace();
}

TEST_F(OpcPackageViewTest, ASelectionOverSeveralRowsStaysOnItsRows)
{
    view.selectionModel()->select(row("one"), QItemSelectionModel::Select);
    view.selectionModel()->select(row("c.txt"), QItemSelectionModel::Select);
    add(file("new.txt"), "Parts");
    QApplication::processEvents();
    for (const char* const name : {"one", "two", "c.txt"})
        EXPECT_TRUE(view.selectionModel()->isSelected(row(name))) << name;
    EXPECT_FALSE(view.selectionModel()->isSelected(row("new.txt")));
    EXPECT_EQ(view.selectionModel()->selectedIndexes().size(), 3);
}

TEST_F(OpcPackageViewTest, ThePackageMayGoOnceTheModelWasTold)
{
    model.setPackage(nullptr);
    view.grab();
    {
        const OpcPackage gone = std::move(package);
    }
    typeAround(view);
    EXPECT_EQ(dump(model), "Parts\nRelationships\n");
}
