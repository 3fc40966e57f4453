#include "script/path_handlers.h"

#include "authoring/temporary_directory.h"
#include "authoring/windows_path.h"
#include "script/arguments.h"
#include "script/results.h"

#include <string>

namespace Script {

using Kelvaris::FUNC_ERROR;
using Kelvaris::FUNC_OK;

FUNC_ERROR filename(FuncCallFrame frame)
{
    const std::wstring path = textArgument(frame, 0).toStdWString();
    writeResult(frame, std::wstring{Authoring::pathFilename(path)});
    return FUNC_OK;
}

FUNC_ERROR parentPath(FuncCallFrame frame)
{
    const std::wstring path = textArgument(frame, 0).toStdWString();
    writeResult(frame, std::wstring{Authoring::pathParent(path)});
    return FUNC_OK;
}

FUNC_ERROR createTemporaryDirectory(FuncCallFrame frame)
{
    // No result tells the script of a failure, and nothing else does.
    if (const auto directory = Authoring::createTemporaryDirectory())
        writeResult(frame, toString(*directory));
    return FUNC_OK;
}

FUNC_ERROR bundleTest(FuncCallFrame)
{
    return FUNC_OK;
}

} // namespace Script
