#include "fuzz/fuzzing.h"
#include "fuzz/scratch_directory.h"
#include "host/core/opc/package_data.h"
#include "host/core/opc/package_verifier.h"

#include <string>
#include <vector>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;
using Kelvaris::System::IO::OpcPackaging::detail::PackageData;
using Kelvaris::System::IO::OpcPackaging::detail::PackagePtr;
using Kelvaris::System::IO::OpcPackaging::detail::PackageVerifier;
using Kelvaris::System::IO::OpcPackaging::detail::Result;

namespace {

const ScratchDirectory scratch;

/// "name size crc" of each entry.
std::vector<std::string> entriesOf(PackageData& package)
{
    std::vector<std::string> lines;
    for (const Zip::Entry& entry : package.parts().items().archive()->entries())
        lines.push_back(std::string{entry.name} + ' ' + std::to_string(entry.size) + ' ' + std::to_string(entry.crc));
    return lines;
}

void walkParts(PackageData& package)
{
    const auto parts = package.parts().all();
    Fuzzing::require(parts.hasValue(), "a package that was verified has parts");
    for (const auto& part : **parts) {
        const auto found = package.parts().find(part->name);
        Fuzzing::require(found.hasValue() && *found == part, "a part is found by its name");
        if (const auto nested = package.openNested(*part))
            static_cast<void>(PackageVerifier{**nested}.verify());
        const auto relationships = package.relationships().records(part->name);
        Fuzzing::require(relationships.hasValue(), "relationships that were verified can be read");
        for (const auto& relationship : *relationships)
            static_cast<void>(package.findTarget(*relationship));
    }
}

/// Opening and saving changes no entry, and the copy has the verdict of the original.
void requireThatASaveKeepsAll(const PackagePtr& package)
{
    const auto path = toFilePath2(scratch / "copy.zip");
    Fuzzing::require(package->write(path).hasValue(), "what was verified can be saved");
    const auto copy = PackageData::openFile(path);
    Fuzzing::require(copy.hasValue(), "what was saved can be opened");
    Fuzzing::require(PackageVerifier{**copy}.verify().hasValue(), "what was saved keeps the rules");
    Fuzzing::require(entriesOf(**copy) == entriesOf(*package), "a save keeps every entry");
}

void requireThatAnEditCanBeSaved(const PackagePtr& package)
{
    const auto path = toFilePath2(scratch / "edited.zip");
    // a broken part of core properties that nothing leads to is looked at only now
    if (!package->properties().setTitle(u8"title"))
        return;
    Fuzzing::require(package->write(path).hasValue(), "an edited package can be saved");
    const auto copy = PackageData::openFile(path);
    Fuzzing::require(copy.hasValue() && PackageVerifier{**copy}.verify().hasValue(), "an edit keeps the rules");
    const auto title = (*copy)->properties().title();
    Fuzzing::require(title.hasValue() && *title == String2{u8"title"}, "an edit is read back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = Fuzzing::bytesOf(data, size);
    const auto package = PackageData::openSource(Zip::memorySource({bytes.begin(), bytes.end()}, "fuzz.zip"), 0);
    if (!package || !PackageVerifier{**package}.verify())
        return 0;
    walkParts(**package);
    requireThatASaveKeepsAll(*package);
    requireThatAnEditCanBeSaved(*package);
    return 0;
}
