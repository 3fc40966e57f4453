#include "models/path_elements.h"

#include <gtest/gtest.h>

using namespace PathElements;

namespace {

QString joined(std::wstring_view path)
{
    QString text;
    for (const QString& element : elements(path))
        text += QLatin1Char{'<'} + element + QLatin1Char{'>'};
    return text;
}

} // namespace

TEST(PathElements, TheParentIsTheTextAheadOfTheLastElementWithoutTheSeparatorsBetween)
{
    EXPECT_EQ(parentPath(L"content/sub/file.txt"), L"content/sub");
    EXPECT_EQ(parentPath(L"content/sub///file.txt"), L"content/sub");
    EXPECT_EQ(parentPath(L"file.txt"), L"");
    EXPECT_EQ(parentPath(L""), L"");
}

TEST(PathElements, TheBackslashSeparatesToo)
{
    EXPECT_EQ(parentPath(L"content\\sub\\file.txt"), L"content\\sub");
    EXPECT_EQ(parentPath(L"content/sub\\/file.txt"), L"content/sub");
    EXPECT_EQ(lastElement(L"content\\file.txt"), L"file.txt");
}

TEST(PathElements, ARootDirectoryStaysInTheParent)
{
    EXPECT_EQ(parentPath(L"/file.txt"), L"/");
    EXPECT_EQ(parentPath(L"/content/file.txt"), L"/content");
    EXPECT_EQ(joined(parentPath(L"/file.txt")), QString{});
}

TEST(PathElements, ThePathThatEndsInASeparatorHasAnEmptyLastElement)
{
    EXPECT_EQ(parentPath(L"content/sub/"), L"content/sub");
    EXPECT_EQ(lastElement(L"content/sub/"), L"");
}

TEST(PathElements, ARunOfSeparatorsIsOneBoundary)
{
    EXPECT_EQ(joined(L"content//sub\\\\/deep"), QStringLiteral("<content><sub><deep>"));
    EXPECT_EQ(joined(L"/content/"), QStringLiteral("<content>"));
    EXPECT_EQ(joined(L""), QString{});
    EXPECT_EQ(joined(L"\\/"), QString{});
}

TEST(PathElements, ElementsKeepTheirBlanksDotsAndLettersBeyondTheBasicPlane)
{
    EXPECT_EQ(joined(L" a b /..x/ü/\U0001F600"), QStringLiteral("< a b ><..x><ü><\U0001F600>"));
}
