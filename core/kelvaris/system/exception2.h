#pragma once

#include "kelvaris/export.h"

#include <exception>
#include <string>
#include <utility>

namespace Kelvaris::System {

/// An exception with a text of its own.
class KELVARIS_EXPORT Exception2 : public std::exception
{
public:
    /// @param text  UTF-8; `what()` gives it
    explicit Exception2(std::string text) : m_text{std::move(text)} {}

    const char* what() const noexcept override { return m_text.c_str(); }

private:
    std::string m_text;
};

} // namespace Kelvaris::System
