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

TEST(PackageVerifier, TellsOfContentTypesWithoutPart)
{
    PackageFile file;
    file.addContentTypes("<Override PartName='/Gone.txt' ContentType='text/plain'/>").addRelationships("");
    EXPECT_THAT(verify(file).value(), ElementsAre(HasSubstr("/gone.txt, which is no part")));
}

TEST(PackageVerifier, TellsOfBytesThatBelongToNothing)
{
    const TemporaryFolder folder;
    PackageFile file;
    file.addContentTypes().addRelationships("").write(folder / "p.zip");
    const std::string bytes = readFile(folder / "p.zip");
    EXPECT_THAT(verify(folder.write("behind.zip", bytes + "ab")).value(),
                ElementsAre(HasSubstr("2 bytes stand behind")));
    EXPECT_THAT(verify(folder.write("before.zip", "MZ!" + bytes)).value(),
                ElementsAre(HasSubstr("3 bytes stand before")));
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

TEST(PackageVerifier, TakesASignedPackageAndRefusesADocumentTypeInItsSignature)
{
    const auto signedWith = [](std::string_view signature) {
        constexpr const char* type = "http://schemas.openxmlformats.org/package/2006/relationships/digital-signature/";
        const std::string origin = std::string{"<Relationship Id='a' Target='/o.txt' Type='"} + type + "origin'/>";
        const std::string one = std::string{"<Relationship Id='a' Target='/s.xml' Type='"} + type + "signature'/>";
        PackageFile file;
        file.addContentTypes("<Override PartName='/o.txt' "
                             "ContentType='application/vnd.openxmlformats-package.digital-signature-origin'/>"
                             "<Override PartName='/s.xml' ContentType='application/"
                             "vnd.openxmlformats-package.digital-signature-xmlsignature+xml'/>")
            .addRelationships(origin)
            .add("o.txt", "")
            .add("_rels/o.txt.rels", relationships(one))
            .add("s.xml", signature);
        return verify(file);
    };
    EXPECT_THAT(signedWith("<Signature/>").value(), IsEmpty());
    EXPECT_EQ(signedWith("<!DOCTYPE a><Signature/>").error(), code(OpcError::documentTypeDeclared));
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
