#include "browsers/title_delegate.h"

#include <QtCore/QStringListModel>
#include <QtWidgets/QListView>
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

} // namespace

TEST_F(Titles, MeasureAsMuchAsUsualTheFirstTimeAndLater)
{
    for (int time = 0; time < 2; ++time) {
        for (int row = 0; row < model.rowCount(); ++row)
            EXPECT_EQ(measure(delegate, row), measure(usual, row));
    }
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
