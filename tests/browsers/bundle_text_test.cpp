#include "browsers/bundle_text.h"

#include "kelvaris/system/core_error.h"
#include "tests/browsers/sample_barrels.h"

#include <gtest/gtest.h>

using namespace Kelvaris::System;

namespace {

const ErrorCode2 anError{1, core_error_category()};

String2 invalidUtf8()
{
    String2 text;
    return text.assign(u8"\xff", 1);
}

} // namespace

TEST(BundleText, IsTheTextInUnicode)
{
    EXPECT_EQ(textOrEmpty(String2{u8"Größe 電 🔌"}), QStringLiteral("Größe 電 🔌"));
}

TEST(BundleText, IsEmptyForAnError)
{
    EXPECT_EQ(textOrEmpty(anError), QString{});
    EXPECT_EQ(textsOrEmpty(anError), QStringList{});
}

TEST(BundleText, IsEmptyForATextThatIsNotUtf8)
{
    EXPECT_EQ(textOrEmpty(invalidUtf8()), QString{});
}

TEST(BundleText, KeepsTheOrderOfSeveralTexts)
{
    StringVector2 texts;
    texts.push_back(u8"zeta").value();
    texts.push_back(u8"alpha").value();
    EXPECT_EQ(textsOrEmpty(texts), (QStringList{QStringLiteral("zeta"), QStringLiteral("alpha")}));
}
