#include "host/core/bundle/bundle_properties.h"

#include "tests/host/core/opc/package_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using Kelvaris::System::IO::Bundle::detail::BundleKind;
using testing::HasSubstr;

namespace {

auto parse(std::string_view text)
{
    return Bundle::detail::parseBundleProperties(std::as_bytes(std::span{text}), "f.zip: /bundle.xml");
}

std::string document(std::string_view elements)
{
    std::string text = "<bundle xmlns='http://schemas.kelvaris.example/package/2025/bundle'>";
    text += elements;
    return text + "</bundle>";
}

auto withManufacturer(const std::string& text, std::string_view manufacturer)
{
    return Bundle::detail::withManufacturer(std::as_bytes(std::span{text}), manufacturer, "f.zip: /bundle.xml");
}

} // namespace

TEST(BundleProperties, ANewDocumentTellsItsKind)
{
    const auto properties = parse(Bundle::detail::bundlePropertiesText(BundleKind::schematic)).value();
    EXPECT_EQ(properties.kindName, "schematic");
    EXPECT_FALSE(properties.manufacturer);
}

TEST(BundleProperties, ElementsThatNobodyKnowsAreLeftAlone)
{
    const auto properties = parse(document("<x/><kind>example</kind><y xmlns='other'><kind>no</kind></y>"
                                           "<manufacturer>A &amp; B</manufacturer>"))
                                .value();
    EXPECT_EQ(properties.kindName, "example");
    EXPECT_EQ(properties.manufacturer, "A & B");
}

TEST(BundleProperties, BrokenDocumentsAreErrorsWithTheirNameAndTheReason)
{
    const std::string twice = document("<kind>example</kind><kind>example</kind>");
    const std::string none = document("<manufacturer>A</manufacturer>");
    for (const std::string& text :
         {std::string{}, std::string{"<bundle"}, std::string{"<bundle><kind>example</kind></bundle>"}, twice, none,
          "<!DOCTYPE bundle>" + document("<kind>example</kind>"),
          document("<kind>example</kind><manufacturer/><manufacturer/>")}) {
        const auto properties = parse(text);
        ASSERT_FALSE(properties) << text;
        EXPECT_EQ(properties.error(), code(BundleError::invalidProperties)) << text;
        EXPECT_THAT(toStdString(properties.error().message()), HasSubstr("f.zip: /bundle.xml"));
    }
}

TEST(BundleProperties, AManufacturerIsAddedReplacedAndRemovedAndTheRestStays)
{
    const std::string old = document("<!-- a remark --><kind>example</kind><z a='1'/>");
    const std::string added = withManufacturer(old, "A & B").value();
    EXPECT_EQ(parse(added).value().manufacturer, "A & B");
    EXPECT_THAT(added, HasSubstr("<!-- a remark --><kind>example</kind><z a='1'/>"));
    const std::string replaced = withManufacturer(added, "C").value();
    EXPECT_EQ(parse(replaced).value().manufacturer, "C");
    const std::string removed = withManufacturer(replaced, "").value();
    EXPECT_FALSE(parse(removed).value().manufacturer);
    EXPECT_THAT(removed, HasSubstr("<z a='1'/>"));
    EXPECT_EQ(withManufacturer(old, "").value(), old);
}

TEST(BundleProperties, AManufacturerTakesThePrefixOfTheDocument)
{
    const std::string old = "<b:bundle xmlns:b='http://schemas.kelvaris.example/package/2025/bundle'>"
                            "<b:kind>example</b:kind></b:bundle>";
    EXPECT_EQ(parse(withManufacturer(old, "A").value()).value().manufacturer, "A");
}

TEST(BundleProperties, AManufacturerThatXmlCannotHoldIsRefused)
{
    EXPECT_EQ(withManufacturer(document("<kind>example</kind>"), "\x01").error(), code(BundleError::invalidProperties));
    EXPECT_EQ(withManufacturer(document("<kind>example</kind>"), "\xFF").error(), code(BundleError::invalidProperties));
}
