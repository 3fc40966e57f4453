#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

/// Sets an environment variable as long as it lives.
class EnvironmentVariable
{
public:
    EnvironmentVariable(std::string name, const std::string& value) : m_name{std::move(name)}
    {
        if (const char* before = std::getenv(m_name.c_str()))
            m_before = before;
        setenv(m_name.c_str(), value.c_str(), 1);
    }

    ~EnvironmentVariable()
    {
        if (m_before)
            setenv(m_name.c_str(), m_before->c_str(), 1);
        else
            unsetenv(m_name.c_str());
    }

    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    std::string m_name;
    std::optional<std::string> m_before;
};
