#pragma once

#include "kelvaris/export.h"
#include "kelvaris/support/arg_type.h"
#include "kelvaris/support/func_construct.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Kelvaris {

/// One script function as a library has declared it.
struct RegisteredFunction
{
    std::string name;
    int minimum = 0; ///< fewest arguments of a call
    int maximum = 0; ///< most arguments of a call

    /// The whole declaration array, `FuncConstruct::declarationLength` entries.
    std::vector<argType> arguments;

    FuncEntry entry = nullptr;
};

/// The script functions that the loaded libraries offer. `FuncConstruct` enters and removes them; the host's own
/// programs read. All of it happens on one thread.
class KELVARIS_SUPPORT_API FunctionRegistry
{
public:
    enum class Event {
        registered,
        removed,
    };

    /// Told the name after the change. It throws nothing: a removal happens inside a destructor.
    using Observer = std::function<void(Event, const std::string& name)>;

    /// Made on first use, so that it outlives every `FuncConstruct`.
    static FunctionRegistry& instance();

    FunctionRegistry(const FunctionRegistry&) = delete;
    FunctionRegistry& operator=(const FunctionRegistry&) = delete;

    /// In the order of registration. References into it are good until the next change.
    const std::vector<RegisteredFunction>& functions() const noexcept { return m_functions; }

    /// @return  the function of exactly that name, good until the next change, or null
    const RegisteredFunction* find(std::string_view name) const noexcept;

    /// Sets the one observer; an empty one ends the observation.
    void setObserver(Observer observer) { m_observer = std::move(observer); }

private:
    friend class FuncConstruct;

    FunctionRegistry() = default;
    ~FunctionRegistry() = default;

    /// @throws std::invalid_argument  the name is empty or registered already
    void add(RegisteredFunction function);
    void remove(std::string_view name);
    void notify(Event event, const std::string& name) const;

    std::vector<RegisteredFunction> m_functions;
    Observer m_observer;
};

} // namespace Kelvaris
