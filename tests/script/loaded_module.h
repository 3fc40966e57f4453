#pragma once

#include "host/support/call_function.h"

#include <string>
#include <vector>

/// The plug-in, loaded for as long as the object lives.
class LoadedModule
{
public:
    /// The built one.
    LoadedModule();

    /// Fails the program when the module cannot be loaded.
    explicit LoadedModule(const std::string& file);
    ~LoadedModule();

    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

private:
    void* m_handle;
};

/// The file of the built plug-in.
std::string moduleFile();

/// Whether the plug-in is anywhere in the process's memory.
bool isModuleMapped();

/// Calls a function of the loaded plug-in.
Kelvaris::CallResult call(const std::string& name, const std::vector<std::vector<std::string>>& arguments);
