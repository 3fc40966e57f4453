#include "host/core/errors/make_error.h"

#include "kelvaris/system/string2.h"

#include <gtest/gtest.h>

#include <cerrno>

using namespace Kelvaris::System;
using IO::Bundle::BundleError;
using IO::OpcPackaging::OpcError;

TEST(MakeError, GivesTheCodeOfItsDomainWithSubjectAndReason)
{
    const ErrorCode2 core = Errors::makeError(CoreError::invalidText, "a", "b");
    EXPECT_EQ(core, (ErrorCode2{5, core_error_category()}));
    EXPECT_EQ(core.message(), String2{u8"a: not valid Unicode text: b; write the text in UTF-8"});

    const ErrorCode2 opc = Errors::makeError(OpcError::notAnArchive, "größe.zip", "it is empty");
    EXPECT_EQ(opc, (ErrorCode2{6, IO::OpcPackaging::opc_error_category()}));
    EXPECT_EQ(opc.message(),
              String2{u8"größe.zip: not a ZIP file: it is empty; choose a bundle, or get the file anew if it is "
                      u8"one"});

    const ErrorCode2 bundle = Errors::makeError(BundleError::notAnExample, "a.zip");
    EXPECT_EQ(bundle, (ErrorCode2{7, IO::Bundle::bundle_error_category()}));
    EXPECT_EQ(bundle.message(),
              String2{u8"a.zip: not an example bundle; make an example of it first, with \"pack\" or in the "
                      u8"editor of examples"});
}

TEST(MakeError, GivesTheSystemsErrorWithItsSubject)
{
    const ErrorCode2 code = Errors::systemError(ENOENT, "/a b", "cannot be opened");
    EXPECT_EQ(code, (ErrorCode2{ENOENT, system_error_category()}));
    EXPECT_EQ(code.message(), String2{u8"/a b: cannot be opened: No such file or directory; check the path"});
}
