#pragma once

#include "script/func_call_frame.h"

/// Handlers of the functions that pack files into a bundle.
namespace Script {

/// _create_example(files, output, title[, description[, manufacturer[, keywords]]]): "OK", or "FAILED: " and why the
/// bundle could not be written.
Kelvaris::FUNC_ERROR createExample(FuncCallFrame frame);

/// _create_examples(example files, output): "OK", or "FAILED: " and why the barrel could not be written.
Kelvaris::FUNC_ERROR createExamples(FuncCallFrame frame);

} // namespace Script
