#pragma once

#include "host/core/text/text_view.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

/// What the tests of package markup share.
namespace MarkupTest {

using Kelvaris::System::ErrorCode2;
using Kelvaris::System::Expected;
using Kelvaris::System::IO::OpcPackaging::opc_error_category;
using Kelvaris::System::IO::OpcPackaging::OpcError;

inline constexpr std::string_view subject = "file.kvb: /part";

inline std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span{text});
}

/// What became of reading something.
struct Verdict
{
    bool isOk = false;
    bool isOfPackages = false;
    int code = 0;
    std::string message = {};
};

inline void PrintTo(const Verdict& verdict, std::ostream* stream)
{
    *stream << (verdict.isOk ? "ok" : "opc " + std::to_string(verdict.code) + ", \"" + verdict.message + "\"");
}

template <class T>
Verdict verdictOn(const Expected<T, ErrorCode2>& result)
{
    if (result)
        return {.isOk = true};
    const auto message = result.error().message();
    return {.isOfPackages = &result.error().category() == &opc_error_category(),
            .code = result.error().value(),
            .message = std::string{Kelvaris::System::Text::narrow(message)}};
}

MATCHER(IsOk, "is read")
{
    return arg.isOk;
}

/// Refused with that code, on the subject, and with the rule in the sentence.
MATCHER_P2(IsRefused, error, rule, "is refused by " + std::string{rule})
{
    return !arg.isOk && arg.isOfPackages && arg.code == static_cast<int>(error) &&
           arg.message.find(subject) != std::string::npos &&
           arg.message.find("ISO/IEC 29500-2 " + std::string{rule} + ": ") != std::string::npos;
}

/// Refused for a limit of ours, on the subject.
MATCHER(IsTooMuch, "is more than the limits allow")
{
    return !arg.isOk && arg.isOfPackages && arg.code == static_cast<int>(OpcError::limitExceeded) &&
           arg.message.find(subject) != std::string::npos && arg.message.find("more than ") != std::string::npos;
}

enum class ByteOrder { little, big };

/// ASCII text as UTF-16.
inline std::string utf16(std::string_view text, ByteOrder order)
{
    std::string bytes;
    for (const char character : text) {
        if (order == ByteOrder::big)
            bytes += '\0';
        bytes += character;
        if (order == ByteOrder::little)
            bytes += '\0';
    }
    return bytes;
}

} // namespace MarkupTest
