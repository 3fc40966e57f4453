#include "kelvaris/system/io/mime_type.h"

#include "host/core/text/file_kinds.h"
#include "host/core/text/text_view.h"

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <string>

using namespace Kelvaris::System;

namespace {

std::string mediaType(FileType type)
{
    return std::string{Text::narrow(IO::MIMEType{type}.text())};
}

} // namespace

TEST(MIMEType, KindsOfTheHostHaveTypesOfTheirOwn)
{
    EXPECT_EQ(mediaType(FileType::schematic), "application/vnd.kelvaris.schematic");
    EXPECT_EQ(mediaType(FileType::script), "application/vnd.kelvaris.script");
    EXPECT_EQ(mediaType(FileType::testPlan), "application/vnd.kelvaris.test-plan");
    EXPECT_EQ(mediaType(FileType::netlist), "application/vnd.kelvaris.netlist");
    EXPECT_EQ(mediaType(FileType::contentBundle), "application/vnd.kelvaris.content-bundle+zip");
    EXPECT_EQ(mediaType(FileType::scriptableBundle), "application/vnd.kelvaris.scriptable-bundle+zip");
    EXPECT_EQ(mediaType(FileType::barrelOfExamples), "application/vnd.kelvaris.barrel-of-examples+zip");
}

TEST(MIMEType, CommonKindsHaveTheTypesThatTheWorldKnows)
{
    const std::map<FileType, std::string> expected{
        {FileType::text, "text/plain"},
        {FileType::html, "text/html"},
        {FileType::css, "text/css"},
        {FileType::csv, "text/csv"},
        {FileType::json, "application/json"},
        {FileType::xml, "application/xml"},
        {FileType::png, "image/png"},
        {FileType::jpeg, "image/jpeg"},
        {FileType::svg, "image/svg+xml"},
        {FileType::pdf, "application/pdf"},
        {FileType::zip, "application/zip"},
        {FileType::verilog, "text/x-verilog"},
        {FileType::verilogA, "text/x-verilog-a"},
    };
    for (const auto& [type, text] : expected)
        EXPECT_EQ(mediaType(type), text);
}

TEST(MIMEType, UnknownKindsAreBytes)
{
    EXPECT_EQ(mediaType(FileType::unknown), "application/octet-stream");
    EXPECT_EQ(mediaType(static_cast<FileType>(1000)), "application/octet-stream");
}

TEST(MIMEType, EveryKindHasOneWellFormedTypeOfItsOwn)
{
    std::set<std::string> seen;
    for (int type = 0; type <= static_cast<int>(FileType::barrelOfExamples); ++type) {
        const std::string text = mediaType(static_cast<FileType>(type));
        EXPECT_THAT(text, testing::MatchesRegex("[a-z]+/[a-z0-9.+-]+"));
        EXPECT_TRUE(seen.insert(text).second) << text;
    }
}

TEST(MIMEType, EveryExtensionOfAKindStandsForTheSameType)
{
    for (const Text::FileKind& kind : Text::fileKinds())
        EXPECT_EQ(kind.mediaType, mediaType(kind.type)) << kind.extension;
}

TEST(MIMEType, TakesATextAsItIs)
{
    EXPECT_EQ(IO::MIMEType{String2{u8"no media type"}}.text(), String2{u8"no media type"});
}
