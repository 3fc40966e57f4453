#pragma once

#include "kelvaris/support/func_construct.h"
#include "script/call_log.h"
#include "script/func_call_frame.h"

#include <exception>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Script {

/// A handler as a type of its own, which is what a registration is generated from.
template <Kelvaris::FUNC_ERROR (*Function)(FuncCallFrame)>
struct FuncHandler
{
    Kelvaris::FUNC_ERROR operator()(FuncCallFrame frame) const { return Function(std::move(frame)); }
};

/// Declares a script function for as long as the object lives. Functions are static objects, one for each:
///
///     const FuncRegistration filename{"_filename", {argTypeStringArray}, 1, 1, FuncHandler<&filenameHandler>{}};
///
/// Between the host and the handler stands the entry function, generated once for each handler: it logs the call and
/// lets no exception out.
///
/// @tparam HandlerType  a stateless callable that takes a `FuncCallFrame` and returns `FUNC_ERROR`; it answers
///                      `FUNC_OK` on every path that does not throw, and belongs to one function only
template <class HandlerType>
class FuncRegistration
{
    static_assert(std::is_empty_v<HandlerType> && std::is_default_constructible_v<HandlerType>);

public:
    /// @param name       a literal
    /// @param arguments  one entry for each argument; one entry even for a function without arguments
    /// @param minimum    fewest arguments of a call; the host sees to it
    /// @param maximum    most arguments of a call; the host sees to it
    FuncRegistration(const char* name, std::vector<Kelvaris::argType> arguments, int minimum, int maximum, HandlerType)
        : m_construct{kept(name), kept(std::move(arguments)), minimum, maximum, &entry}
    {
    }

private:
    // Name and declaration are function-local statics, complete before the registration is: so they are destroyed
    // after it, and the host never holds a function whose name is gone.

    static const std::string& functionName(const char* name = "")
    {
        static const std::string kept{name};
        return kept;
    }

    static const char* kept(const char* name)
    {
        functionName(name);
        return name;
    }

    static const Kelvaris::argType* kept(std::vector<Kelvaris::argType> declared)
    {
        static std::vector<Kelvaris::argType> arguments{std::move(declared)};
        arguments.resize(Kelvaris::FuncConstruct::declarationLength);
        return arguments.data();
    }

    static Kelvaris::FUNC_ERROR entry(const Kelvaris::FuncArgsMinimal& args, Kelvaris::FuncResultMinimal* result,
                                      Kelvaris::YRef<Kelvaris::MessageHandler> messages)
    {
        try {
            logCall(functionName());
            const Kelvaris::FUNC_ERROR status = HandlerType{}(FuncCallFrame{&args, result, messages});
            // The end of a call has no wording of its own: a call that went well shows as two equal lines.
            logCall(functionName());
            return status;
        } catch (const std::exception& failure) {
            logFailure(functionName(), failure.what());
        } catch (...) {
            logUnknownFailure(functionName());
        }
        return Kelvaris::FUNC_FAILED;
    }

    Kelvaris::FuncConstruct m_construct;
};

} // namespace Script
