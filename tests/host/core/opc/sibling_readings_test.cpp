#include "host/core/opc/sibling_readings.h"

#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/package_data.h"
#include "tests/host/core/opc/package_file.h"
#include "tests/host/core/opc/zip/raw_archive.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackageParts;
using OpcPackaging::detail::PackagePtr;
using OpcPackaging::detail::SiblingReadings;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const char* const siblingTypes = "<Types xmlns='http://schemas.openxmlformats.org/package/2006/content-types'>"
                                 "<Default Extension='rels' "
                                 "ContentType='application/vnd.openxmlformats-package.relationships+xml'/>"
                                 "<Default Extension='txt' ContentType='text/plain'/></Types>";

std::string relationshipTo(std::string_view target)
{
    return "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>"
           "<Relationship Id='r' Type='http://type' Target='" +
           std::string{target} + "'/></Relationships>";
}

/// One that differs from its siblings in "a.txt" alone.
RawArchive sibling(std::string text)
{
    return {.entries = {deflatedEntry("[Content_Types].xml", siblingTypes),
                        deflatedEntry("_rels/.rels", relationshipTo("a.txt")),
                        deflatedEntry("a.txt", std::move(text))}};
}

class SiblingReadingsTest : public testing::Test
{
protected:
    /// Packages that lie in one, as "/0.txt", "/1.txt", ...
    PackagePtr outer(const std::vector<RawArchive>& siblings, FaultLog* faults = nullptr) const
    {
        PackageFile file;
        file.addContentTypes();
        for (std::size_t i = 0; i < siblings.size(); ++i)
            file.add(std::to_string(i) + ".txt", siblings[i].bytes());
        file.write(m_folder / "outer.zip");
        return PackageData::openFile(toFilePath2(m_folder / "outer.zip"), faults).value();
    }

    static PackagePtr nested(const PackagePtr& outer, std::size_t number)
    {
        return outer->openNested(*outer->findPart('/' + std::to_string(number) + ".txt").value()).value();
    }

    TemporaryFolder m_folder;
};

std::vector<std::string> partNames(const PackagePtr& package)
{
    std::vector<std::string> names;
    for (const auto& part : *package->parts().all().value())
        names.push_back(part->name);
    return names;
}

std::string target(const PackagePtr& package)
{
    return package->relationships().of(Markup::packageSource).value()->all().front().target;
}

Zip::PackedEntry entryOf(const std::string& bytes)
{
    const auto span = std::as_bytes(std::span{bytes});
    return {.bytes = span, .size = span.size(), .crc = 7, .method = Zip::Method::stored};
}

} // namespace

TEST_F(SiblingReadingsTest, EqualBytesAreReadOnce)
{
    const PackagePtr package = outer({sibling("one"), sibling("two")});
    const PackagePtr first = nested(package, 0);
    const PackagePtr second = nested(package, 1);
    EXPECT_EQ(first->relationships().of(Markup::packageSource).value(),
              second->relationships().of(Markup::packageSource).value());
    EXPECT_EQ(partNames(first), partNames(second));
}

TEST_F(SiblingReadingsTest, WhatIsChangedInOneIsNotChangedInTheOthers)
{
    const PackagePtr package = outer({sibling("one"), sibling("two"), sibling("three")});
    const PackagePtr changed = nested(package, 0);
    const PackagePtr other = nested(package, 1);
    EXPECT_EQ(target(changed), target(other));
    ASSERT_TRUE(changed->createPart("/new.bin", "x/y", nullptr));
    ASSERT_TRUE(
        changed->relationships().add(Markup::packageSource, "http://type", "/new.bin", OpcTargetMode::internal));
    ASSERT_TRUE(changed->relationships().remove(Markup::packageSource, "r"));
    EXPECT_EQ(target(changed), "/new.bin");
    for (const PackagePtr& untouched : {other, nested(package, 2)}) {
        EXPECT_EQ(target(untouched), "a.txt");
        EXPECT_THAT(partNames(untouched), ElementsAre("/_rels/.rels", "/a.txt"));
        EXPECT_THAT(untouched->parts().typedNamesWithoutPart().value(), ElementsAre());
        ASSERT_TRUE(untouched->write(toFilePath2(m_folder / "untouched.zip")));
        EXPECT_EQ(readEntries(m_folder / "untouched.zip")[1].second, relationshipTo("a.txt"));
    }
}

TEST_F(SiblingReadingsTest, OtherBytesOfTheSameChecksumAreReadThemselves)
{
    RawArchive liar = sibling("two");
    liar.entries[1].data = deflated(relationshipTo("b.txt")); // told with the checksum of the other
    const PackagePtr package = outer({sibling("one"), liar});
    EXPECT_EQ(target(nested(package, 0)), "a.txt");
    EXPECT_EQ(nested(package, 1)->relationships().of(Markup::packageSource).error(), code(OpcError::checksumMismatch));
}

TEST_F(SiblingReadingsTest, ALocalHeaderThatDiffersIsFoundAlthoughTheBytesAreKnown)
{
    RawArchive liar = sibling("two");
    liar.entries[1].localName = "_rels/.relx";
    const PackagePtr package = outer({sibling("one"), liar});
    EXPECT_EQ(target(nested(package, 0)), "a.txt");
    EXPECT_EQ(nested(package, 1)->relationships().of(Markup::packageSource).error(), code(OpcError::damagedArchive));
}

TEST_F(SiblingReadingsTest, AnErrorIsToldOfEachPackage)
{
    RawArchive broken = sibling("one");
    broken.entries[1] = deflatedEntry("_rels/.rels", "<Relationships");
    const PackagePtr package = outer({broken, broken});
    for (const std::size_t number : {0U, 1U}) {
        const auto error = nested(package, number)->relationships().of(Markup::packageSource).error();
        EXPECT_THAT(toStdString(error.message()), HasSubstr(std::to_string(number) + ".txt"));
    }
}

TEST_F(SiblingReadingsTest, ACheckTellsTheFaultsOfEachPackage)
{
    RawArchive faulty = sibling("one");
    faulty.entries[1] = deflatedEntry("_rels/.rels", relationshipTo("_rels/.rels"));
    FaultLog faults;
    const PackagePtr package = outer({faulty, faulty}, &faults);
    for (const std::size_t number : {0U, 1U})
        ASSERT_TRUE(nested(package, number)->relationships().of(Markup::packageSource));
    ASSERT_EQ(faults.faults().size(), 2U);
    EXPECT_THAT(toStdString(faults.faults()[0].message()), HasSubstr("0.txt"));
    EXPECT_THAT(toStdString(faults.faults()[1].message()), HasSubstr("1.txt"));
}

TEST(SiblingReadings, AreOfOneItemAndOneKind)
{
    SiblingReadings readings;
    const std::string bytes = "bytes";
    readings.keep("a", entryOf(bytes), std::make_shared<int>(1));
    EXPECT_EQ(*readings.find<int>("a", entryOf(bytes)), 1);
    EXPECT_EQ(readings.find<int>("b", entryOf(bytes)), nullptr);
    EXPECT_EQ(readings.find<long>("a", entryOf(bytes)), nullptr);
    EXPECT_EQ(readings.find<int>("a", entryOf("other")), nullptr);
}

TEST(SiblingReadings, AreForgottenFromTheOldestOn)
{
    SiblingReadings readings;
    constexpr int many = 1000;
    for (int i = 0; i < many; ++i)
        readings.keep("a", entryOf(std::to_string(i)), std::make_shared<int>(i));
    EXPECT_EQ(readings.find<int>("a", entryOf("0")), nullptr);
    EXPECT_EQ(*readings.find<int>("a", entryOf(std::to_string(many - 1))), many - 1);
    EXPECT_EQ(*readings.find<int>("a", entryOf(std::to_string(many - 10))), many - 10);
}

TEST(SiblingReadings, LargeOnesAreNotKept)
{
    SiblingReadings readings;
    const std::string large(1'000'000, 'x');
    readings.keep("a", entryOf(large), std::make_shared<int>(1));
    EXPECT_EQ(readings.find<int>("a", entryOf(large)), nullptr);
}
