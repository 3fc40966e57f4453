#include "fuzz/fuzzing.h"
#include "host/core/opc/zip/archive.h"

#include <vector>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

constexpr int maximumDepth = 3;

/// Reads every entry in both ways, which must agree, and every entry that is an archive itself.
void walk(const Zip::ByteSourcePtr& source, int depth)
{
    const auto archive = Zip::Archive::open(source);
    if (!archive)
        return;
    for (std::size_t i = 0; i < (*archive)->entries().size(); ++i) {
        std::vector<std::byte> streamed;
        const auto stream = (*archive)->stream(i, [&](std::span<const std::byte> bytes) {
            streamed.insert(streamed.end(), bytes.begin(), bytes.end());
            return Expected<void, ErrorCode2>{};
        });
        const auto read = (*archive)->read(i);
        Fuzzing::require(read.hasValue() == stream.hasValue(), "reading and streaming have one verdict");
        Fuzzing::require(!read || *read == streamed, "reading and streaming give the same bytes");
        if (const auto nested = (*archive)->openNested(i); nested && depth < maximumDepth)
            walk(*nested, depth + 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = Fuzzing::bytesOf(data, size);
    walk(Zip::memorySource({bytes.begin(), bytes.end()}, "fuzz.zip"), 0);
    return 0;
}
