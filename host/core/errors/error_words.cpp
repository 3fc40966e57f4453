#include "host/core/errors/error_words.h"

#include "host/core/errors/table_category.h"
#include "host/core/text/text_view.h"

#include <cerrno>
#include <utility>

namespace Kelvaris::System::Errors {

namespace {

constexpr std::string_view adviceMark = "; ";
constexpr std::string_view pieceMark = ": ";

bool isOfSystem(const ErrorCategory2& category)
{
    return &category == &system_error_category() || &category == &generic_error_category();
}

/// For the failures that people meet; others are rare enough for the system's own words.
std::string_view systemAdvice(int number)
{
    switch (number) {
    case ENOENT:
        return "check the path";
    case EACCES:
    case EPERM:
        return "choose another place, or ask for the permission";
    case EROFS:
        return "choose a place on another disk, this one cannot be written";
    case ENOSPC:
    case EDQUOT:
        return "make room there, or choose a place on another disk";
    case EFBIG:
        return "choose a place that takes larger files";
    case EISDIR:
        return "choose a file, not a directory";
    case ENOTDIR:
        return "check the path: a file stands where it names a directory";
    case EEXIST:
        return "choose another name, or move the file away";
    case ENAMETOOLONG:
        return "choose a shorter name or path";
    case EILSEQ:
    case EINVAL:
        return "choose another name";
    case ELOOP:
        return "mend the links on the path";
    case EMFILE:
    case ENFILE:
        return "close some windows or programs";
    case ENOMEM:
        return "close some programs, or work on fewer files at a time";
    case EBUSY:
    case ETXTBSY:
    case EAGAIN:
        return "try again when no other program uses it";
    case EIO:
    case ENXIO:
    case ENODEV:
    case ESTALE:
        return "check the disk or the connection to it";
    case ECANCELED:
        return "start again when you want it after all";
    default:
        return {};
    }
}

/// The message without the advice, which only a message of ours has.
std::string withoutAdvice(const ErrorCode2& error, const std::string& advice)
{
    std::string message{Text::narrow(error.message())};
    if (!advice.empty() && message.ends_with(adviceMark.data() + advice))
        message.resize(message.size() - adviceMark.size() - advice.size());
    return message;
}

} // namespace

std::string adviceOn(const ErrorCode2& error)
{
    if (isOfSystem(error.category()))
        return std::string{systemAdvice(error.value())};
    const auto* const table = dynamic_cast<const TableCategory*>(&error.category());
    return table == nullptr ? std::string{} : std::string{Text::narrow(table->advice(error.value()))};
}

std::string reasonFrom(const ErrorCode2& error)
{
    return withoutAdvice(error, adviceOn(error));
}

ErrorWords wordsOf(const ErrorCode2& error)
{
    ErrorWords words{.where = {}, .what = {}, .why = {}, .mend = adviceOn(error)};
    const std::string message = withoutAdvice(error, words.mend);
    const std::string sentence{Text::narrow(error.category().message(error.value()))};
    const std::size_t at = message.find(sentence);
    if (at == std::string::npos)
        return {.where = {}, .what = message, .why = {}, .mend = words.mend};
    words.what = sentence;
    if (at >= pieceMark.size())
        words.where = message.substr(0, at - pieceMark.size());
    if (at + sentence.size() + pieceMark.size() < message.size())
        words.why = message.substr(at + sentence.size() + pieceMark.size());
    // the system's words are a reason; what could not be done stands behind the file
    const std::size_t deed = words.where.rfind(pieceMark);
    if (isOfSystem(error.category()) && deed != std::string::npos) {
        words.why = std::exchange(words.what, words.where.substr(deed + pieceMark.size()));
        words.where.resize(deed);
    }
    return words;
}

} // namespace Kelvaris::System::Errors
