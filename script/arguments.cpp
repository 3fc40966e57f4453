#include "script/arguments.h"

#include <cstdint>
#include <stdexcept>

namespace Script {

using namespace Kelvaris::System;

String textArgument(const FuncCallFrame& frame, int index)
{
    const char* const* texts = frame.args->strings(index);
    if (frame.args->count(index) < 1)
        throw std::out_of_range{"argument index out of range"};
    return texts[0];
}

std::vector<String> textsArgument(const FuncCallFrame& frame, int index)
{
    std::vector<String> texts;
    const std::int64_t count = frame.args->count(index);
    for (std::int64_t position = 0; position < count; ++position)
        texts.emplace_back(frame.args->strings(index)[position]);
    return texts;
}

String textArgumentOrEmpty(const FuncCallFrame& frame, int index)
{
    if (frame.args->count(index) > 0)
        return textArgument(frame, index);
    return {};
}

std::optional<String> oneTextArgument(const FuncCallFrame& frame)
{
    if (frame.args->count(0) != 1)
        return {};
    return textArgument(frame, 0);
}

FilePath2 toFilePath2(const String& text)
{
    const std::u8string_view view = text.toStdStringView();
    return {view.data(), view.size()};
}

std::vector<FilePath2> toFilePaths(const std::vector<String>& texts)
{
    std::vector<FilePath2> paths;
    paths.reserve(texts.size());
    for (const String& text : texts)
        paths.push_back(toFilePath2(text));
    return paths;
}

String2 toString2(const String& text)
{
    return text.c_str();
}

} // namespace Script
