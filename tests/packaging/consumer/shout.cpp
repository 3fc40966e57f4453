// A plug-in with one script function: _shout(text) gives the text in capital letters.

#include <kelvaris/support/func_construct.h>
#include <kelvaris/system/qt/text_bridge.h>

#include <cstring>
#include <new>

namespace {

using namespace Kelvaris;
using namespace Kelvaris::System;

FUNC_ERROR shout(const FuncArgsMinimal& args, FuncResultMinimal* result, YRef<MessageHandler>)
{
    if (args.count(0) < 1)
        return FUNC_FAILED;
    const auto capitals = qStringToUTF8(QString::fromUtf8(args.strings(0)[0]).toUpper());
    if (!capitals)
        return FUNC_FAILED;
    const std::size_t size = capitals->length() + 1;
    char* const text = static_cast<char*>(::operator new(size));
    std::memcpy(text, capitals->data(), size);
    result->allocateStrings(1)[0] = text;
    return FUNC_OK;
}

const argType arguments[FuncConstruct::declarationLength] = {argTypeStringArray};
const FuncConstruct shoutFunction{"_shout", arguments, 1, 1, &shout};

} // namespace
