#include "kelvaris/system/date_time.h"

#include "host/core/errors/make_error.h"
#include "host/core/text/date_time_words.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"

#include <algorithm>
#include <chrono>
#include <optional>

namespace Kelvaris::System {

namespace {

constexpr bool isDigit(char character)
{
    return '0' <= character && character <= '9';
}

class Scanner
{
public:
    explicit Scanner(std::string_view text) : m_rest{text} {}

    bool atEnd() const { return m_rest.empty(); }

    bool take(char character)
    {
        if (m_rest.empty() || m_rest.front() != character)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    std::string_view takeDigits()
    {
        const auto end = std::ranges::find_if_not(m_rest, isDigit);
        const std::string_view digits{m_rest.begin(), end};
        m_rest.remove_prefix(digits.size());
        return digits;
    }

    /// Two digits, no more and no fewer, of a number between the bounds.
    std::optional<int> takeTwoDigits(int least, int most)
    {
        const std::string_view digits = takeDigits();
        if (digits.size() != 2)
            return std::nullopt;
        const int number = (digits[0] - '0') * 10 + (digits[1] - '0');
        if (number < least || number > most)
            return std::nullopt;
        return number;
    }

private:
    std::string_view m_rest;
};

struct Year
{
    int ofCycle;  ///< the calendar repeats after 400 years, so that a year of any length has one in 2000 to 2399
    bool isShort; ///< four digits without a sign, which the shorter forms ask for
};

std::optional<Year> takeYear(Scanner& text)
{
    const bool negative = text.take('-');
    const std::string_view digits = text.takeDigits();
    if (digits.size() < 4 || (digits.size() > 4 && digits.front() == '0'))
        return std::nullopt;
    if (digits.find_first_not_of('0') == std::string_view::npos)
        return std::nullopt;
    int year = 0;
    for (const char digit : digits)
        year = (year * 10 + (digit - '0')) % 400;
    // there is no year 0: the one before year 1 is -1
    if (negative)
        year = (401 - year) % 400;
    return Year{2000 + year, !negative && digits.size() == 4};
}

bool dayExists(const Year& year, int month, int day)
{
    return std::chrono::year_month_day{std::chrono::year{year.ofCycle},
                                       std::chrono::month{static_cast<unsigned>(month)},
                                       std::chrono::day{static_cast<unsigned>(day)}}
        .ok();
}

bool takeZone(Scanner& text)
{
    if (text.take('Z'))
        return true;
    if (!text.take('+') && !text.take('-'))
        return false;
    const auto hour = text.takeTwoDigits(0, 14);
    if (!hour || !text.take(':'))
        return false;
    return text.takeTwoDigits(0, *hour == 14 ? 0 : 59).has_value();
}

/// Seconds with their fraction; none but 0 behind hour 24, the midnight that ends the day.
bool takeSeconds(Scanner& text, bool endsDay)
{
    if (!text.takeTwoDigits(0, endsDay ? 0 : 59))
        return false;
    if (!text.take('.'))
        return true;
    const std::string_view fraction = text.takeDigits();
    return !fraction.empty() && (!endsDay || fraction.find_first_not_of('0') == std::string_view::npos);
}

/// What follows the "T".
bool isTime(Scanner text, const Year& year)
{
    const auto hour = text.takeTwoDigits(0, 24);
    if (!hour || !text.take(':'))
        return false;
    const bool endsDay = *hour == 24;
    if (!text.takeTwoDigits(0, endsDay ? 0 : 59))
        return false;
    // the form without seconds is not of XML Schema and knows neither hour 24 nor a missing zone
    if (!text.take(':'))
        return year.isShort && !endsDay && takeZone(text) && text.atEnd();
    if (!takeSeconds(text, endsDay))
        return false;
    return text.atEnd() || (takeZone(text) && text.atEnd());
}

bool isDateTime(Scanner text)
{
    const auto year = takeYear(text);
    if (!year || text.atEnd())
        return year && year->isShort;
    if (!text.take('-'))
        return false;
    const auto month = text.takeTwoDigits(1, 12);
    if (!month || text.atEnd())
        return month && year->isShort;
    if (!text.take('-'))
        return false;
    const auto day = text.takeTwoDigits(1, 31);
    if (!day || !dayExists(*year, *month, *day))
        return false;
    if (text.atEnd())
        return year->isShort;
    return text.take('T') && isTime(text, *year);
}

} // namespace

bool Text::isDateTime(std::string_view text)
{
    const std::u8string_view words = trimmed({reinterpret_cast<const char8_t*>(text.data()), text.size()});
    return words.empty() || System::isDateTime(Scanner{narrow(words)});
}

DateTime::~DateTime() = default;

Expected<DateTime, ErrorCode2> DateTime::fromXSDDateTime(const String2& text)
{
    return Text::withinMemory([&]() -> Expected<DateTime, ErrorCode2> {
        const std::u8string_view words = Text::trimmed(Text::view(text));
        if (!Text::isDateTime(Text::narrow(words)))
            return Errors::makeError(CoreError::invalidDateTime, Text::displayed(Text::narrow(text)));
        DateTime result;
        result.m_text = Text::toString2(words);
        return result;
    });
}

Expected<String2, ErrorCode2> DateTime::toXSDDateTime() const
{
    return Text::withinMemory([this]() -> Expected<String2, ErrorCode2> { return m_text; });
}

} // namespace Kelvaris::System
