#pragma once

#include <cstdint>

namespace Kelvaris {

/// The arguments of one call, read only. The host owns them; they live until the entry function returns.
class FuncArgsMinimal
{
public:
    /// The texts of argument `index`: NUL-terminated UTF-8, as many as `count(index)` says.
    /// May be null when the count is 0.
    virtual const char* const* strings(int index) const = 0;

    /// How many arguments the caller passed. Handlers do not ask: the host has checked the number already.
    virtual std::int64_t argumentCount() const = 0;

    /// The number of texts in argument `index`; 0 for an argument that the caller left out.
    virtual std::int64_t count(int index) const = 0;

protected:
    ~FuncArgsMinimal() = default;
};

} // namespace Kelvaris
