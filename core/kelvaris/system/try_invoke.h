#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/system_error.h"

#include <functional>
#include <future>
#include <ios>
#include <system_error>
#include <type_traits>
#include <utility>

namespace Kelvaris::System {

namespace detail {

/// The code of a standard error, by the address of its category; a category of somebody else's has no counterpart.
inline ErrorCode2 toErrorCode2(const std::error_code& error)
{
    if (error.category() == std::generic_category())
        return {error.value(), generic_error_category()};
    if (error.category() == std::system_category())
        return {error.value(), system_error_category()};
    if (error.category() == std::iostream_category())
        return {error.value(), iostream_error_category()};
    if (error.category() == std::future_category())
        return {error.value(), future_error_category()};
    return {-1, system_error_category()};
}

template <class Result>
struct InvokeExpected
{
    using type = Expected<Result, ErrorCode2>;
};

template <class Result>
struct InvokeExpected<Expected<Result, ErrorCode2>>
{
    using type = Expected<Result, ErrorCode2>;
};

} // namespace detail

/// Calls `callable` and turns what it throws into an error value; lets no exception out.
///
/// @return  what `callable` returns, in an `Expected` unless it is one already
template <class Callable>
auto tryInvoke(Callable&& callable) noexcept -> typename detail::InvokeExpected<std::invoke_result_t<Callable>>::type
{
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Callable>>) {
            std::invoke(std::forward<Callable>(callable));
            return {};
        } else {
            return std::invoke(std::forward<Callable>(callable));
        }
    } catch (std::errc value) {
        return ErrorCodeEnumConstructor<std::errc>{}(value);
    } catch (std::io_errc value) {
        return ErrorCodeEnumConstructor<std::io_errc>{}(value);
    } catch (std::future_errc value) {
        return ErrorCodeEnumConstructor<std::future_errc>{}(value);
    } catch (const std::system_error& error) {
        return detail::toErrorCode2(error.code());
    } catch (const SystemError& error) {
        return error.code();
    } catch (const bad_expected_access<ErrorCode2>& error) {
        return error.error();
    } catch (...) {
        return ErrorCode2{-1, system_error_category()};
    }
}

} // namespace Kelvaris::System
