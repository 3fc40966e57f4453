#include "browsers/title_delegate.h"

#include <QtCore/QStringListModel>
#include <QtWidgets/QListView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyleOptionViewItem>

#include <gtest/gtest.h>

namespace {

class Titles : public testing::Test
{
protected:
    QSize measure(const QStyledItemDelegate& with, int row, int pointSize = 10) const
    {
        QStyleOptionViewItem option;
        option.initFrom(&view);
        option.font.setPointSize(pointSize);
        option.fontMetrics = QFontMetrics{option.font};
        return with.sizeHint(option, model.index(row, 0));
    }

    QListView view;
    QStringListModel model{{QStringLiteral("short"), QStringLiteral("a title that is longer"), QString{}}};
    TitleDelegate delegate;
    QStyledItemDelegate usual;
};

/// Two lists of the same titles, one of them with the default delegate.
class ListOfTitles : public testing::Test
{
protected:
    void SetUp() override
    {
        for (QListView* list : {&m_list, &m_usualList}) {
            list->setModel(&model);
            list->resize(200, 300);
            list->show();
        }
        m_list.setItemDelegate(new TitleDelegate{&m_list});
    }

    void expectSameLayout(const char* when)
    {
        for (QListView* list : {&m_list, &m_usualList})
            list->doItemsLayout();
        EXPECT_EQ(m_list.horizontalScrollBar()->maximum(), m_usualList.horizontalScrollBar()->maximum()) << when;
        EXPECT_EQ(m_list.verticalScrollBar()->maximum(), m_usualList.verticalScrollBar()->maximum()) << when;
        for (int row = 0; row < model.rowCount(); ++row)
            EXPECT_EQ(m_list.visualRect(model.index(row, 0)), m_usualList.visualRect(model.index(row, 0)))
                << when << ", row " << row;
    }

    QStringListModel model;

private:
    QListView m_list;
    QListView m_usualList;
};

/// Titles of very different lengths, some beyond ASCII, some of several lines, some empty.
QStringList manyTitles()
{
    QStringList titles;
    for (int i = 0; i < 400; ++i) {
        QString title = QStringLiteral("AVAToWa %1 ").arg(i * 7919 % 1000).repeated(i * 31 % 17);
        if (i % 40 == 3)
            title += QStringLiteral("\u03a9\u4e2d\u0627\u0628");
        if (i % 100 == 5)
            title += QStringLiteral("\nsecond line");
        titles += title;
    }
    return titles;
}

} // namespace

TEST_F(Titles, AreAsHighAsUsualAndNoWiderThanTheWidestThatWasMeasured)
{
    for (int time = 0; time < 2; ++time) {
        int widest = 0;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QSize size = measure(delegate, row);
            const QSize usualSize = measure(usual, row);
            widest = std::max(widest, usualSize.width());
            EXPECT_EQ(size.height(), usualSize.height());
            EXPECT_GE(size.width(), usualSize.width());
            EXPECT_LE(size.width(), widest);
        }
    }
}

TEST_F(Titles, AreNotMeasuredWhereAWiderOneStandsAbove)
{
    model.setStringList({QStringLiteral("the widest of them"), QStringLiteral("is"), QStringLiteral("\u03b9\u03c2")});
    (void)measure(delegate, 0);
    EXPECT_GT(measure(delegate, 1).width(), measure(usual, 1).width());
    EXPECT_EQ(measure(delegate, 2), measure(usual, 2)); // not of ASCII: nobody knows how its letters join
}

TEST_F(Titles, AreMeasuredAnewWhenTheTextChanges)
{
    (void)measure(delegate, 0);
    model.setData(model.index(0, 0), QStringLiteral("not so short any longer"));
    EXPECT_EQ(measure(delegate, 0), measure(usual, 0));
}

TEST_F(Titles, AreMeasuredAnewInAnotherFont)
{
    (void)measure(delegate, 1, 10);
    EXPECT_EQ(measure(delegate, 1, 20), measure(usual, 1, 20));
    EXPECT_EQ(measure(delegate, 1, 10), measure(usual, 1, 10));
}

TEST_F(ListOfTitles, IsLaidOutAsUsual)
{
    model.setStringList(manyTitles());
    expectSameLayout("all titles");
}

TEST_F(ListOfTitles, IsLaidOutAsUsualWithoutTheWidestTitles)
{
    QStringList titles = manyTitles();
    model.setStringList(titles);
    expectSameLayout("all titles");
    std::stable_sort(titles.begin(), titles.end(),
                     [](const QString& one, const QString& other) { return one.size() < other.size(); });
    for (const int left : {300, 100, 30, 1}) {
        model.setStringList(titles.mid(0, left));
        expectSameLayout("the shortest titles");
    }
    model.setStringList({});
    expectSameLayout("no title");
}

TEST_F(ListOfTitles, IsLaidOutAsUsualWhicheverTitleIsTheFirst)
{
    for (const char* first : {"", "\xce\xa9", "two\nlines", "WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW", "i"}) {
        model.setStringList(QStringList{QString::fromUtf8(first)} + manyTitles());
        expectSameLayout(first);
    }
}
