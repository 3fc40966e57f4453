#include "models/tree_items.h"

#include <gtest/gtest.h>

using namespace TreeItems;

namespace {

// QString::compare is the measure: names that it takes for one must be found under one another.
void expectOneName(const char16_t* left, const char16_t* right)
{
    const NameInAnyCase one{QString::fromUtf16(left)};
    const NameInAnyCase other{QString::fromUtf16(right)};
    EXPECT_EQ(one.text.compare(other.text, Qt::CaseInsensitive), 0) << qPrintable(one.text + other.text);
    EXPECT_FALSE(one < other || other < one) << qPrintable(one.text + other.text);
}

void expectTwoNames(const QString& left, const QString& right)
{
    EXPECT_TRUE(NameInAnyCase{left} < NameInAnyCase{right} || NameInAnyCase{right} < NameInAnyCase{left});
}

} // namespace

TEST(NameInAnyCase, NamesThatDifferInCaseOnlyAreOne)
{
    expectOneName(u"content", u"CONTENT");
    expectOneName(u"übung", u"ÜBUNG");
    expectOneName(u"σ", u"ς");
    expectOneName(u"\U00010428", u"\U00010400");
    expectOneName(u"", u"");
}

TEST(NameInAnyCase, ALetterIsNeverTakenForTwo)
{
    expectTwoNames(QStringLiteral("straße"), QStringLiteral("STRASSE"));
}

TEST(NameInAnyCase, OtherNamesDiffer)
{
    expectTwoNames(QStringLiteral("a"), QStringLiteral("b"));
    expectTwoNames(QStringLiteral("a"), QStringLiteral("a "));
}

TEST(TreeItems, PositionOfFindsAnItemByItsPointerOnly)
{
    const std::vector<std::shared_ptr<QString>> items{std::make_shared<QString>(QStringLiteral("a")),
                                                      std::make_shared<QString>(QStringLiteral("a"))};
    EXPECT_EQ(positionOf(items, items[1].get()), 1);
    const QString stranger = QStringLiteral("a");
    EXPECT_EQ(positionOf(items, &stranger), -1);
}
