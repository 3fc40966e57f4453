#pragma once

#include "script/func_call_frame.h"

/// Handlers of the functions that read a content bundle.
namespace Script {

/// _unpack_content_bundle(bundle, directory): "OK" or "FAILED"; the log tells why.
Kelvaris::FUNC_ERROR unpackContentBundle(FuncCallFrame frame);

/// _content_bundle_targets(relationship type, bundle): a local path for each target; none when the bundle cannot be
/// read, and the log tells why.
Kelvaris::FUNC_ERROR contentBundleTargets(FuncCallFrame frame);

} // namespace Script
