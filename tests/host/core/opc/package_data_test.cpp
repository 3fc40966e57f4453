#include "host/core/opc/package_data.h"

#include "host/core/opc/limits.h"
#include "kelvaris/system/core_error.h"
#include "tests/host/core/opc/package_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackagePtr;
using OpcPackaging::detail::PartPtr;
using testing::HasSubstr;

namespace {

class PackageDataTest : public testing::Test
{
protected:
    std::filesystem::path write(const PackageFile& file, std::string_view name = "p.zip") const
    {
        file.write(m_folder / name);
        return m_folder / name;
    }

    PackagePtr open(const std::filesystem::path& path) const
    {
        return PackageData::openFile(toFilePath2(path)).value();
    }

    /// A package with a part "nested.txt" of these bytes.
    std::filesystem::path wrap(const std::string& bytes, std::string_view name) const
    {
        PackageFile file;
        return write(file.addContentTypes().addRelationships("").add("nested.txt", bytes), name);
    }

    TemporaryFolder m_folder;
};

std::string textOf(PackageData& package, std::string_view part)
{
    const auto bytes = package.parts().read(*package.findPart(part).value()).value();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace

TEST_F(PackageDataTest, ANestedPackageReadsLikeAnyOther)
{
    PackageFile inner;
    const std::string bytes = readFile(write(inner.addContentTypes().add("a.txt", std::string(5000, 'a'))));
    const PackagePtr outer = open(wrap(bytes, "outer.zip"));
    const PackagePtr nested = outer->openNested(*outer->findPart("/nested.txt").value()).value();
    EXPECT_EQ(textOf(*nested, "/a.txt"), std::string(5000, 'a'));
    EXPECT_THAT(nested->displayName(), HasSubstr("outer.zip"));
    EXPECT_THAT(nested->displayName(), HasSubstr("nested.txt"));
}

TEST_F(PackageDataTest, ANestedPackageOutlivesTheOuterOne)
{
    PackageFile inner;
    const std::string bytes = readFile(write(inner.addContentTypes().add("a.txt", "still here")));
    PackagePtr outer = open(wrap(bytes, "outer.zip"));
    const PackagePtr nested = outer->openNested(*outer->findPart("/nested.txt").value()).value();
    outer.reset();
    EXPECT_EQ(textOf(*nested, "/a.txt"), "still here");
}

TEST_F(PackageDataTest, PackagesInPackagesEndAtTheLimit)
{
    PackageFile innermost;
    std::string bytes = readFile(write(innermost.addContentTypes()));
    for (int depth = 0; depth < Limits::packageDepth; ++depth)
        bytes = readFile(wrap(bytes, "wrapped.zip"));
    PackagePtr package = open(m_folder / "wrapped.zip");
    for (int depth = 1; depth < Limits::packageDepth; ++depth)
        package = package->openNested(*package->findPart("/nested.txt").value()).value();
    EXPECT_EQ(package->openNested(*package->findPart("/nested.txt").value()).error(), code(OpcError::limitExceeded));
}

TEST_F(PackageDataTest, AFileThatIsTruncatedWhileItIsOpenGivesAnError)
{
    PackageFile file;
    const auto path = write(file.addContentTypes().add("a.txt", "a").add("b.txt", "b"));
    const PackagePtr package = open(path);
    const PartPtr part = package->findPart("/b.txt").value();
    std::filesystem::resize_file(path, 40);
    const auto bytes = package->parts().read(*part);
    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.error(), ErrorCode2(static_cast<int>(CoreError::fileTruncated), core_error_category()));
    EXPECT_FALSE(package->write(toFilePath2(m_folder / "saved.zip")));
    EXPECT_FALSE(std::filesystem::exists(m_folder / "saved.zip"));
}

TEST_F(PackageDataTest, AFileThatIsReplacedWhileItIsOpenIsReadAsItWas)
{
    PackageFile file;
    const auto path = write(file.addContentTypes().add("a.txt", "old"));
    const PackagePtr package = open(path);
    PackageFile other;
    write(other.addContentTypes().add("a.txt", "new"));
    EXPECT_EQ(textOf(*package, "/a.txt"), "old");
}

TEST_F(PackageDataTest, AWrongChecksumIsToldWhenThePartIsRead)
{
    PackageFile file;
    const auto path = write(file.addContentTypes().add("a.txt", "sound").add("b.txt", "unique text"));
    std::string bytes = readFile(path);
    bytes.replace(bytes.find("unique text"), 6, "UNIQUE");
    m_folder.write("p.zip", bytes);
    const PackagePtr package = open(path);
    EXPECT_EQ(textOf(*package, "/a.txt"), "sound");
    const auto broken = package->parts().read(*package->findPart("/b.txt").value());
    EXPECT_EQ(broken.error(), code(OpcError::checksumMismatch));
}

TEST_F(PackageDataTest, SavingLeavesThePackageAsItIs)
{
    PackageFile file;
    const PackagePtr package = open(write(file.addContentTypes().addRelationships("").add("a.txt", "a")));
    ASSERT_TRUE(package->properties().setTitle(u8"one"));
    ASSERT_TRUE(package->write(toFilePath2(m_folder / "1.zip")));
    ASSERT_TRUE(package->write(toFilePath2(m_folder / "2.zip")));
    EXPECT_EQ(readFile(m_folder / "1.zip"), readFile(m_folder / "2.zip"));
    ASSERT_TRUE(package->properties().setTitle(u8"two"));
    ASSERT_TRUE(package->write(toFilePath2(m_folder / "3.zip")));
    EXPECT_EQ(open(m_folder / "1.zip")->properties().title().value(), String2{u8"one"});
    EXPECT_EQ(open(m_folder / "3.zip")->properties().title().value(), String2{u8"two"});
}

TEST_F(PackageDataTest, SavingOverTheOpenedFileWorksAgainAndAgain)
{
    PackageFile file;
    const auto path = write(file.addContentTypes().addRelationships("").add("a.txt", std::string(100'000, 'a')));
    const PackagePtr package = open(path);
    for (const char8_t* title : {u8"one", u8"a longer title", u8"3"}) {
        ASSERT_TRUE(package->properties().setTitle(title));
        ASSERT_TRUE(package->write(toFilePath2(path)));
        EXPECT_EQ(open(path)->properties().title().value(), String2{title});
        EXPECT_EQ(textOf(*open(path), "/a.txt"), std::string(100'000, 'a'));
    }
}

TEST_F(PackageDataTest, AFailedSaveLeavesFileAndPackageAsTheyWere)
{
    PackageFile file;
    const PackagePtr package = open(write(file.addContentTypes().addRelationships("").add("a.txt", "a")));
    ASSERT_TRUE(package->properties().setTitle(u8"kept"));
    const auto saved = package->write(toFilePath2(m_folder / "no such directory/x.zip"));
    ASSERT_FALSE(saved);
    EXPECT_THAT(toStdString(saved.error().message()), HasSubstr("no such directory"));
    ASSERT_TRUE(package->write(toFilePath2(m_folder / "x.zip")));
    EXPECT_EQ(open(m_folder / "x.zip")->properties().title().value(), String2{u8"kept"});
}

TEST_F(PackageDataTest, FindPartRefusesWhatIsNoName)
{
    PackageFile file;
    const PackagePtr package = open(write(file.addContentTypes()));
    EXPECT_EQ(package->findPart("no slash").error(), code(OpcError::invalidPartName));
    EXPECT_EQ(package->findPart("/none").error(), code(OpcError::noSuchPart));
}
