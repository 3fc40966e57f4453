#include "tests/host/shell/test_functions.h"

#include "kelvaris/support/func_construct.h"
#include "kelvaris/system/application.h"

#include <array>
#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace Kelvaris;

void write(FuncResultMinimal& result, const std::vector<std::string>& texts)
{
    char** places = result.allocateStrings(static_cast<std::int64_t>(texts.size()));
    for (const std::string& text : texts) {
        *places = static_cast<char*>(::operator new(text.size() + 1));
        std::memcpy(*places++, text.c_str(), text.size() + 1);
    }
}

FUNC_ERROR join(const FuncArgsMinimal& args, FuncResultMinimal* result, YRef<MessageHandler>)
{
    std::vector<std::string> joined;
    for (int i = 0; i < args.argumentCount(); ++i) {
        std::string text;
        for (int k = 0; k < args.count(i); ++k)
            text += (k == 0 ? "" : "+") + std::string{args.strings(i)[k]};
        joined.push_back(text);
    }
    write(*result, joined);
    return FUNC_OK;
}

FUNC_ERROR fail(const FuncArgsMinimal&, FuncResultMinimal*, YRef<MessageHandler>)
{
    System::Application::instance()->logger().error("script/function", "test_fail failed: on purpose");
    return FUNC_FAILED;
}

FUNC_ERROR twoResults(const FuncArgsMinimal&, FuncResultMinimal* result, YRef<MessageHandler>)
{
    write(*result, {"ä😀", "two\nlines"});
    return FUNC_OK;
}

using Declaration = std::array<argType, FuncConstruct::declarationLength>;
constexpr Declaration declaration{argTypeStringArray, argTypeStringArray, argTypeStringArray};

} // namespace

struct TestFunctions::Registered
{
    FuncConstruct joined{"test_join", declaration.data(), 1, 3, join};
    FuncConstruct failing{"test_fail", declaration.data(), 0, 0, fail};
    FuncConstruct results{"test_results", declaration.data(), 0, 0, twoResults};
};

TestFunctions::TestFunctions() : m_registered{new Registered} {}

TestFunctions::~TestFunctions()
{
    delete m_registered;
}
