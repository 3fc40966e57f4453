#pragma once

namespace Kelvaris::System {

/// The kinds of files that the host tells apart.
enum class FileType : int {
    unknown = 0,
    schematic,        ///< .kvsch
    script,           ///< .kvscr
    testPlan,         ///< .testplan
    verilogA,         ///< .va
    verilog,          ///< .v
    netlist,          ///< .net .cir .sp
    text,             ///< .txt .md
    html,             ///< .html .htm
    css,              ///< .css
    csv,              ///< .csv
    json,             ///< .json
    xml,              ///< .xml
    png,              ///< .png
    jpeg,             ///< .jpg .jpeg
    svg,              ///< .svg
    pdf,              ///< .pdf
    zip,              ///< .zip
    contentBundle,    ///< .kvbdl.zip
    scriptableBundle, ///< .kvsbd.zip
    barrelOfExamples, ///< .kvexs .kvexs.zip
};

} // namespace Kelvaris::System
