#include "tests/script/loaded_module.h"

#include "tests/support/temporary_folder.h"

#include <dlfcn.h>

#include <stdexcept>

std::string moduleFile()
{
    return HOLLERWICK_MODULE;
}

LoadedModule::LoadedModule() : LoadedModule{moduleFile()} {}

LoadedModule::LoadedModule(const std::string& file) : m_handle{dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)}
{
    if (m_handle == nullptr)
        throw std::runtime_error{dlerror()};
}

LoadedModule::~LoadedModule()
{
    dlclose(m_handle);
}

bool isModuleMapped()
{
    return readFile("/proc/self/maps").find("/hollerwick.so") != std::string::npos;
}

Kelvaris::CallResult call(const std::string& name, const std::vector<std::vector<std::string>>& arguments)
{
    const auto* function = Kelvaris::FunctionRegistry::instance().find(name);
    if (function == nullptr)
        throw std::runtime_error{"there is no function " + name};
    return Kelvaris::callFunction(*function, arguments);
}
