#include "fuzz/fuzzing.h"
#include "host/core/opc/markup/content_types.h"
#include "host/core/opc/markup/media_type_text.h"

#include <string>

using namespace Kelvaris::System::IO::OpcPackaging::Markup;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto types = ContentTypes::parse(Fuzzing::bytesOf(data, size), "fuzz");
    if (!types)
        return 0;
    for (const std::string& name : types->overriddenNames()) {
        const auto type = types->typeOf(name);
        Fuzzing::require(type.has_value() && mediaTypeFault(*type).empty(), "every override gives a media type");
    }
    const std::string text = types->serialised();
    const auto again = ContentTypes::parse(Fuzzing::bytesOf(text), "fuzz");
    Fuzzing::require(again.hasValue() && again->serialised() == text, "what was read is written as it stood");
    ContentTypes edited = *types;
    for (const char* name : {"/content/a.txt", "/_rels/.rels", "/b", "/c.d;e"}) {
        for (const char* type : {"text/plain", "a/b;c=\"d e\""})
            Fuzzing::require(edited.set(name, type, ContentTypes::ExtensionUse::free).hasValue(), "a type can be set");
    }
    const auto read = ContentTypes::parse(Fuzzing::bytesOf(edited.serialised()), "fuzz");
    Fuzzing::require(read.hasValue(), "edited content types keep the rules");
    for (const char* name : {"/content/a.txt", "/_rels/.rels", "/b", "/c.d;e"})
        Fuzzing::require(read->typeOf(name) == edited.typeOf(name), "what was set is read back");
    return 0;
}
