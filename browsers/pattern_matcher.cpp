#include "browsers/pattern_matcher.h"

#include <algorithm>
#include <ctime>

namespace {

using std::chrono::nanoseconds;

constexpr std::chrono::milliseconds readingInterval{20};

/// What this thread has had of the processor; where the platform does not tell, the time by the clock.
nanoseconds processorTime()
{
#ifdef CLOCK_THREAD_CPUTIME_ID
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds{time.tv_sec} + nanoseconds{time.tv_nsec};
#else
    return std::chrono::steady_clock::now().time_since_epoch();
#endif
}

/// Whether every character stands for itself, in either case. Beyond ASCII the engine and QString do not always agree
/// on what the other case of a letter is.
bool isPlainWord(const QRegularExpression& pattern)
{
    const QString text = pattern.pattern();
    return pattern.patternOptions() == QRegularExpression::CaseInsensitiveOption &&
           std::all_of(text.begin(), text.end(), [](QChar character) {
               const char16_t code = character.unicode();
               return code >= 0x20 && code < 0x7f && !QStringLiteral("\\^$.|?*+()[]{}").contains(character);
           });
}

} // namespace

QRegularExpression searchPattern(const QString& text)
{
    if (text.isEmpty())
        return {};
    return QRegularExpression{text, QRegularExpression::CaseInsensitiveOption};
}

void PatternMatcher::setPattern(const QRegularExpression& pattern)
{
    if (pattern == m_pattern)
        return;
    m_pattern = pattern;
    // Left to itself the engine takes ten million steps until it gives up, and seconds where the text is long.
    m_boundedPattern =
        QRegularExpression{QStringLiteral("(*LIMIT_MATCH=1000000)") + pattern.pattern(), pattern.patternOptions()};
    m_isEmpty = pattern.pattern().isEmpty();
    m_isWord = isPlainWord(pattern);
    m_isValid = m_isWord || pattern.isValid();
    if (m_isWord) {
        m_word = QStringMatcher{pattern.pattern(), Qt::CaseInsensitive};
        m_foldedWord = QStringMatcher{folded(pattern.pattern()), Qt::CaseSensitive};
    }
    startPass();
}

QString PatternMatcher::folded(const QString& text)
{
    QString folded = text;
    std::transform(text.begin(), text.end(), folded.begin(), [](QChar character) { return character.toCaseFolded(); });
    return folded;
}

void PatternMatcher::startPass()
{
    m_givenUp = 0;
    m_time = {};
    m_byTheClock = {};
    m_processorTime = processorTime();
}

bool PatternMatcher::isFoundIn(const QString& text)
{
    if (m_isEmpty)
        return true;
    if (m_isWord)
        return m_word.indexIn(text) >= 0;
    // asked here because QString::contains writes a warning for each text
    if (!m_isValid || isGivenUp())
        return false;
    return match(text);
}

bool PatternMatcher::match(const QString& text)
{
    const auto start = std::chrono::steady_clock::now();
    const QRegularExpressionMatch match = m_boundedPattern.match(text);
    addTime(std::chrono::steady_clock::now() - start);
    if (!match.isValid())
        ++m_givenUp;
    return match.hasMatch();
}

void PatternMatcher::addTime(nanoseconds byTheClock)
{
    // The clock is cheap to read and the processor's time is not, so that the second only confirms the first. The
    // lesser of the two counts: the one grows while others have the processor, the other while this thread does other
    // things.
    m_byTheClock += byTheClock;
    if (m_byTheClock < readingInterval)
        return;
    const nanoseconds now = processorTime();
    m_time += std::min(m_byTheClock, now - m_processorTime);
    m_byTheClock = {};
    m_processorTime = now;
}

bool PatternMatcher::isGivenUp() const
{
    return m_givenUp >= maximumGivenUp || m_time >= maximumTime;
}
