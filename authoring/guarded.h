#pragma once

#include "kelvaris/system/application.h"
#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/error_code2.h"

#include <exception>
#include <type_traits>
#include <utility>

/// Writes the log line of the exception that is being handled, under "ui". Without memory for the line there is none.
inline void logCaught() noexcept
try {
    using namespace Kelvaris::System;
    auto& logger = Application::instance()->logger();
    try {
        throw;
    } catch (const bad_expected_access<ErrorCode2>& failure) {
        logger.error("ui", failure.error());
    } catch (const std::exception& failure) {
        logger.error("ui", failure.what());
    } catch (...) {
        logger.error("ui", "unknown error");
    }
} catch (const std::exception&) {
    return;
}

/// Runs `step`, a callable without arguments. What it throws ends here, as one log line: an exception that left an
/// event handler would end the host.
/// @return  whether `step` came to its end
template <class Step>
bool runGuarded(Step&& step) noexcept
{
    try {
        std::forward<Step>(step)();
        return true;
    } catch (...) {
        logCaught();
        return false;
    }
}

/// The same for a slot: a callable that runs `slot` with whatever arguments the signal brings.
///
///     connect(button, &QPushButton::clicked, this, guarded([this] { createExample(); }));
///
/// A signal's arguments reach the slot if it takes all of them; they are dropped if it takes none.
template <class Slot>
auto guarded(Slot slot)
{
    if constexpr (std::is_invocable_v<const Slot&>) {
        return [slot = std::move(slot)](auto&&...) { runGuarded([&] { slot(); }); };
    } else {
        // Qt tries every number of arguments
        return [slot = std::move(slot)](
            auto&&... arguments) requires std::is_invocable_v<const Slot&, decltype(arguments)...>
        {
            runGuarded([&] { slot(std::forward<decltype(arguments)>(arguments)...); });
        };
    }
}
