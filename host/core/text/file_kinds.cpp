#include "host/core/text/file_kinds.h"

namespace Kelvaris::System::Text {

namespace {

constexpr std::string_view schematic = "application/vnd.kelvaris.schematic";
constexpr std::string_view script = "application/vnd.kelvaris.script";
constexpr std::string_view testPlan = "application/vnd.kelvaris.test-plan";
constexpr std::string_view netlist = "application/vnd.kelvaris.netlist";
constexpr std::string_view contentBundle = "application/vnd.kelvaris.content-bundle+zip";
constexpr std::string_view scriptableBundle = "application/vnd.kelvaris.scriptable-bundle+zip";
constexpr std::string_view barrelOfExamples = "application/vnd.kelvaris.barrel-of-examples+zip";

constexpr FileKind kinds[] = {
    {FileType::contentBundle, ".kvbdl.zip", contentBundle},
    {FileType::scriptableBundle, ".kvsbd.zip", scriptableBundle},
    {FileType::barrelOfExamples, ".kvexs.zip", barrelOfExamples},
    {FileType::barrelOfExamples, ".kvexs", barrelOfExamples},
    {FileType::schematic, ".kvsch", schematic},
    {FileType::script, ".kvscr", script},
    {FileType::testPlan, ".testplan", testPlan},
    {FileType::verilogA, ".va", "text/x-verilog-a"},
    {FileType::verilog, ".v", "text/x-verilog"},
    {FileType::netlist, ".net", netlist},
    {FileType::netlist, ".cir", netlist},
    {FileType::netlist, ".sp", netlist},
    {FileType::text, ".txt", "text/plain"},
    {FileType::text, ".md", "text/plain"},
    {FileType::html, ".html", "text/html"},
    {FileType::html, ".htm", "text/html"},
    {FileType::css, ".css", "text/css"},
    {FileType::csv, ".csv", "text/csv"},
    {FileType::json, ".json", "application/json"},
    {FileType::xml, ".xml", "application/xml"},
    {FileType::png, ".png", "image/png"},
    {FileType::jpeg, ".jpg", "image/jpeg"},
    {FileType::jpeg, ".jpeg", "image/jpeg"},
    {FileType::svg, ".svg", "image/svg+xml"},
    {FileType::pdf, ".pdf", "application/pdf"},
    {FileType::zip, ".zip", "application/zip"},
};

} // namespace

std::span<const FileKind> fileKinds() noexcept
{
    return kinds;
}

} // namespace Kelvaris::System::Text
