#pragma once

#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QStringMatcher>

#include <chrono>

/// The pattern of a search box: `text` is a regular expression, in which case is ignored. The empty text gives the
/// pattern that is found in every text.
QRegularExpression searchPattern(const QString& text);

/// Finds a pattern in the texts of a list as `QString::contains` does, one pass over the list after the other, and
/// never holds the window up for long.
///
/// Some patterns take a time that doubles with each letter of the text. The regular expression engine gives up a text
/// after a million steps, which are a hundredth of a second and enough for three ".*" in a description of a page. A
/// text at which the engine gave up counts as no hit, and so does every text left in the pass once that has happened
/// often, or once the pass has spent its time. Most patterns are plain words; these are found without the engine.
class PatternMatcher
{
public:
    /// How often in a pass the engine may give up.
    static constexpr int maximumGivenUp = 8;

    /// What all matches of a pass may take together, in the time of the processor: a search must find as much on a busy
    /// machine as on an idle one. An ordinary pattern takes a thirtieth of it for ten thousand rows.
    static constexpr std::chrono::milliseconds maximumTime{1'000};

    /// Begins a pass if `pattern` differs from the one before; otherwise the pass goes on.
    void setPattern(const QRegularExpression& pattern);

    /// Begins a pass with the pattern that is set.
    void startPass();

    /// Whether the pattern is found in `text`. An invalid pattern is found nowhere, the empty one everywhere.
    bool isFoundIn(const QString& text);

    /// Whether the pattern is the empty one, which is found everywhere.
    bool isEmpty() const { return m_isEmpty; }

    /// Whether the pattern is a plain word: letters, digits and signs of ASCII that stand for themselves.
    bool isWord() const { return m_isWord; }

    /// A text with one case for each letter, as `isWordIn` wants it; each character stays in its place.
    static QString folded(const QString& text);

    /// The same as `isFoundIn` for a plain word, in a part of the time.
    bool isWordIn(const QString& folded) const { return m_foldedWord.indexIn(folded) >= 0; }

private:
    bool match(const QString& text);
    void addTime(std::chrono::nanoseconds byTheClock);
    bool isGivenUp() const;

    QRegularExpression m_pattern;
    QRegularExpression m_boundedPattern;
    QStringMatcher m_word; // what is searched for when the pattern is a plain word
    QStringMatcher m_foldedWord;
    bool m_isWord = false;
    bool m_isEmpty = true;
    bool m_isValid = true;
    int m_givenUp = 0;
    std::chrono::nanoseconds m_time{};
    std::chrono::nanoseconds m_byTheClock{}; // of matches since the processor's time was read
    std::chrono::nanoseconds m_processorTime{};
};
