#pragma once

#include "kelvaris/support/func_args.h"
#include "kelvaris/support/func_error.h"
#include "kelvaris/support/func_result.h"
#include "kelvaris/support/message_handler.h"
#include "kelvaris/support/y_ref.h"

namespace Script {

/// What a handler gets, by value: it owns the frame, and releases the reference to the message handler on every way
/// out. The arguments and the results are the host's and live as long as the call.
struct FuncCallFrame
{
    const Kelvaris::FuncArgsMinimal* args;
    Kelvaris::FuncResultMinimal* result;
    Kelvaris::YRef<Kelvaris::MessageHandler> messageHandler;
};

} // namespace Script
