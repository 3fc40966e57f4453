#pragma once

#include <cstdint>

namespace Kelvaris {

/// The results of one call, filled by the handler and read by the host.
class FuncResultMinimal
{
public:
    /// Makes room for `count` result strings and gives the array of their places, all null.
    ///
    /// The handler stores into each place a NUL-terminated UTF-8 text in a buffer from the global `operator new`;
    /// the buffer then belongs to the host, which releases it with the global `operator delete`. A place that
    /// stays null reads as the empty text. A second call drops what the first one got.
    virtual char** allocateStrings(std::int64_t count) = 0;

protected:
    ~FuncResultMinimal() = default;
};

} // namespace Kelvaris
