#include "fuzz/fuzzing.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/date_time.h"

using namespace Kelvaris::System;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto time = DateTime::fromXSDDateTime(Text::toString2(Fuzzing::textOf(data, size)));
    if (!time)
        return 0;
    const String2 text = time->toXSDDateTime().value();
    const auto again = DateTime::fromXSDDateTime(text);
    Fuzzing::require(again.hasValue() && *again == *time, "what was written is read again");
    for (const char character : Text::narrow(text)) {
        const bool isDigit = '0' <= character && character <= '9';
        Fuzzing::require(isDigit || std::string_view{"-+:.TZ"}.find(character) != std::string_view::npos,
                         "a date holds the characters of dates alone");
    }
    return 0;
}
