#include "kelvaris/system/io/opc_packaging/opc_package_properties.h"

#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "tests/host/core/opc/package_file.h"
#include "tests/host/core/opc/package_walks.h"

#include "host/core/opc/package_access.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::PackageAccess;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* coreType =
    "<Override PartName='/core.xml' ContentType='application/vnd.openxmlformats-package.core-properties+xml'/>";
constexpr const char* coreRelationship =
    "<Relationship Id='c' Target='core.xml' "
    "Type='http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties'/>";

std::string coreDocument(std::string_view elements)
{
    std::string text =
        "<p:coreProperties xmlns:p='http://schemas.openxmlformats.org/package/2006/metadata/core-properties' "
        "xmlns:dc='http://purl.org/dc/elements/1.1/' xmlns:dcterms='http://purl.org/dc/terms/' "
        "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'>";
    text += elements;
    return text + "</p:coreProperties>";
}

class OpcPackagePropertiesTest : public testing::Test
{
protected:
    OpcPackage open(const PackageFile& file) const
    {
        file.write(m_folder / "p.zip");
        return open_package(toFilePath2(m_folder / "p.zip")).value();
    }

    OpcPackage openWithCore(std::string_view elements) const
    {
        PackageFile file;
        file.addContentTypes(coreType).addRelationships(coreRelationship).add("core.xml", coreDocument(elements));
        return open(file);
    }

    OpcPackage openWithoutCore() const
    {
        PackageFile file;
        return open(file.addContentTypes().addRelationships("").add("a.txt", "a"));
    }

    OpcPackage saved(const OpcPackage& package) const
    {
        PackageAccess::data(package)->write(toFilePath2(m_folder / "saved.zip")).value();
        return OpcPackage::open(toFilePath2(m_folder / "saved.zip"), OpcPackageOpenFlag::verify).value();
    }

    TemporaryFolder m_folder;
};

using TextSetter = Expected<void, ErrorCode2> (OpcPackageProperties::*)(const String2&);
using TextGetter = Expected<String2, ErrorCode2> (OpcPackageProperties::*)() const;

struct TextProperty
{
    const char8_t* name;
    TextGetter get;
    TextSetter set;
};

using P = OpcPackageProperties;
constexpr TextProperty textProperties[] = {
    {u8"category", &P::category, &P::setCategory},
    {u8"contentStatus", &P::contentStatus, &P::setContentStatus},
    {u8"creator", &P::creator, &P::setCreator},
    {u8"description", &P::description, &P::setDescription},
    {u8"identifier", &P::identifier, &P::setIdentifier},
    {u8"language", &P::language, &P::setLanguage},
    {u8"lastModifiedBy", &P::lastModifiedBy, &P::setLastModifiedBy},
    {u8"revision", &P::revision, &P::setRevision},
    {u8"subject", &P::subject, &P::setSubject},
    {u8"title", &P::title, &P::setTitle},
    {u8"version", &P::version, &P::setVersion},
};

StringVector2 keywords(std::initializer_list<const char8_t*> texts)
{
    StringVector2 keywords;
    for (const char8_t* text : texts)
        keywords.push_back(text).value();
    return keywords;
}

} // namespace

TEST_F(OpcPackagePropertiesTest, EveryTextComesBackFromItsOwnProperty)
{
    OpcPackage package = openWithoutCore();
    for (const TextProperty& property : textProperties)
        ASSERT_TRUE((package.packageProperties().*property.set)(property.name));
    OpcPackage read = saved(package);
    for (const TextProperty& property : textProperties)
        EXPECT_EQ((read.packageProperties().*property.get)().value(), String2{property.name});
}

TEST_F(OpcPackagePropertiesTest, TimesComeBackInTheWordsInWhichTheyWereSet)
{
    OpcPackage package = openWithoutCore();
    const auto time = [](const char8_t* text) { return DateTime::fromXSDDateTime(text).value(); };
    ASSERT_TRUE(package.packageProperties().setCreated(time(u8"2026-03-01T12:30:00.5+01:00")));
    ASSERT_TRUE(package.packageProperties().setModified(time(u8"2026")));
    ASSERT_TRUE(package.packageProperties().setLastPrinted(time(u8"2026-03-01T12:30:00Z")));
    OpcPackage read = saved(package);
    EXPECT_EQ(read.packageProperties().created().value(), time(u8"2026-03-01T12:30:00.5+01:00"));
    EXPECT_EQ(read.packageProperties().modified().value(), time(u8"2026"));
    EXPECT_EQ(read.packageProperties().lastPrinted().value(), time(u8"2026-03-01T12:30:00Z"));
}

TEST_F(OpcPackagePropertiesTest, KeywordsStandInTheFileAsOneTextWithSemicolons)
{
    OpcPackage package = openWithoutCore();
    ASSERT_TRUE(package.packageProperties().setKeywords(keywords({u8"alpha", u8"", u8"beta gamma"})));
    EXPECT_EQ(saved(package).packageProperties().keywords().value(), keywords({u8"alpha", u8"beta gamma"}));
    EXPECT_THAT(readEntries(m_folder / "saved.zip").back().second, HasSubstr(">alpha; beta gamma<"));
}

TEST_F(OpcPackagePropertiesTest, WhatThePackageDoesNotHoldIsAnError)
{
    OpcPackage package = openWithoutCore();
    EXPECT_EQ(package.packageProperties().title().error(), code(OpcError::propertyNotSet));
    EXPECT_EQ(package.packageProperties().created().error(), code(OpcError::propertyNotSet));
    EXPECT_EQ(package.packageProperties().keywords().error(), code(OpcError::propertyNotSet));
}

TEST_F(OpcPackagePropertiesTest, AnEmptyElementIsTheEmptyText)
{
    OpcPackage package = openWithCore("<dc:title/>");
    EXPECT_EQ(package.packageProperties().title().value(), String2{});
}

TEST_F(OpcPackagePropertiesTest, SettingNothingRemovesTheProperty)
{
    OpcPackage package = openWithCore("<dc:title>old</dc:title><p:keywords>k</p:keywords>"
                                      "<dcterms:created xsi:type='dcterms:W3CDTF'>2026</dcterms:created>");
    ASSERT_TRUE(package.packageProperties().setTitle({}));
    ASSERT_TRUE(package.packageProperties().setKeywords({}));
    ASSERT_TRUE(package.packageProperties().setCreated({}));
    OpcPackage read = saved(package);
    EXPECT_EQ(read.packageProperties().title().error(), code(OpcError::propertyNotSet));
    EXPECT_EQ(read.packageProperties().keywords().error(), code(OpcError::propertyNotSet));
    EXPECT_EQ(read.packageProperties().created().error(), code(OpcError::propertyNotSet));
    EXPECT_THAT(readEntries(m_folder / "saved.zip").back().second, Not(HasSubstr("title")));
}

TEST_F(OpcPackagePropertiesTest, APackageGetsItsPartWithTheFirstPropertyThatIsSetToSomething)
{
    OpcPackage package = openWithoutCore();
    ASSERT_TRUE(package.packageProperties().setTitle({}));
    EXPECT_THAT(partNames(package), ElementsAre("/a.txt"));
    ASSERT_TRUE(package.packageProperties().setTitle(u8"t"));
    EXPECT_THAT(partNames(package), ElementsAre("/a.txt", "/docProps/core.xml"));
}

TEST_F(OpcPackagePropertiesTest, ThePartGetsAnotherNameWhenItsOwnIsTaken)
{
    PackageFile file;
    OpcPackage package = open(file.addContentTypes().add("docProps/core.xml", "<mine/>"));
    ASSERT_TRUE(package.packageProperties().setTitle(u8"t"));
    EXPECT_THAT(partNames(package), ElementsAre("/docProps/core.xml", "/docProps/core1.xml"));
    EXPECT_EQ(saved(package).packageProperties().title().value(), String2{u8"t"});
}

TEST_F(OpcPackagePropertiesTest, ADanglingRelationshipLeadsToThePartThatASetterMakes)
{
    PackageFile file;
    OpcPackage package = open(file.addContentTypes().addRelationships(coreRelationship));
    EXPECT_EQ(package.packageProperties().title().error(), code(OpcError::propertyNotSet));
    ASSERT_TRUE(package.packageProperties().setTitle(u8"t"));
    EXPECT_THAT(partNames(package), ElementsAre("/core.xml"));
    EXPECT_EQ(relationshipLines(saved(package).relationships().value()).size(), 1U);
}

TEST_F(OpcPackagePropertiesTest, APartThatNothingLedToBecomesThatOfThePackage)
{
    PackageFile file;
    OpcPackage package =
        open(file.addContentTypes(coreType)
                 .addRelationships("<Relationship Id='c' Target='gone.xml' "
                                   "Type='http://schemas.openxmlformats.org/package/2006/relationships/"
                                   "metadata/core-properties'/>")
                 .add("core.xml", coreDocument("<dc:creator>c</dc:creator>")));
    EXPECT_EQ(package.packageProperties().creator().error(), code(OpcError::propertyNotSet));
    ASSERT_TRUE(package.packageProperties().setTitle(u8"t"));
    OpcPackage again = saved(package);
    EXPECT_THAT(partNames(again), ElementsAre("/core.xml"));
    EXPECT_EQ(relationshipLines(again.relationships().value()).size(), 1U);
    EXPECT_EQ(again.packageProperties().title().value(), String2{u8"t"});
    EXPECT_EQ(again.packageProperties().creator().value(), String2{u8"c"});
}

TEST_F(OpcPackagePropertiesTest, SettingWhatStandsThereChangesNoByte)
{
    OpcPackage package = openWithCore("<dc:title>same</dc:title>  <!-- a remark -->");
    ASSERT_TRUE(package.packageProperties().setTitle(u8"same"));
    (void)saved(package);
    EXPECT_EQ(readFile(m_folder / "saved.zip"), readFile(m_folder / "p.zip"));
}

TEST_F(OpcPackagePropertiesTest, NoDateIsTouchedThatNobodySet)
{
    OpcPackage package = openWithCore("<dc:title>old</dc:title>"
                                      "<dcterms:modified xsi:type='dcterms:W3CDTF'>2001-01-01T00:00:00.123Z"
                                      "</dcterms:modified>");
    ASSERT_TRUE(package.packageProperties().setTitle(u8"new"));
    OpcPackage read = saved(package);
    EXPECT_EQ(read.packageProperties().modified().value().toXSDDateTime().value(),
              String2{u8"2001-01-01T00:00:00.123Z"});
    EXPECT_EQ(read.packageProperties().created().error(), code(OpcError::propertyNotSet));
}

TEST_F(OpcPackagePropertiesTest, SeveralRelationshipsToCorePropertiesAreRefused)
{
    PackageFile file;
    std::string twice = coreRelationship;
    twice += "<Relationship Id='d' Target='core.xml' "
             "Type='http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties'/>";
    OpcPackage package = open(file.addContentTypes(coreType).addRelationships(twice).add("core.xml", coreDocument("")));
    EXPECT_EQ(package.packageProperties().title().error(), code(OpcError::severalCoreProperties));
    EXPECT_EQ(package.packageProperties().setTitle(u8"t").error(), code(OpcError::severalCoreProperties));
}

TEST_F(OpcPackagePropertiesTest, CorePropertiesOfAnotherContentTypeOrOutsideAreRefused)
{
    PackageFile typed;
    OpcPackage package =
        open(typed.addContentTypes().addRelationships(coreRelationship).add("core.xml", coreDocument("")));
    EXPECT_EQ(package.packageProperties().title().error(), code(OpcError::invalidCoreProperties));
    PackageFile outside;
    OpcPackage other = open(outside.addContentTypes().addRelationships(
        "<Relationship Id='c' Target='http://out.example/core.xml' TargetMode='External' "
        "Type='http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties'/>"));
    EXPECT_EQ(other.packageProperties().title().error(), code(OpcError::invalidCoreProperties));
}

TEST_F(OpcPackagePropertiesTest, ASetterChangesNothingWhenThePresentPartCannotBeRead)
{
    OpcPackage package = openWithCore("<dc:title>one</dc:title><dc:title>two</dc:title>");
    EXPECT_EQ(package.packageProperties().title().error(), code(OpcError::invalidCoreProperties));
    EXPECT_EQ(package.packageProperties().setCreator(u8"c").error(), code(OpcError::invalidCoreProperties));
    PackageAccess::data(package)->write(toFilePath2(m_folder / "saved.zip")).value();
    EXPECT_EQ(readFile(m_folder / "saved.zip"), readFile(m_folder / "p.zip"));
}

TEST_F(OpcPackagePropertiesTest, ATextThatXmlCannotHoldIsRefusedAndNoPartIsMade)
{
    OpcPackage package = openWithoutCore();
    EXPECT_EQ(package.packageProperties().setTitle(u8"bell \a").error(), code(OpcError::invalidCoreProperties));
    EXPECT_THAT(partNames(package), ElementsAre("/a.txt"));
}
