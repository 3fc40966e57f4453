#pragma once

#include "kelvaris/system/bad_expected_access.h"

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace Kelvaris::System {

/// A value, or the error for which there is none. Operations of the host report failure with it and never throw.
///
/// A caller tests it,
///
///     if (auto bundle = ExampleBundle::open(path))
///         show(*bundle);
///     else
///         warn(bundle.error().message());
///
/// takes the value and lets the failure leave as an exception,
///
///     ExampleBundle bundle = ExampleBundle::open(path).value();
///
/// does without the reason,
///
///     String2 title = bundle.title().valueOr({});
///
/// or chains one step behind another, the first failure being carried to the end:
///
///     auto path = IO::TemporaryPath2::createTemporaryDirectory()
///         .andThen([](IO::TemporaryPath2 directory) { return std::move(directory).detach(); });
template <class T, class E>
class [[nodiscard]] Expected
{
public:
    using value_type = T;
    using error_type = E;

    Expected(const T& value) : m_hasValue{true}, m_value(value) {}
    Expected(T&& value) : m_hasValue{true}, m_value(std::move(value)) {}
    Expected(const E& error) : m_hasValue{false}, m_error(error) {}
    Expected(E&& error) : m_hasValue{false}, m_error(std::move(error)) {}

    Expected(const Expected& other) : m_hasValue{other.m_hasValue} { construct(other); }

    Expected(Expected&& other) noexcept : m_hasValue{other.m_hasValue} { construct(std::move(other)); }

    Expected& operator=(const Expected& other)
    {
        Expected copy{other};
        return *this = std::move(copy);
    }

    Expected& operator=(Expected&& other) noexcept
    {
        if (this == &other)
            return *this;
        destroy();
        m_hasValue = other.m_hasValue;
        construct(std::move(other));
        return *this;
    }

    ~Expected() { destroy(); }

    bool hasValue() const noexcept { return m_hasValue; }
    explicit operator bool() const noexcept { return m_hasValue; }

    /// @throws bad_expected_access<E>  there is no value
    T& value() &
    {
        requireValue();
        return m_value;
    }
    const T& value() const&
    {
        requireValue();
        return m_value;
    }
    T&& value() &&
    {
        requireValue();
        return std::move(m_value);
    }

    /// Without a check: only after the flag was tested.
    T& operator*() & noexcept { return m_value; }
    const T& operator*() const& noexcept { return m_value; }
    T&& operator*() && noexcept { return std::move(m_value); }
    T* operator->() noexcept { return std::addressof(m_value); }
    const T* operator->() const noexcept { return std::addressof(m_value); }

    /// Without a check: only after the flag was tested.
    const E& error() const& noexcept { return m_error; }
    E&& error() && noexcept { return std::move(m_error); }

    /// The value, or `fallback` in the place of an error, which is dropped.
    T valueOr(T fallback) const&
    {
        if (m_hasValue)
            return m_value;
        return fallback;
    }
    T valueOr(T fallback) &&
    {
        if (m_hasValue)
            return std::move(m_value);
        return fallback;
    }

    /// Calls `step` with the value, moved, and gives its `Expected`; an error is copied on and `step` is not called.
    template <class Step>
    auto andThen(Step&& step) -> std::invoke_result_t<Step, T&&>
    {
        if (!m_hasValue)
            return m_error;
        return std::invoke(std::forward<Step>(step), std::move(m_value));
    }

private:
    template <class Other>
    void construct(Other&& other)
    {
        if (m_hasValue)
            std::construct_at(std::addressof(m_value), std::forward<Other>(other).m_value);
        else
            std::construct_at(std::addressof(m_error), std::forward<Other>(other).m_error);
    }

    void destroy() noexcept
    {
        if (m_hasValue)
            std::destroy_at(std::addressof(m_value));
        else
            std::destroy_at(std::addressof(m_error));
    }

    void requireValue() const
    {
        if (!m_hasValue)
            throw bad_expected_access<E>{m_error};
    }

    bool m_hasValue;
    union
    {
        T m_value;
        E m_error;
    };
};

/// Success, or the error that prevented it.
template <class E>
class [[nodiscard]] Expected<void, E>
{
public:
    using value_type = void;
    using error_type = E;

    Expected() noexcept : m_hasValue{true} {}
    Expected(const E& error) : m_hasValue{false}, m_error(error) {}
    Expected(E&& error) : m_hasValue{false}, m_error(std::move(error)) {}

    Expected(const Expected& other) : m_hasValue{other.m_hasValue}
    {
        if (!m_hasValue)
            std::construct_at(std::addressof(m_error), other.m_error);
    }

    Expected(Expected&& other) noexcept : m_hasValue{other.m_hasValue}
    {
        if (!m_hasValue)
            std::construct_at(std::addressof(m_error), std::move(other.m_error));
    }

    Expected& operator=(Expected other) noexcept
    {
        destroy();
        m_hasValue = other.m_hasValue;
        if (!m_hasValue)
            std::construct_at(std::addressof(m_error), std::move(other.m_error));
        return *this;
    }

    ~Expected() { destroy(); }

    bool hasValue() const noexcept { return m_hasValue; }
    explicit operator bool() const noexcept { return m_hasValue; }

    /// @throws bad_expected_access<E>  it is a failure
    void value() const
    {
        if (!m_hasValue)
            throw bad_expected_access<E>{m_error};
    }

    /// Without a check: only after the flag was tested.
    const E& error() const& noexcept { return m_error; }
    E&& error() && noexcept { return std::move(m_error); }

    /// Calls `step` and gives its `Expected`; an error is copied on and `step` is not called.
    template <class Step>
    auto andThen(Step&& step) -> std::invoke_result_t<Step>
    {
        if (!m_hasValue)
            return m_error;
        return std::invoke(std::forward<Step>(step));
    }

private:
    void destroy() noexcept
    {
        if (!m_hasValue)
            std::destroy_at(std::addressof(m_error));
    }

    bool m_hasValue;
    union
    {
        E m_error;
    };
};

} // namespace Kelvaris::System
