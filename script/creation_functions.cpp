// Linked behind the other declarations, so that these two are registered last.

#include "script/creation_handlers.h"
#include "script/func_registration.h"

namespace Script {

namespace {

constexpr auto text = Kelvaris::argTypeStringArray;
constexpr auto texts = Kelvaris::argTypeStringArray;

// clang-format off
const FuncRegistration createExampleFunction{"_create_example", {texts, text, text, text, text, texts}, 3, 6, FuncHandler<&createExample>{}};
const FuncRegistration createExamplesFunction{"_create_examples", {texts, text}, 2, 2, FuncHandler<&createExamples>{}};
// clang-format on

} // namespace

} // namespace Script
