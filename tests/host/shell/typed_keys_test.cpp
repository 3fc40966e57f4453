#include "host/shell/typed_keys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace HostShell;
using testing::ElementsAre;

namespace {

std::string describe(const KeyPress& press)
{
    std::string text = std::to_string(press.key);
    if (press.modifiers & Qt::ControlModifier)
        text += " ctrl";
    if (press.modifiers & Qt::ShiftModifier)
        text += " shift";
    if (press.modifiers & Qt::AltModifier)
        text += " alt";
    return press.text.isEmpty() ? text : text + " '" + press.text.toStdString() + "'";
}

std::vector<std::string> presses(const char* text)
{
    std::vector<std::string> all;
    const auto keys = parseKeys(QString::fromUtf8(text));
    EXPECT_TRUE(keys.hasValue()) << (keys ? "" : keys.error().text);
    for (const TypedKeys& step : keys ? *keys : std::vector<TypedKeys>{}) {
        for (const KeyPress& press : step.presses)
            all.push_back(describe(press));
    }
    return all;
}

std::string key(int code, const std::string& rest = {})
{
    return std::to_string(code) + rest;
}

std::string refusal(const char* text)
{
    const auto keys = parseKeys(QString::fromUtf8(text));
    return keys ? "accepted" : keys.error().text;
}

} // namespace

TEST(TypedKeys, ReadsNamesOfKeys)
{
    EXPECT_THAT(presses("Tab Down Return Esc F5"), ElementsAre(key(Qt::Key_Tab), key(Qt::Key_Down), key(Qt::Key_Return),
                                                               key(Qt::Key_Escape), key(Qt::Key_F5)));
}

TEST(TypedKeys, ReadsModifiers)
{
    EXPECT_THAT(presses("Ctrl+A Shift+Tab Alt+N Ctrl+Shift+S"),
                ElementsAre(key(Qt::Key_A, " ctrl"), key(Qt::Key_Tab, " shift"), key(Qt::Key_N, " alt"),
                            key(Qt::Key_S, " ctrl shift")));
}

TEST(TypedKeys, GivesTheTextThatAKeyTypes)
{
    EXPECT_THAT(presses("a Shift+A Space 7"), ElementsAre(key(Qt::Key_A, " 'a'"), key(Qt::Key_A, " shift 'A'"),
                                                          key(Qt::Key_Space, " ' '"), key(Qt::Key_7, " '7'")));
}

TEST(TypedKeys, TypesQuotedTextsCharacterByCharacter)
{
    EXPECT_THAT(presses("'aB c'"), ElementsAre(key(Qt::Key_A, " 'a'"), key(Qt::Key_B, " shift 'B'"),
                                               key(Qt::Key_Space, " ' '"), key(Qt::Key_C, " 'c'")));
}

TEST(TypedKeys, TypesCharactersThatHaveNoKey)
{
    EXPECT_THAT(presses("\"日😀\""), ElementsAre("0 '日'", "0 '😀'"));
}

TEST(TypedKeys, LetsOneSortOfQuotesHoldTheOther)
{
    EXPECT_THAT(presses("\"'\" '\"'"), ElementsAre(key(Qt::Key_Apostrophe, " '''"), key(Qt::Key_QuoteDbl, " '\"'")));
}

TEST(TypedKeys, KeepsAQuotedTextTogetherAsOneStep)
{
    const auto keys = parseKeys(QStringLiteral("  'two words'   Tab "));
    ASSERT_TRUE(keys);
    ASSERT_EQ(keys->size(), 2U);
    EXPECT_EQ(keys->at(0).name, QStringLiteral("two words"));
    EXPECT_EQ(keys->at(0).presses.size(), 9U);
    EXPECT_EQ(keys->at(1).name, QStringLiteral("Tab"));
}

TEST(TypedKeys, ReadsNothingFromNothing)
{
    EXPECT_TRUE(presses("").empty());
    EXPECT_TRUE(presses("   ").empty());
}

TEST(TypedKeys, RefusesAnUnknownName)
{
    EXPECT_EQ(refusal("Tab Retrun"), "there is no key \"Retrun\"; a text to type stands in quotes");
    EXPECT_EQ(refusal("Ctrl+"), "there is no key \"Ctrl+\"; a text to type stands in quotes");
    EXPECT_EQ(refusal("Ctrl"), "there is no key \"Ctrl\"; a text to type stands in quotes");
}

TEST(TypedKeys, RefusesAQuoteThatIsNotClosed)
{
    EXPECT_EQ(refusal("Tab 'abc"), "a quote is not closed: 'abc");
}
