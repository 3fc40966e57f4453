#include "host/support/function_registry.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Kelvaris {

FunctionRegistry& FunctionRegistry::instance()
{
    static FunctionRegistry registry;
    return registry;
}

const RegisteredFunction* FunctionRegistry::find(std::string_view name) const noexcept
{
    const auto found = std::ranges::find(m_functions, name, &RegisteredFunction::name);
    return found == m_functions.end() ? nullptr : &*found;
}

void FunctionRegistry::add(RegisteredFunction function)
{
    if (function.name.empty())
        throw std::invalid_argument{"a script function needs a name"};
    if (find(function.name) != nullptr)
        throw std::invalid_argument{"the script function " + function.name + " is registered already"};
    const std::string name = function.name;
    m_functions.push_back(std::move(function));
    notify(Event::registered, name);
}

void FunctionRegistry::remove(std::string_view name)
{
    const auto found = std::ranges::find(m_functions, name, &RegisteredFunction::name);
    if (found == m_functions.end())
        return;
    const std::string removed = std::move(found->name);
    m_functions.erase(found);
    notify(Event::removed, removed);
}

void FunctionRegistry::notify(Event event, const std::string& name) const
{
    if (m_observer)
        m_observer(event, name);
}

} // namespace Kelvaris
