#include "kelvaris/system/qt/path_bridge.h"

#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"

#include <gtest/gtest.h>

using namespace Kelvaris::System;

TEST(PathBridge, EveryTextComesBackFromItsPath)
{
    for (const QString& text :
         {QString{}, QStringLiteral("a/b\\c"), QStringLiteral("größe/電路/😀.txt"), QString{QChar{0xD800}},
          QStringLiteral("a") + QChar{0xDC00} + QChar{0xD800} + QLatin1Char{'b'}})
        EXPECT_EQ(toQString(toFilePath2(text)), text);
}

TEST(PathBridge, HalfACharacterIsNotReplacedSoThatItIsRefused)
{
    EXPECT_TRUE(IO::OpcPackaging::OpcPackagePartUri{toFilePath2(QStringLiteral("content/😀"))}.toString());
    EXPECT_FALSE(
        IO::OpcPackaging::OpcPackagePartUri{toFilePath2(QStringLiteral("content/") + QChar{0xD83D})}.toString());
}
