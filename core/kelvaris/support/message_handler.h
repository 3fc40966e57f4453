#pragma once

namespace Kelvaris {

/// The host's sink for messages of one call. Script functions carry it along and post nothing to it.
class MessageHandler
{
public:
    virtual ~MessageHandler() = default;

    /// Takes a NUL-terminated UTF-8 message; the text is copied.
    virtual void post(const char* message) = 0;
};

} // namespace Kelvaris
