#include "script/window_handlers.h"

#include "browsers/example_browser2.h"
#include "browsers/open_examples_browser.h"
#include "browsers/open_prototype_examples_widget.h"
#include "editors/example_bundle_editor.h"
#include "editors/examples_bundle_editor.h"
#include "editors/package_viewers.h"
#include "editors/scriptable_bundle_editor.h"
#include "script/arguments.h"
#include "script/results.h"

#include <optional>
#include <string>

namespace Script {

using namespace Kelvaris::System;
using Kelvaris::FUNC_ERROR;
using Kelvaris::FUNC_OK;

namespace {

std::optional<FilePath2> onePathArgument(const FuncCallFrame& frame)
{
    if (const auto text = oneTextArgument(frame))
        return toFilePath2(*text);
    return {};
}

std::optional<std::wstring> oneWideTextArgument(const FuncCallFrame& frame)
{
    if (const auto text = oneTextArgument(frame))
        return text->toStdWString();
    return {};
}

} // namespace

FUNC_ERROR exampleBrowser2(FuncCallFrame frame)
{
    const std::vector<FilePath2> barrels = toFilePaths(textsArgument(frame, 0));
    const FilePath2 targetDirectory = toFilePath2(textArgument(frame, 1));
    // The only failure is that the user has closed the dialog, which a script sees in there being no result.
    if (const auto created = runExampleBrowser2(barrels, targetDirectory, {}, nullptr))
        writeResult(frame, toString(*created));
    return FUNC_OK;
}

FUNC_ERROR examplesBundleEditor(FuncCallFrame frame)
{
    IO::Bundle::openExamplesBundleEditor(onePathArgument(frame));
    return FUNC_OK;
}

FUNC_ERROR exampleBundleEditor(FuncCallFrame frame)
{
    IO::Bundle::openExampleBundleEditor(onePathArgument(frame));
    return FUNC_OK;
}

FUNC_ERROR scriptableBundleEditor(FuncCallFrame frame)
{
    openScriptableBundleEditor(oneWideTextArgument(frame));
    return FUNC_OK;
}

FUNC_ERROR packageBrowser(FuncCallFrame frame)
{
    openPackageBrowser(onePathArgument(frame));
    return FUNC_OK;
}

FUNC_ERROR examplesBrowser(FuncCallFrame frame)
{
    openExamplesBrowser(onePathArgument(frame));
    return FUNC_OK;
}

FUNC_ERROR prototypeExampleBrowser(FuncCallFrame frame)
{
    openPrototypeExamplesWidget(onePathArgument(frame));
    return FUNC_OK;
}

FUNC_ERROR bundleViewer(FuncCallFrame frame)
{
    openBundleViewer(toFilePath2(textArgument(frame, 0)));
    return FUNC_OK;
}

} // namespace Script
