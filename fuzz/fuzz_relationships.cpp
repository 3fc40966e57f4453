#include "fuzz/fuzzing.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/markup/relationships.h"
#include "host/core/opc/markup/target_reference.h"

#include <algorithm>
#include <string>

using namespace Kelvaris::System::IO::OpcPackaging;
using namespace Kelvaris::System::IO::OpcPackaging::Markup;

namespace {

bool isSame(const Relationship& left, const Relationship& right)
{
    return left.id == right.id && left.type == right.type && left.target == right.target && left.mode == right.mode;
}

void requireTargets(const Relationships& relationships, std::string_view source)
{
    for (const Relationship& relationship : relationships.all()) {
        Fuzzing::require(relationships.find(relationship.id) != nullptr, "a relationship is found by its id");
        if (relationship.mode == OpcTargetMode::external)
            continue;
        const ResolvedTarget target = resolveTarget(source, relationship.target);
        Fuzzing::require(target.isPartName() == partNameFault(target.partName).empty(),
                         "a target is a part name or none");
        Fuzzing::require(!isRelationshipsPartName(target.partName), "no target is a relationships part");
    }
}

void requireSame(const Relationships& left, const Relationships& right, const char* promise)
{
    Fuzzing::require(std::ranges::equal(left.all(), right.all(), isSame), promise);
}

void run(std::span<const std::byte> bytes, std::string_view source)
{
    const auto relationships = Relationships::parse(bytes, source, "fuzz");
    if (!relationships)
        return;
    requireTargets(*relationships, source);
    const std::string text = relationships->serialised();
    const auto again = Relationships::parse(Fuzzing::bytesOf(text), source, "fuzz");
    Fuzzing::require(again.hasValue(), "what was read is written by the rules");
    requireSame(*relationships, *again, "what was written is read again");
    Relationships edited = *relationships;
    Fuzzing::require(edited.add(source, "urn:x", "/new.txt", OpcTargetMode::internal).hasValue(), "one can be added");
    if (!relationships->all().empty())
        edited.remove(relationships->all().front().id);
    const auto read = Relationships::parse(Fuzzing::bytesOf(edited.serialised()), source, "fuzz");
    Fuzzing::require(read.hasValue(), "edited relationships keep the rules");
    requireSame(edited, *read, "what was edited is read again");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = Fuzzing::bytesOf(data, size);
    run(bytes, "/");
    run(bytes, "/content/a/b.txt");
    return 0;
}
