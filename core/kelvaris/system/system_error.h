#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/io/bundle/bundle_error.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"
#include "kelvaris/system/runtime_error.h"

#include <string>
#include <utility>

namespace Kelvaris::System {

/// A failure that has an error code: `what()` is the code's message.
class KELVARIS_EXPORT SystemError : public RuntimeError
{
public:
    explicit SystemError(ErrorCode2 code) : RuntimeError{textOf(code)}, m_code{std::move(code)} {}

    explicit SystemError(IO::Bundle::BundleError value)
        : SystemError{ErrorCode2{static_cast<int>(value), IO::Bundle::bundle_error_category()}}
    {
    }

    explicit SystemError(IO::OpcPackaging::OpcError value)
        : SystemError{ErrorCode2{static_cast<int>(value), IO::OpcPackaging::opc_error_category()}}
    {
    }

    const ErrorCode2& code() const noexcept { return m_code; }

private:
    static std::string textOf(const ErrorCode2& code)
    {
        const detail::StringIntermediary text{code};
        return {text.data(), text.length()};
    }

    ErrorCode2 m_code;
};

} // namespace Kelvaris::System
