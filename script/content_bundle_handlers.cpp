#include "script/content_bundle_handlers.h"

#include "authoring/content_bundle_reading.h"
#include "kelvaris/system/application.h"
#include "script/arguments.h"
#include "script/results.h"

#include <cstdint>

namespace Script {

using namespace Kelvaris::System;
using Kelvaris::FUNC_ERROR;
using Kelvaris::FUNC_OK;

FUNC_ERROR unpackContentBundle(FuncCallFrame frame)
{
    const FilePath2 bundle = toFilePath2(textArgument(frame, 0));
    const FilePath2 directory = toFilePath2(textArgument(frame, 1));
    const auto unpacked = Authoring::unpackContentBundle(bundle, directory);
    if (!unpacked)
        Application::instance()->logger().error(unpacked.error());
    writeResult(frame, unpacked ? "OK" : "FAILED");
    return FUNC_OK;
}

FUNC_ERROR contentBundleTargets(FuncCallFrame frame)
{
    const String2 relationshipType = toString2(textArgument(frame, 0));
    const FilePath2 bundle = toFilePath2(textArgument(frame, 1));
    const auto targets = Authoring::contentBundleTargets(relationshipType, bundle);
    if (!targets) {
        Application::instance()->logger().error(targets.error());
        return FUNC_OK;
    }
    ResultArray results{frame, static_cast<std::int64_t>(targets->size())};
    for (const FilePath2& target : *targets)
        results.append(toString(target));
    return FUNC_OK;
}

} // namespace Script
