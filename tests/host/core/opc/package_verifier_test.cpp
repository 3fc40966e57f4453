#include "host/core/opc/package_verifier.h"

#include "tests/host/core/opc/package_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackageVerifier;
using OpcPackaging::detail::Result;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

Result<std::vector<std::string>> verify(const std::filesystem::path& path)
{
    return PackageVerifier{*PackageData::openFile(toFilePath2(path)).value()}.verify();
}

Result<std::vector<std::string>> verify(const PackageFile& file)
{
    const TemporaryFolder folder;
    file.write(folder / "p.zip");
    return verify(folder / "p.zip");
}

std::string relationships(std::string_view elements)
{
    std::string text = "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>";
    text += elements;
    return text + "</Relationships>";
}

} // namespace

TEST(PackageVerifier, FindsNothingInASoundPackage)
{
    PackageFile file;
    EXPECT_THAT(verify(file.addContentTypes().addRelationships("").add("a.txt", "a")).value(), IsEmpty());
}

TEST(PackageVerifier, TellsWhatIsLeftAlone)
{
    PackageFile file;
    file.addContentTypes()
        .addRelationships("<Relationship Id='a' Type='http://t.example/1' Target='gone.txt'/>"
                          "<Relationship Id='b' Type='http://t.example/1' Target='mailto:' TargetMode='External'/>")
        .add("a.unknown", "")
        .add("_rels/gone.txt.rels", relationships(""));
    EXPECT_THAT(verify(file).value(), ElementsAre(HasSubstr("a.unknown"), HasSubstr("/gone.txt, which is not there"),
                                                  HasSubstr("/gone.txt, which is no part")));
}

TEST(PackageVerifier, TellsOfAPackageWithoutRelationships)
{
    PackageFile file;
    EXPECT_THAT(verify(file.addContentTypes()).value(), ElementsAre(HasSubstr("no relationships")));
}

TEST(PackageVerifier, RefusesBrokenRelationshipsOfAPart)
{
    PackageFile file;
    file.addContentTypes().addRelationships("").add("a.txt", "").add("_rels/a.txt.rels", relationships("<x/>"));
    EXPECT_EQ(verify(file).error(), code(OpcError::invalidXml));
}

TEST(PackageVerifier, RefusesCorePropertiesOfAPart)
{
    PackageFile file;
    file.addContentTypes()
        .addRelationships("")
        .add("a.txt", "")
        .add(
            "_rels/a.txt.rels",
            relationships("<Relationship Id='c' Target='core.xml' Type='http://schemas.openxmlformats.org/package/2006/"
                          "relationships/metadata/core-properties'/>"));
    EXPECT_EQ(verify(file).error(), code(OpcError::severalCoreProperties));
}

TEST(PackageVerifier, RefusesASecondOriginOfSignatures)
{
    constexpr const char* origins =
        "<Relationship Id='a' Target='a.txt' Type='http://schemas.openxmlformats.org/package/2006/relationships/"
        "digital-signature/origin'/>"
        "<Relationship Id='b' Target='b.txt' Type='http://schemas.openxmlformats.org/package/2006/relationships/"
        "digital-signature/origin'/>";
    PackageFile file;
    EXPECT_EQ(verify(file.addContentTypes().addRelationships(origins).add("a.txt", "").add("b.txt", "")).error(),
              code(OpcError::invalidRelationships));
}

TEST(PackageVerifier, RefusesAWrongChecksumOfAnyEntry)
{
    for (const char* name : {"a.txt", "a.unknown"}) {
        const TemporaryFolder folder;
        PackageFile file;
        file.addContentTypes().addRelationships("").add(name, "unique text").write(folder / "p.zip");
        std::string bytes = readFile(folder / "p.zip");
        bytes.replace(bytes.find("unique text"), 6, "UNIQUE");
        EXPECT_EQ(verify(folder.write("p.zip", bytes)).error(), code(OpcError::checksumMismatch)) << name;
    }
}

TEST(PackageVerifier, VerifiesANewPackage)
{
    EXPECT_TRUE(PackageVerifier{*PackageData::create()}.verify());
}
