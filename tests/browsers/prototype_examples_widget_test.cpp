#include "browsers/prototype_examples_widget.h"

#include "browsers/prototype_examples_filter_proxy_model.h"
#include "browsers/prototype_examples_model.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/model_dump.h"

#include <QtTest/QTest>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>

#include <gtest/gtest.h>

namespace {

class PrototypeWidget : public testing::Test
{
protected:
    void open()
    {
        std::filesystem::create_directories(folder / "examples");
        widget.proxyModel().setSourceModel(new PrototypeExamplesModel{toFilePath(folder / "examples"), &widget});
        widget.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
    }

    QTreeView* view() const { return widget.findChild<QTreeView*>(); }
    QLineEdit* searchBox() const { return widget.findChild<QLineEdit*>(); }

    TemporaryFolder folder;
    PrototypeExamplesWidget widget;
};

} // namespace

TEST_F(PrototypeWidget, ShowsAnEmptyTableWithItsThreeHeadersForADirectoryWithoutBundles)
{
    open();
    EXPECT_EQ(view()->model()->rowCount(), 0);
    ASSERT_EQ(view()->header()->count(), 3);
    EXPECT_TRUE(view()->header()->isVisible());
    EXPECT_EQ(view()->model()->headerData(2, Qt::Horizontal).toString(), QStringLiteral("Keywords"));
}

TEST_F(PrototypeWidget, HasTheTableOverTheSearchBoxWithDefaultSettings)
{
    auto* const layout = dynamic_cast<QVBoxLayout*>(widget.layout());
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(layout->itemAt(0)->widget(), view());
    EXPECT_EQ(layout->itemAt(1)->widget(), searchBox());
    EXPECT_EQ(searchBox()->placeholderText(), QStringLiteral("Search"));
    EXPECT_FALSE(view()->isSortingEnabled());
    EXPECT_EQ(widget.windowTitle(), QString{});
    EXPECT_EQ(widget.proxyModel().filterRole(), Qt::EditRole);
    EXPECT_EQ(widget.proxyModel().parent(), view());
    EXPECT_NE(view()->accessibleName(), QString{});
    EXPECT_NE(searchBox()->accessibleName(), QString{});
}

TEST_F(PrototypeWidget, NarrowsTheTableByDescriptionAndKeywordsButNotByTitle)
{
    writeExample(folder, "examples/a.kvbdl.zip",
                 {.title = QStringLiteral("Motor"),
                  .description = QStringLiteral("Drive"),
                  .keywords = {QStringLiteral("power")}});
    open();
    QTest::keyClicks(searchBox(), QStringLiteral("motor"));
    EXPECT_EQ(view()->model()->rowCount(), 0);
    searchBox()->clear();
    EXPECT_EQ(view()->model()->rowCount(), 1);
    QTest::keyClicks(searchBox(), QStringLiteral("POW|x"));
    EXPECT_EQ(dump(*view()->model(), {}, {.columns = {0, 1, 2}}), "Motor | Drive | power\n");
}

TEST_F(PrototypeWidget, ReachesTableAndSearchBoxByTab)
{
    open();
    view()->setFocus();
    QTest::keyClick(widget.windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(widget.focusWidget(), searchBox());
}
