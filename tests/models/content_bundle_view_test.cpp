#include "models/content_bundle_content_model.h"
#include "tests/models/package_fixtures.h"
#include "tests/support/model_dump.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>

#include <gtest/gtest.h>

using namespace Kelvaris::System;

namespace {

// A window over the model with a current row, a selection, open branches and an open editor.
class ContentBundleViewTest : public testing::Test
{
protected:
    ContentBundleViewTest()
    {
        model.setBundle(contentBundle({L"/content/a.txt", L"/content/sub/deep/b.txt", L"/content/two/c.txt"}));
        view.setModel(&model);
        view.resize(400, 300);
        view.show();
        view.expandAll();
        view.setCurrentIndex(row("deep"));
        view.openPersistentEditor(row("two"));
        QApplication::processEvents();
    }

    QModelIndex row(const char* name) const { return rowNamed(model, QString::fromUtf8(name)); }

    FilePath2 file(const char* name) const { return toPath(folder.write(name, "bytes")); }

    void expectAllInPlace()
    {
        view.grab();
        QApplication::processEvents();
        EXPECT_EQ(view.currentIndex().data().toString(), QStringLiteral("deep"));
        EXPECT_EQ(view.selectionModel()->selectedIndexes(), QModelIndexList{row("deep")});
        for (const char* const name : {"content", "sub", "deep", "two"})
            EXPECT_TRUE(view.isExpanded(row(name))) << name;
        EXPECT_TRUE(view.isPersistentEditorOpen(row("two")));
        EXPECT_EQ(view.findChildren<QLineEdit*>().size(), 1);
        for (const Qt::Key key : {Qt::Key_End, Qt::Key_Up, Qt::Key_Home, Qt::Key_Down, Qt::Key_Left, Qt::Key_Asterisk})
            QTest::keyClick(&view, key);
        // the keys above count as the beginning of a search
        view.keyboardSearch({});
        view.keyboardSearch(QStringLiteral("su"));
        EXPECT_EQ(view.currentIndex().data().toString(), QStringLiteral("sub"));
    }

    TemporaryFolder folder;
    IO::Bundle::ContentBundleContentModel model;
    QTreeView view;
};

} // namespace

TEST_F(ContentBundleViewTest, StaysInPlaceWhileFilesAndDirectoriesAreAdded)
{
    ASSERT_TRUE(model.addFile(file("new.txt"), row("content")));
    ASSERT_TRUE(model.addFile(file("top.txt"), {}));
    ASSERT_TRUE(model.addFile(file("deep.txt"), row("deep")));
    model.addDirectory(QStringLiteral("new"), row("sub"));
    expectAllInPlace();
}

TEST_F(ContentBundleViewTest, StaysInPlaceWhenADirectoryIsAnnouncedThatIsThere)
{
    for (const char* const parent : {"content", "content", "sub"})
        model.addDirectory(QStringLiteral("deep"), row(parent));
    model.addDirectory(QStringLiteral("content"), {});
    expectAllInPlace();
    EXPECT_EQ(dump(model), "content\n  a.txt\n  sub\n    deep\n      b.txt\n  two\n    c.txt\n  deep\n");
}

TEST_F(ContentBundleViewTest, StaysInPlaceWhenTheBundleRefusesAFile)
{
    EXPECT_FALSE(model.addFile(file("a.txt"), row("content")));
    EXPECT_FALSE(model.addFile(toPath(folder / "missing.txt"), row("sub")));
    expectAllInPlace();
}

TEST_F(ContentBundleViewTest, StaysInPlaceWhenAnInsertionNeverEnds)
{
    EXPECT_FALSE(model.addFile(FilePath2{}, row("content")));
    EXPECT_FALSE(model.addFile(FilePath2{}, row("deep")));
    ASSERT_TRUE(model.addFile(file("new.txt"), row("content")));
    expectAllInPlace();
}

TEST_F(ContentBundleViewTest, ShowsAnotherBundleAfterAll)
{
    EXPECT_FALSE(model.addFile(FilePath2{}, row("content")));
    model.addDirectory(QStringLiteral("sub"), row("content"));
    model.setBundle(contentBundle({L"/other/x.txt"}));
    view.expandAll();
    view.grab();
    EXPECT_FALSE(view.currentIndex().isValid());
    EXPECT_TRUE(view.isExpanded(row("other")));
    model.setBundle(nullptr);
    view.grab();
}
