#include "fuzz/fuzzing.h"
#include "host/core/opc/markup/core_properties.h"

using namespace Kelvaris::System::IO::OpcPackaging::Markup;

namespace {

void requireEdits(const CoreProperties& read)
{
    for (std::size_t i = 0; i < corePropertyCount; ++i) {
        const auto property = static_cast<CoreProperty>(i);
        const char* const text = isDate(property) ? "2026-03-01T12:30:00Z" : "a <b> & \"c\"";
        CoreProperties edited = read;
        if (!edited.set(property, text))
            continue;
        const auto again = CoreProperties::parse(Fuzzing::bytesOf(edited.serialised()), "fuzz");
        Fuzzing::require(again.hasValue(), "edited properties keep the rules");
        Fuzzing::require(again->text(property) == text, "what was set is read back");
        edited.remove(property);
        const auto without = CoreProperties::parse(Fuzzing::bytesOf(edited.serialised()), "fuzz");
        Fuzzing::require(without.hasValue() && !without->text(property), "what was removed is gone");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto properties = CoreProperties::parse(Fuzzing::bytesOf(data, size), "fuzz");
    if (!properties)
        return 0;
    const std::string text = properties->serialised();
    const auto again = CoreProperties::parse(Fuzzing::bytesOf(text), "fuzz");
    Fuzzing::require(again.hasValue() && again->serialised() == text, "what was read is written as it stood");
    for (std::size_t i = 0; i < corePropertyCount; ++i) {
        const auto property = static_cast<CoreProperty>(i);
        Fuzzing::require(again->text(property) == properties->text(property), "what was written is read again");
    }
    requireEdits(*properties);
    return 0;
}
