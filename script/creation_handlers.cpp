#include "script/creation_handlers.h"

#include "authoring/barrel_creation.h"
#include "authoring/example_creation.h"
#include "script/arguments.h"
#include "script/results.h"

namespace Script {

using namespace Kelvaris::System;
using Kelvaris::FUNC_ERROR;
using Kelvaris::FUNC_OK;

namespace {

StringVector2 toStringVector2(const std::vector<String>& texts)
{
    // Nobody looks at the results: without memory for a keyword there is none for the rest of the call either.
    StringVector2 result;
    (void)result.reserve(texts.size());
    for (const String& text : texts)
        (void)result.push_back(toString2(text));
    return result;
}

/// A bundle that cannot be written is no failed call: the script is told in words.
void writeOutcome(const FuncCallFrame& frame, const Expected<void, ErrorCode2>& written)
{
    if (written)
        return writeResult(frame, "OK");
    writeResult(frame, String{"FAILED: "}.append(written.error().message().data()));
}

} // namespace

FUNC_ERROR createExample(FuncCallFrame frame)
{
    const std::vector<FilePath2> files = toFilePaths(textsArgument(frame, 0));
    const FilePath2 output = toFilePath2(textArgument(frame, 1));
    Authoring::ExampleTexts texts;
    texts.title = toString2(textArgument(frame, 2));
    texts.description = toString2(textArgumentOrEmpty(frame, 3));
    texts.manufacturer = toString2(textArgumentOrEmpty(frame, 4));
    texts.keywords = toStringVector2(textsArgument(frame, 5));
    writeOutcome(frame, Authoring::createExample(files, output, texts));
    return FUNC_OK;
}

FUNC_ERROR createExamples(FuncCallFrame frame)
{
    const std::vector<FilePath2> exampleFiles = toFilePaths(textsArgument(frame, 0));
    const FilePath2 output = toFilePath2(textArgument(frame, 1));
    writeOutcome(frame, Authoring::createExamples(exampleFiles, output));
    return FUNC_OK;
}

} // namespace Script
