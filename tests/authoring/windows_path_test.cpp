#include "authoring/windows_path.h"

#include <gtest/gtest.h>

namespace {

using Authoring::pathFilename;
using Authoring::pathParent;

TEST(PathFilename, OfADriveWithItsRootIsEmpty)
{
    EXPECT_EQ(pathFilename(L"C:\\"), L"");
}

TEST(PathFilename, OfADriveIsEmpty)
{
    EXPECT_EQ(pathFilename(L"C:"), L"");
}

TEST(PathFilename, OfABareNameIsTheName)
{
    EXPECT_EQ(pathFilename(L"a"), L"a");
}

TEST(PathFilename, BehindADriveWithoutASeparatorIsTheRest)
{
    EXPECT_EQ(pathFilename(L"C:a"), L"a");
    EXPECT_EQ(pathFilename(L"z:a"), L"a");
}

TEST(PathFilename, OfAPathThatEndsInASeparatorIsEmpty)
{
    EXPECT_EQ(pathFilename(L"a/b/"), L"");
    EXPECT_EQ(pathFilename(L"a\\b\\"), L"");
}

TEST(PathFilename, TakesBothSeparators)
{
    EXPECT_EQ(pathFilename(L"C:\\a\\b"), L"b");
    EXPECT_EQ(pathFilename(L"/home/a\\b"), L"b");
    EXPECT_EQ(pathFilename(L"a\\b/c"), L"c");
}

TEST(PathFilename, BehindAShareIsTheFile)
{
    EXPECT_EQ(pathFilename(L"\\\\server\\share\\f"), L"f");
}

TEST(PathFilename, OfAHostIsEmptySinceItIsAllRootName)
{
    EXPECT_EQ(pathFilename(L"\\\\server"), L"");
    EXPECT_EQ(pathFilename(L"//s"), L"");
}

TEST(PathFilename, OfTheEmptyTextIsEmpty)
{
    EXPECT_EQ(pathFilename(L""), L"");
}

TEST(PathFilename, OfSeparatorsAloneIsEmpty)
{
    EXPECT_EQ(pathFilename(L"/"), L"");
    EXPECT_EQ(pathFilename(L"\\\\"), L"");
    EXPECT_EQ(pathFilename(L"///"), L"");
}

TEST(PathFilename, ThreeSeparatorsAreARootDirectoryAndNoHost)
{
    EXPECT_EQ(pathFilename(L"///a"), L"a");
}

TEST(PathFilename, BehindADevicePrefixIsTheRest)
{
    EXPECT_EQ(pathFilename(L"\\\\?\\C"), L"C");
    EXPECT_EQ(pathFilename(L"\\\\.\\COM1"), L"COM1");
    EXPECT_EQ(pathFilename(L"\\??\\C"), L"C");
    EXPECT_EQ(pathFilename(L"//?/a/b"), L"b");
}

TEST(PathFilename, ADevicePrefixAloneIsAllRoot)
{
    EXPECT_EQ(pathFilename(L"\\\\?\\"), L"");
    EXPECT_EQ(pathFilename(L"\\\\?"), L"") << "too short for a device: a host of the name ?";
}

TEST(PathFilename, ADevicePrefixBeforeTwoSeparatorsIsAHost)
{
    EXPECT_EQ(pathFilename(L"\\\\?\\\\a"), L"a");
    EXPECT_EQ(pathParent(L"\\\\?\\\\a"), L"\\\\?\\\\");
    EXPECT_EQ(pathFilename(L"\\??\\\\a"), L"a");
    EXPECT_EQ(pathParent(L"\\??\\\\a"), L"\\??") << "no device and no host: an ordinary directory";
}

TEST(PathFilename, OnlyAnEnglishLetterIsADrive)
{
    EXPECT_EQ(pathFilename(L"1:a"), L"1:a");
    EXPECT_EQ(pathFilename(L"ä:a"), L"ä:a");
    EXPECT_EQ(pathFilename(L"@:a"), L"@:a");
    EXPECT_EQ(pathFilename(L"[:a"), L"[:a");
}

TEST(PathFilename, KeepsLettersBeyondAscii)
{
    EXPECT_EQ(pathFilename(L"Höller/Übertrager 変圧器.kvsch"), L"Übertrager 変圧器.kvsch");
}

TEST(PathParent, OfADriveWithItsRootIsTheWhole)
{
    EXPECT_EQ(pathParent(L"C:\\"), L"C:\\");
}

TEST(PathParent, OfADriveIsTheDrive)
{
    EXPECT_EQ(pathParent(L"C:"), L"C:");
}

TEST(PathParent, OfABareNameIsEmpty)
{
    EXPECT_EQ(pathParent(L"a"), L"");
}

TEST(PathParent, BehindADriveWithoutASeparatorIsTheDrive)
{
    EXPECT_EQ(pathParent(L"C:a"), L"C:");
}

TEST(PathParent, OfAPathThatEndsInASeparatorIsThePathWithoutIt)
{
    EXPECT_EQ(pathParent(L"a/b/"), L"a/b");
}

TEST(PathParent, OfTwoComponentsIsTheFirst)
{
    EXPECT_EQ(pathParent(L"a/b"), L"a");
}

TEST(PathParent, DropsAllSeparatorsBeforeTheLastComponent)
{
    EXPECT_EQ(pathParent(L"a//b"), L"a");
    EXPECT_EQ(pathParent(L"a\\/\\b"), L"a");
}

TEST(PathParent, OfANameInTheRootIsTheRoot)
{
    EXPECT_EQ(pathParent(L"/a"), L"/");
    EXPECT_EQ(pathParent(L"C:\\a"), L"C:\\");
    EXPECT_EQ(pathParent(L"///a"), L"///");
}

TEST(PathParent, OfAShareIsTheHostWithItsRoot)
{
    EXPECT_EQ(pathParent(L"\\\\server\\share"), L"\\\\server\\");
}

TEST(PathParent, OfADevicePathIsThePrefixWithItsRoot)
{
    EXPECT_EQ(pathParent(L"\\\\?\\C"), L"\\\\?\\");
}

TEST(PathParent, OfTheEmptyTextIsEmpty)
{
    EXPECT_EQ(pathParent(L""), L"");
}

TEST(PathParent, OfSeparatorsAloneIsTheWhole)
{
    EXPECT_EQ(pathParent(L"\\/"), L"\\/");
}

TEST(PathParent, KeepsTheSeparatorsOfTheInput)
{
    EXPECT_EQ(pathParent(L"C:/a\\b/c"), L"C:/a\\b");
}

} // namespace
