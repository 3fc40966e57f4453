#pragma once

#include "kelvaris/export.h"
#include "kelvaris/support/arg_type.h"
#include "kelvaris/support/func_args.h"
#include "kelvaris/support/func_error.h"
#include "kelvaris/support/func_result.h"
#include "kelvaris/support/message_handler.h"
#include "kelvaris/support/y_ref.h"

namespace Kelvaris {

/// The entry of a script function. It lets no exception out.
using FuncEntry = FUNC_ERROR (*)(const FuncArgsMinimal&, FuncResultMinimal*, YRef<MessageHandler>);

/// Registers a script function with the host for as long as the object lives.
///
/// A library makes one static object for each function that it adds; loading the library registers them in the
/// order of construction, unloading removes them in reverse.
class KELVARIS_SUPPORT_API FuncConstruct
{
public:
    /// The length of a declaration array.
    static constexpr int declarationLength = 32;

    /// @param name         NUL-terminated; must outlive this object, as must `arguments`
    /// @param arguments    array of `declarationLength` entries: one for each argument, the rest `argTypeNone`
    /// @param minimum      fewest arguments that a call may have; the host refuses fewer
    /// @param maximum      most arguments that a call may have; the host refuses more
    /// @param entry        called for each call, on the host's GUI thread
    /// @throws std::invalid_argument  the name is empty or registered already
    FuncConstruct(const char* name, const argType* arguments, int minimum, int maximum, FuncEntry entry);
    ~FuncConstruct();

    FuncConstruct(const FuncConstruct&) = delete;
    FuncConstruct& operator=(const FuncConstruct&) = delete;

private:
    const char* m_name;
};

} // namespace Kelvaris
