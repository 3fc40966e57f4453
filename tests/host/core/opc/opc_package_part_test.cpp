#include "kelvaris/system/io/opc_packaging/opc_package_part.h"

#include "host/core/opc/package_access.h"
#include "kelvaris/system/core_error.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "tests/host/core/opc/package_file.h"
#include "tests/host/core/opc/package_walks.h"

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

constexpr auto replace = OpcPackagePartWriteContentMode::replace;

OpcPackage openOneText(const TemporaryFolder& folder)
{
    PackageFile file;
    file.addContentTypes().add("A b.txt", "not valid as an item name").add("Old.txt", "old").write(folder / "p.zip");
    return open_package(toFilePath2(folder / "p.zip")).value();
}

OpcPackagePart oldPart(const OpcPackage& package)
{
    return package.part(OpcPackagePartUri{L"/old.txt"}).value();
}

} // namespace

TEST(OpcPackagePart, UriHasTheLettersInWhichThePartStandsInThePackage)
{
    const TemporaryFolder folder;
    EXPECT_EQ(nameOf(oldPart(openOneText(folder))), "/Old.txt");
}

TEST(OpcPackagePart, WriteContentFromFileTakesTheBytesInAtOnce)
{
    const TemporaryFolder folder;
    const OpcPackage package = openOneText(folder);
    OpcPackagePart part = oldPart(package);
    ASSERT_TRUE(part.writeContentFromFile(toFilePath2(folder.write("new.txt", "new bytes")), replace));
    std::filesystem::remove(folder / "new.txt");
    EXPECT_EQ(bytesOf(part), "new bytes");
    EXPECT_EQ(bytesOf(oldPart(package)), "new bytes");
}

TEST(OpcPackagePart, WriteContentFromFileTwiceKeepsTheLastBytes)
{
    const TemporaryFolder folder;
    OpcPackagePart part = oldPart(openOneText(folder));
    ASSERT_TRUE(part.writeContentFromFile(toFilePath2(folder.write("1", "one")), replace));
    ASSERT_TRUE(part.writeContentFromFile(toFilePath2(folder.write("2", "")), replace));
    EXPECT_EQ(bytesOf(part), "");
}

TEST(OpcPackagePart, WriteContentFromAFileThatIsNotThereLeavesThePartAsItWas)
{
    const TemporaryFolder folder;
    OpcPackagePart part = oldPart(openOneText(folder));
    const auto written = part.writeContentFromFile(toFilePath2(folder / "gone"), replace);
    EXPECT_EQ(written.error(), ErrorCode2(ENOENT, system_error_category()));
    EXPECT_EQ(bytesOf(part), "old");
}

TEST(OpcPackagePart, WriteContentFromADirectoryIsAnError)
{
    const TemporaryFolder folder;
    OpcPackagePart part = oldPart(openOneText(folder));
    const auto written = part.writeContentFromFile(toFilePath2(folder.path()), replace);
    EXPECT_EQ(written.error(), ErrorCode2(static_cast<int>(CoreError::notARegularFile), core_error_category()));
}

TEST(OpcPackagePart, WriteContentIntoAPartThatWasRemovedIsAnError)
{
    const TemporaryFolder folder;
    const OpcPackage package = openOneText(folder);
    OpcPackagePart part = oldPart(package);
    OpcPackaging::detail::PackageAccess::data(package)->parts().remove(
        OpcPackaging::detail::PackageAccess::record(part));
    const auto written = part.writeContentFromFile(toFilePath2(folder.write("1", "one")), replace);
    EXPECT_EQ(written.error(), code(OpcError::noSuchPart));
}
