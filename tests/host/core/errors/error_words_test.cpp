#include "host/core/errors/error_words.h"

#include "host/core/errors/make_error.h"
#include "host/core/text/text_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

using namespace Kelvaris::System;
using Errors::ErrorWords;
using IO::Bundle::BundleError;
using IO::OpcPackaging::OpcError;
using testing::Not;
using testing::StartsWith;

namespace {

std::string messageOf(const ErrorCode2& error)
{
    return std::string{Text::narrow(error.message())};
}

/// Every code that there is, on a subject and with a reason.
std::vector<ErrorCode2> everyCode()
{
    std::vector<ErrorCode2> all;
    for (int value = 1; value <= static_cast<int>(OpcError::packageInUse); ++value)
        all.push_back(Errors::makeError(static_cast<OpcError>(value), "a b.zip", "the reason"));
    for (int value = 1; value <= static_cast<int>(BundleError::noRoot); ++value)
        all.push_back(Errors::makeError(static_cast<BundleError>(value), "a b.zip", "the reason"));
    for (int value = 1; value <= static_cast<int>(CoreError::fileTruncated); ++value)
        all.push_back(Errors::makeError(static_cast<CoreError>(value), "a b.zip", "the reason"));
    return all;
}

} // namespace

TEST(ErrorWords, SayOfEveryCodeWhereWhatWhyAndWhatToDo)
{
    for (const ErrorCode2& error : everyCode()) {
        const ErrorWords words = Errors::wordsOf(error);
        const std::string name = std::string{error.category().name()} + " " + std::to_string(error.value());
        EXPECT_EQ(words.where, "a b.zip") << name;
        EXPECT_EQ(words.what, Text::narrow(error.category().message(error.value()))) << name;
        EXPECT_THAT(words.what, Not(StartsWith("unknown "))) << name;
        EXPECT_EQ(words.why, "the reason") << name;
        EXPECT_NE(words.mend, "") << name;
        EXPECT_EQ(messageOf(error), words.where + ": " + words.what + ": " + words.why + "; " + words.mend) << name;
        EXPECT_EQ(Errors::reasonFrom(error), words.where + ": " + words.what + ": " + words.why) << name;
    }
}

TEST(ErrorWords, SayTheSameOfFailuresOfTheSystem)
{
    for (const int number : {ENOENT,  EACCES,       EPERM,  EROFS,  ENOSPC, EDQUOT, EFBIG,    EISDIR, ENOTDIR,
                             EEXIST,  ENAMETOOLONG, EILSEQ, EINVAL, ELOOP,  EMFILE, ENFILE,   ENOMEM, EBUSY,
                             ETXTBSY, EAGAIN,       EIO,    ENXIO,  ENODEV, ESTALE, ECANCELED}) {
        const ErrorCode2 error = Errors::systemError(number, "dir: entry", "cannot be opened");
        const ErrorWords words = Errors::wordsOf(error);
        EXPECT_EQ(words.where, "dir: entry");
        EXPECT_EQ(words.what, "cannot be opened");
        EXPECT_EQ(words.why, std::system_category().message(number));
        EXPECT_NE(words.mend, "") << words.why;
        EXPECT_EQ(messageOf(error), "dir: entry: cannot be opened: " + words.why + "; " + words.mend);
    }
}

TEST(ErrorWords, LeaveOutWhatIsNotKnown)
{
    const ErrorWords bare =
        Errors::wordsOf({static_cast<int>(OpcError::notAnArchive), IO::OpcPackaging::opc_error_category()});
    EXPECT_EQ(bare.where, "");
    EXPECT_EQ(bare.what, "not a ZIP file");
    EXPECT_EQ(bare.why, "");
    const ErrorWords unknown = Errors::wordsOf({4711, core_error_category()});
    EXPECT_EQ(unknown.what, "unknown core error 4711");
    EXPECT_EQ(unknown.mend, "");
    EXPECT_EQ(Errors::adviceOn({12345, system_error_category()}), "");
}
