#include "kelvaris/system/io/opc_packaging/opc_package_ref.h"

#include "host/core/opc/package_access.h"
#include "kelvaris/system/core_error.h"
#include "tests/host/core/opc/package_file.h"

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::PackageAccess;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackagePtr;
using OpcPackaging::detail::PackageReference;

namespace {

/// A reference to the package that the part "/nested.txt" is.
OpcPackageRef nestedReference(const TemporaryFolder& folder, const std::string& bytes)
{
    PackageFile file;
    file.addContentTypes().add("nested.txt", bytes).write(folder / "outer.zip");
    const PackagePtr outer = PackageData::openFile(toFilePath2(folder / "outer.zip")).value();
    return PackageAccess::reference(std::make_shared<PackageReference>(outer, outer->findPart("/nested.txt").value()));
}

} // namespace

TEST(OpcPackageRef, CopiesReferToOnePackage)
{
    OpcPackageRef first = PackageAccess::reference(std::make_shared<PackageReference>(PackageData::create()));
    OpcPackageRef second = first;
    ASSERT_TRUE(first.packageProperties().value()->setTitle(u8"title"));
    EXPECT_EQ(second.packageProperties().value()->title().value(), String2{u8"title"});
}

TEST(OpcPackageRef, APartThatIsNoPackageGivesEmptyPropertiesThatCanBeSet)
{
    const TemporaryFolder folder;
    OpcPackageRef reference = nestedReference(folder, "no package");
    OpcPackageProperties* const properties = reference.packageProperties().value();
    EXPECT_EQ(properties->title().error(), code(OpcError::propertyNotSet));
    ASSERT_TRUE(properties->setTitle(u8"title"));
    EXPECT_EQ(reference.packageProperties().value()->title().value(), String2{u8"title"});
}

TEST(OpcPackageRef, AFileThatCannotBeReadIsAnError)
{
    const TemporaryFolder folder;
    PackageFile inner;
    inner.addContentTypes().write(folder / "inner.zip");
    OpcPackageRef reference = nestedReference(folder, readFile(folder / "inner.zip"));
    std::filesystem::resize_file(folder / "outer.zip", 20);
    EXPECT_EQ(reference.packageProperties().error(),
              ErrorCode2(static_cast<int>(CoreError::fileTruncated), core_error_category()));
}
