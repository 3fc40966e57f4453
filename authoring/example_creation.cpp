#include "authoring/example_creation.h"

#include "authoring/bundle_part_uris.h"
#include "kelvaris/system/io/bundle/example_bundle.h"

#include <cstddef>

namespace Authoring {

using namespace Kelvaris::System;
using IO::Bundle::ExampleBundle;
using IO::OpcPackaging::OpcPackageCompressionType;
using IO::OpcPackaging::OpcPackagePartUri;

namespace {

/// A property that cannot be set is deliberately passed over: the bundle with its files is worth more than the text.
void describe(ExampleBundle& bundle, const OpcPackagePartUri& primaryFile, const ExampleTexts& texts)
{
    (void)bundle.setPrimaryFile(primaryFile);
    (void)bundle.setTitle(texts.title);
    (void)bundle.setDescription(texts.description);
    (void)bundle.setManufacturer(texts.manufacturer);
    (void)bundle.setKeywords(texts.keywords);
}

} // namespace

Expected<void, ErrorCode2> createExample(const std::vector<FilePath2>& files, const FilePath2& output,
                                         const ExampleTexts& texts)
{
    const std::vector<OpcPackagePartUri> uris = bundlePartUris(L"content", files);
    ExampleBundle bundle = ExampleBundle::create().value();
    for (std::size_t index = 0; index < files.size(); ++index) {
        // the part itself is of no interest, only that there is one
        (void)bundle.addFile(files[index], uris[index], OpcPackageCompressionType::normal).value();
    }
    describe(bundle, uris.front(), texts);
    return bundle.writeToFile(output);
}

} // namespace Authoring
