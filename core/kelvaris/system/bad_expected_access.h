#pragma once

#include "kelvaris/export.h"

#include <exception>
#include <utility>

namespace Kelvaris::System {

class ErrorCode2;

template <class E>
class bad_expected_access;

/// Thrown when the value of an `Expected` that holds an error is asked for.
///
/// The text is fixed, so that the error's own message is not in it: whoever wants that catches the derived class.
template <>
class KELVARIS_EXPORT bad_expected_access<void> : public std::exception
{
public:
    const char* what() const noexcept override { return "bad expected access"; }
};

/// Carries the error that stood in the place of the value.
template <class E>
class KELVARIS_EXPORT bad_expected_access : public bad_expected_access<void>
{
public:
    explicit bad_expected_access(E error) : m_error{std::move(error)} {}

    const E& error() const noexcept { return m_error; }

private:
    E m_error;
};

} // namespace Kelvaris::System
