#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <functional>
#include <new>
#include <stdexcept>
#include <system_error>
#include <type_traits>

namespace Kelvaris::System::Text {

/// Calls `callable`, which returns an `Expected`; when there is no room for what it makes, that is generic ENOMEM.
template <class Callable>
std::invoke_result_t<Callable> withinMemory(Callable&& callable)
{
    constexpr ErrorCodeEnumConstructor<std::errc> toCode;
    try {
        return std::invoke(std::forward<Callable>(callable));
    } catch (const std::bad_alloc&) {
        return toCode(std::errc::not_enough_memory);
    } catch (const std::length_error&) {
        return toCode(std::errc::not_enough_memory);
    }
}

} // namespace Kelvaris::System::Text
