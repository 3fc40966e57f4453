#include "host/core/bundle/bundle_kind.h"
#include "host/core/bundle/bundle_layout.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System::IO::Bundle;
using testing::HasSubstr;

namespace {

std::string document()
{
    return readFile(std::filesystem::path{HOLLERWICK_SOURCE_DIRECTORY} / "docs/format.md");
}

} // namespace

TEST(FormatDocument, NamesEveryRelationshipType)
{
    constexpr std::string_view base = "http://schemas.kelvaris.example/package/2025/relationships/";
    EXPECT_THAT(document(), HasSubstr("`" + std::string{base} + "`"));
    for (const std::string_view type :
         {Layout::contentRelationship, Layout::primaryFileRelationship, Layout::documentationRelationship,
          Layout::exampleRelationship, Layout::rootSchematicRelationship, Layout::descendantSchematicRelationship,
          Layout::scriptRelationship, Layout::propertiesRelationship}) {
        ASSERT_TRUE(type.starts_with(base)) << type;
        EXPECT_THAT(document(), HasSubstr("| `" + std::string{type.substr(base.size())} + "` |"));
    }
}

TEST(FormatDocument, NamesEveryKind)
{
    using Kelvaris::System::IO::Bundle::detail::BundleKind;
    for (const BundleKind kind : {BundleKind::content, BundleKind::example, BundleKind::barrelOfExamples,
                                  BundleKind::schematic, BundleKind::scriptable})
        EXPECT_THAT(document(), HasSubstr("| `" + std::string{detail::kindName(kind)} + "` |"));
}

TEST(FormatDocument, NamesPartsMediaTypesAndTheNamespace)
{
    for (const std::string_view name :
         {Layout::propertiesPartName, Layout::propertiesMediaType, Layout::exampleMediaType, Layout::scriptPartName,
          Layout::documentationPartNames[0], Layout::documentationPartNames[1], Layout::documentationPartNames[2]})
        EXPECT_THAT(document(), HasSubstr("`" + std::string{name} + "`"));
    EXPECT_THAT(document(), HasSubstr("xmlns=\"" + std::string{Layout::propertiesNamespace} + "\""));
}
