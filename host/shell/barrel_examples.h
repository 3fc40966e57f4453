#pragma once

#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"

#include <string>
#include <vector>

namespace HostShell {

struct NamedExample
{
    Kelvaris::System::IO::Bundle::ExamplePart part;
    std::string name; ///< of the part
};

using FoundExample = Kelvaris::System::Expected<NamedExample, Kelvaris::System::ErrorCode2>;

/// The examples of a barrel in their order, each or why it cannot be found.
Kelvaris::System::Expected<std::vector<FoundExample>, Kelvaris::System::ErrorCode2>
examplesOf(const Kelvaris::System::IO::Bundle::BarrelOfExamplesBundle& barrel);

} // namespace HostShell
