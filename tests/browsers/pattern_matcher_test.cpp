#include "browsers/pattern_matcher.h"

#include <QtCore/QString>

#include <gtest/gtest.h>

#include <atomic>
#include <ctime>
#include <thread>
#include <vector>

namespace {

bool isFound(const char* pattern, const QString& text)
{
    PatternMatcher matcher;
    matcher.setPattern(searchPattern(QString::fromUtf8(pattern)));
    return matcher.isFoundIn(text);
}

bool isFound(const char* pattern, const char* text)
{
    return isFound(pattern, QString::fromUtf8(text));
}

/// A text at which the engine gives up on "(a+)+$".
QString hopelessText()
{
    return QString{60, QLatin1Char{'a'}} + QLatin1Char{'b'};
}

double secondsForRows(const char* pattern, const QString& text, int rows)
{
    PatternMatcher matcher;
    matcher.setPattern(searchPattern(QString::fromUtf8(pattern)));
    // the processor's time: other programs must not make the test fail
    const std::clock_t start = std::clock();
    for (int row = 0; row < rows; ++row)
        EXPECT_FALSE(matcher.isFoundIn(text));
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

} // namespace

TEST(SearchPattern, IsTheDefaultPatternForTheEmptyText)
{
    EXPECT_EQ(searchPattern({}), QRegularExpression{});
}

TEST(SearchPattern, IsARegularExpressionThatIgnoresCase)
{
    const QRegularExpression pattern = searchPattern(QStringLiteral("a|b"));
    EXPECT_EQ(pattern.pattern(), QStringLiteral("a|b"));
    EXPECT_EQ(pattern.patternOptions(), QRegularExpression::CaseInsensitiveOption);
}

TEST(PatternMatcher, FindsTheEmptyPatternInEveryTextAlsoInAnEmptyOrNullOne)
{
    EXPECT_TRUE(isFound("", "text"));
    EXPECT_TRUE(isFound("", ""));
    EXPECT_TRUE(isFound("", QString{}));
    EXPECT_TRUE(PatternMatcher{}.isFoundIn({}));
}

TEST(PatternMatcher, FindsAPatternAnywhereInTheText)
{
    EXPECT_TRUE(isFound("buck", "A Buck converter"));
    EXPECT_TRUE(isFound("motor|buck", "A Buck converter"));
    EXPECT_TRUE(isFound(".", "x"));
    EXPECT_FALSE(isFound(".", ""));
    EXPECT_FALSE(isFound("boost", "A Buck converter"));
    EXPECT_TRUE(isFound("ä", "ÄRGER"));
}

TEST(PatternMatcher, FindsAPlainWordWhereTheEngineFindsIt)
{
    // every character of the plane that may be another case of a letter
    for (char16_t letter = 0x20; letter < 0x7f; ++letter) {
        const QString word{QChar{letter}};
        const QRegularExpression pattern = searchPattern(word);
        if (!pattern.isValid())
            continue;
        PatternMatcher matcher;
        matcher.setPattern(pattern);
        for (char16_t other = 1; other < 0xd800; ++other) {
            const QString text{QChar{other}};
            const bool mayBeEqual = other < 0x80 || text.toLower() != text || text.toUpper() != text;
            if (!mayBeEqual)
                continue;
            const bool isFound = pattern.match(text).hasMatch();
            const bool isFoundFolded = matcher.isWord() ? matcher.isWordIn(PatternMatcher::folded(text)) : isFound;
            if (matcher.isFoundIn(text) != isFound || isFoundFolded != isFound)
                ADD_FAILURE() << word.toStdString() << " and U+" << std::hex << static_cast<unsigned>(other);
        }
    }
    for (const char* word : {"#", "a b", "<b>", "A-b_c", "n/a", "50%"}) {
        EXPECT_TRUE(isFound(word, QStringLiteral("x ") + QString::fromUtf8(word).toUpper())) << word;
        EXPECT_FALSE(isFound(word, "nothing")) << word;
    }
}

TEST(PatternMatcher, FindsAnInvalidPatternNowhere)
{
    EXPECT_FALSE(isFound("(", "("));
    EXPECT_FALSE(isFound("(", ""));
    EXPECT_FALSE(isFound("*", "*"));
}

TEST(PatternMatcher, CountsATextAtWhichTheEngineGivesUpAsNoHit)
{
    EXPECT_FALSE(searchPattern(QStringLiteral("(a+)+$")).match(hopelessText()).isValid()) << "no such text any longer";
    EXPECT_FALSE(isFound("(a+)+$", hopelessText()));
}

TEST(PatternMatcher, StillFindsOtherTextsAfterTheEngineGaveUpOnce)
{
    PatternMatcher matcher;
    matcher.setPattern(searchPattern(QStringLiteral("(a+)+$")));
    EXPECT_FALSE(matcher.isFoundIn(hopelessText()));
    EXPECT_TRUE(matcher.isFoundIn(QStringLiteral("aaa")));
}

TEST(PatternMatcher, GivesAPatternUpForThePassOnceTheEngineGaveUpOften)
{
    PatternMatcher matcher;
    matcher.setPattern(searchPattern(QStringLiteral("(a+)+$")));
    for (int i = 0; i < PatternMatcher::maximumGivenUp; ++i)
        EXPECT_FALSE(matcher.isFoundIn(hopelessText()));
    EXPECT_FALSE(matcher.isFoundIn(QStringLiteral("aaa")));
}

TEST(PatternMatcher, TriesAGivenUpPatternAgainInTheNextPass)
{
    PatternMatcher matcher;
    matcher.setPattern(searchPattern(QStringLiteral("(a+)+$")));
    for (int i = 0; i < PatternMatcher::maximumGivenUp; ++i)
        EXPECT_FALSE(matcher.isFoundIn(hopelessText()));
    matcher.startPass();
    EXPECT_TRUE(matcher.isFoundIn(QStringLiteral("aaa")));
}

TEST(PatternMatcher, GoesOnWithThePassWhenTheSamePatternIsSetAgain)
{
    const QRegularExpression pattern = searchPattern(QStringLiteral("(a+)+$"));
    PatternMatcher matcher;
    for (int i = 0; i < PatternMatcher::maximumGivenUp; ++i) {
        matcher.setPattern(pattern);
        EXPECT_FALSE(matcher.isFoundIn(hopelessText()));
    }
    matcher.setPattern(pattern);
    EXPECT_FALSE(matcher.isFoundIn(QStringLiteral("aaa")));
    matcher.setPattern(searchPattern(QStringLiteral("a")));
    EXPECT_TRUE(matcher.isFoundIn(QStringLiteral("aaa")));
}

TEST(PatternMatcher, AnswersTenThousandRowsWithinTwoSecondsForAPatternThatDrivesTheEngineToItsLimit)
{
    EXPECT_LT(secondsForRows("(a+)+$", hopelessText(), 10'000), 2.0);
}

TEST(PatternMatcher, AnswersTenThousandRowsWithinTwoSecondsForAPatternThatIsSlowBelowTheLimit)
{
    // 22 letters take tens of milliseconds each time, and the engine comes to an end with them
    const QString text = QString{22, QLatin1Char{'a'}} + QLatin1Char{'b'};
    ASSERT_TRUE(searchPattern(QStringLiteral("(a+)+$")).match(text).isValid());
    EXPECT_LT(secondsForRows("(a+)+$", text, 10'000), 2.0);
}

TEST(PatternMatcher, AnswersTenThousandRowsWithinTwoSecondsForOtherHeavyPatterns)
{
    const QString text = QStringLiteral("current mode control, ").repeated(40) + QStringLiteral("z!");
    for (const char* pattern : {"(.*)*z$", "(\\w+\\s*)+z$", "((.|,)*)*z$", "(?=(.*))(?=(.*))\\1\\2z$", "(.+)+\\1z$",
                                "(a|b|[a-z ,]+)*z$", ".*.*.*.*z$"})
        EXPECT_LT(secondsForRows(pattern, text, 10'000), 2.0) << pattern;
}

TEST(PatternMatcher, FindsAnOrdinaryPatternHoweverMuchTheProcessorIsWantedByOthers)
{
    PatternMatcher matcher;
    matcher.setPattern(searchPattern(QStringLiteral("converter")));
    const QString text = QStringLiteral("a converter");
    std::atomic<bool> isOver{false};
    std::vector<std::thread> others;
    for (int i = 0; i < 16; ++i)
        others.emplace_back([&isOver] {
            while (!isOver) {
            }
        });
    int found = 0;
    for (int row = 0; row < 100'000; ++row)
        found += matcher.isFoundIn(text) ? 1 : 0;
    isOver = true;
    for (std::thread& other : others)
        other.join();
    EXPECT_EQ(found, 100'000);
}

TEST(PatternMatcherOnALongText, IsDoneWithNestedRepetitionsAtOnce)
{
    PatternMatcher matcher;
    matcher.setPattern(searchPattern(QStringLiteral("(a+(a)+.(nnn.na+)+$)+.(a+)+$")));
    const std::clock_t start = std::clock();
    (void)matcher.isFoundIn(QString{2'000, QLatin1Char{'a'}} + QLatin1Char{'!'});
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC);
}

TEST(PatternMatcherOnALongText, FindsWhatStandsBehindSeveralRepetitionsOnAnotherLine)
{
    const QString page =
        QStringLiteral("current mode control, ").repeated(115) + QStringLiteral("\na small motor drive");
    EXPECT_TRUE(isFound("(.*) (.*) drive", page));
    EXPECT_TRUE(isFound("(.*) (.*) (.*) drive", page));
}

TEST(PatternMatcherOnALongText, FindsWhatStandsAtItsEnd)
{
    PatternMatcher matcher;
    matcher.setPattern(searchPattern(QStringLiteral("motor.*dri(v|f)e$")));
    EXPECT_TRUE(matcher.isFoundIn(QStringLiteral("motor ").repeated(2'000) + QStringLiteral("drive")));
}
