#include "host/core/text/shared_text.h"

#include <gtest/gtest.h>

#include <string>

using Kelvaris::System::Text::SharedText;

TEST(SharedText, IsACopyThatOutlivesTheText)
{
    std::string given = "a text that is too long to stand in the object itself";
    const SharedText text{given};
    const std::string before = given;
    given.assign(given.size(), 'x');
    EXPECT_EQ(std::string_view{text}, before);
    EXPECT_EQ(std::string_view{SharedText{}}, "");
    EXPECT_EQ(std::string_view{SharedText{""}}, "");
}

TEST(SharedText, IsTheKnownOneWhenItSaysTheSame)
{
    const SharedText known{"application/xml"};
    const SharedText same{known, std::string{"application/xml"}};
    const SharedText other{known, "application/XML"};
    EXPECT_EQ(std::string_view{same}.data(), std::string_view{known}.data());
    EXPECT_EQ(std::string_view{other}, "application/XML");
    EXPECT_EQ(std::string_view{known}, "application/xml");
    EXPECT_TRUE(same.isSharedWith(known));
    EXPECT_FALSE(other.isSharedWith(known));
    EXPECT_FALSE(SharedText{"application/xml"}.isSharedWith(known));
    EXPECT_FALSE(SharedText{}.isSharedWith(SharedText{}));
    EXPECT_NE(known, other);
    EXPECT_EQ(known, SharedText{"application/xml"});
    EXPECT_EQ(known, "application/xml");
}
