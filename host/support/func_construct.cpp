#include "kelvaris/support/func_construct.h"

#include "host/support/function_registry.h"

#include <cassert>
#include <vector>

namespace Kelvaris {

FuncConstruct::FuncConstruct(const char* name, const argType* arguments, int minimum, int maximum, FuncEntry entry)
    : m_name{name}
{
    assert(0 <= minimum && minimum <= maximum && maximum <= declarationLength);
    assert(entry != nullptr);
    FunctionRegistry::instance().add(
        {name, minimum, maximum, std::vector<argType>(arguments, arguments + declarationLength), entry});
}

FuncConstruct::~FuncConstruct()
{
    FunctionRegistry::instance().remove(m_name);
}

} // namespace Kelvaris
