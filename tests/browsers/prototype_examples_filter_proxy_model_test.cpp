#include "browsers/prototype_examples_filter_proxy_model.h"

#include "browsers/prototype_examples_model.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/model_dump.h"

#include <QtCore/QStringListModel>
#include <QtTest/QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <optional>

namespace {

class PrototypeProxy : public testing::Test
{
protected:
    void SetUp() override
    {
        writeExample(folder, "examples/a.kvbdl.zip",
                     {.title = QStringLiteral("Motor"),
                      .description = QStringLiteral("A drive"),
                      .keywords = {QStringLiteral("alpha"), QStringLiteral("beta")}});
        model.emplace(toFilePath(folder / "examples"), nullptr);
        proxy.setSourceModel(&*model);
        proxy.setFilterRole(Qt::EditRole);
    }

    bool finds(const char* text)
    {
        proxy.setFilterRegularExpression(searchPattern(QString::fromUtf8(text)));
        return proxy.rowCount() == 1;
    }

    TemporaryFolder folder;
    std::optional<PrototypeExamplesModel> model;
    PrototypeExamplesFilterProxyModel proxy;
};

} // namespace

TEST_F(PrototypeProxy, LeavesTheTitleOutOfTheSearch)
{
    EXPECT_FALSE(finds("motor"));
}

TEST_F(PrototypeProxy, FindsDescriptionAndKeywordsIgnoringCase)
{
    EXPECT_TRUE(finds("DRIVE"));
    EXPECT_TRUE(finds("alpha"));
    EXPECT_TRUE(finds("Beta"));
    EXPECT_FALSE(finds("gamma"));
}

TEST_F(PrototypeProxy, LetsAPatternLeadFromOneKeywordIntoTheNext)
{
    EXPECT_TRUE(finds("alpha; beta"));
    EXPECT_FALSE(finds("^beta")) << "the keywords are one text";
}

TEST_F(PrototypeProxy, FindsNothingForAnInvalidPattern)
{
    EXPECT_FALSE(finds("("));
}

TEST_F(PrototypeProxy, ShowsAllRowsForTheEmptyTextAlsoThoseWithoutADescription)
{
    writeExample(folder, "examples/b.kvbdl.zip", {.title = QStringLiteral("Bare")});
    PrototypeExamplesModel both{toFilePath(folder / "examples"), nullptr};
    proxy.setSourceModel(&both);
    EXPECT_EQ(proxy.rowCount(), 2);
    EXPECT_TRUE(finds("drive"));
    proxy.setFilterRegularExpression(QRegularExpression{});
    EXPECT_EQ(proxy.rowCount(), 2);
}

TEST_F(PrototypeProxy, KeepsTheRulesOfAnItemModel)
{
    QAbstractItemModelTester tester{&proxy, QAbstractItemModelTester::FailureReportingMode::Fatal};
    EXPECT_TRUE(finds("drive"));
    EXPECT_FALSE(finds("motor"));
    EXPECT_TRUE(finds(""));
}

TEST_F(PrototypeProxy, ShowsNoRowForWhichItsSourceHasNoIndex)
{
    QStringListModel oneColumn{{QStringLiteral("no description here")}};
    proxy.setSourceModel(&oneColumn);
    EXPECT_EQ(proxy.rowCount(), 0);
}
