#include "fuzz/fuzzing.h"
#include "fuzz/scratch_directory.h"
#include "kelvaris/system/io/bundle/content_bundle.h"

using namespace Kelvaris::System::IO;

namespace {

const ScratchDirectory scratch;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    scratch.clear();
    const auto path = scratch.write("outer/in.zip", Fuzzing::textOf(data, size));
    scratch.write("outer/target/content/mine.txt", "not to be touched");
    scratch.write("outer/a.txt", "not to be touched");
    const auto target = scratch / "outer/target";
    const auto outside = contentsOf(scratch.path(), target);
    const auto before = contentsOf(target);

    auto bundle = Bundle::ContentBundle::open(toFilePath2(path));
    if (!bundle)
        return 0;
    const bool isUnpacked = bundle->unpack(toFilePath2(target)).hasValue();
    Fuzzing::require(contentsOf(scratch.path(), target) == outside, "nothing outside of the directory changes");
    const auto after = contentsOf(target);
    Fuzzing::require(isUnpacked || after == before, "a failure leaves nothing behind");
    for (const auto& [name, contents] : after)
        Fuzzing::require(!contents.starts_with("neither"), "nothing but files and directories is made");
    for (const auto& [name, contents] : before)
        Fuzzing::require(after.contains(name) && after.at(name) == contents, "what exists is not overwritten");
    if (!isUnpacked || after == before)
        return 0;
    Fuzzing::require(!bundle->unpack(toFilePath2(target)).hasValue(), "what was unpacked is not overwritten");
    Fuzzing::require(contentsOf(target) == after, "a second time changes nothing");
    return 0;
}
