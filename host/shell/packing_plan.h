#pragma once

#include "host/shell/command_line.h"
#include "host/shell/command_output.h"
#include "kelvaris/system/expected.h"

#include <cstdint>
#include <string>
#include <vector>

namespace HostShell {

/// A file that goes into a bundle, and the part that it becomes.
struct PlannedPart
{
    std::string file;
    std::string part;
    std::uint64_t size = 0;
};

/// What a verb is going to pack, checked before anything is written.
struct PackingPlan
{
    std::vector<PlannedPart> parts; ///< the primary file, or the first example, first
    std::string output;

    std::uint64_t size() const;
};

/// The design's files: directories stand for all files in them and below, but for hidden ones and the output. A file
/// that is named twice is taken once.
Kelvaris::System::Expected<PackingPlan, Refusal> planExample(const CommandLine& line);

/// The examples: directories stand for all bundles (*.kvbdl.zip) in them and below. One that is named twice is taken
/// once.
Kelvaris::System::Expected<PackingPlan, Refusal> planBarrel(const CommandLine& line);

/// The name of a file without its directory and the extensions of bundles: "a/amplifier.kvbdl.zip" -> "amplifier".
std::string stemOf(const std::string& path);

} // namespace HostShell
