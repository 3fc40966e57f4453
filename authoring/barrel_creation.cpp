#include "authoring/barrel_creation.h"

#include "authoring/bundle_part_uris.h"
#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"

#include <cstddef>

namespace Authoring {

using namespace Kelvaris::System;
using IO::Bundle::BarrelOfExamplesBundle;

Expected<void, ErrorCode2> createExamples(const std::vector<FilePath2>& exampleFiles, const FilePath2& output)
{
    const auto uris = bundlePartUris(L"examples", exampleFiles);
    BarrelOfExamplesBundle barrel = BarrelOfExamplesBundle::create().value();
    for (std::size_t index = 0; index < exampleFiles.size(); ++index) {
        // the part itself is of no interest, only that there is one
        (void)barrel.addExample(exampleFiles[index], uris[index]).value();
    }
    return barrel.writeToFile(output);
}

} // namespace Authoring
