#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <functional>
#include <new>
#include <stdexcept>
#include <system_error>
#include <type_traits>

namespace Kelvaris::System::Text {

inline ErrorCode2 lackOfMemory()
{
    return ErrorCodeEnumConstructor<std::errc>{}(std::errc::not_enough_memory);
}

/// Calls `callable`, which returns an `Expected`; when there is no room for what it makes, that is `lackOfMemory`.
template <class Callable>
std::invoke_result_t<Callable> withinMemory(Callable&& callable)
{
    try {
        return std::invoke(std::forward<Callable>(callable));
    } catch (const std::bad_alloc&) {
        return lackOfMemory();
    } catch (const std::length_error&) {
        return lackOfMemory();
    }
}

} // namespace Kelvaris::System::Text
