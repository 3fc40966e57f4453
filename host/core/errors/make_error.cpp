#include "host/core/errors/make_error.h"

#include "host/core/text/text_view.h"

namespace Kelvaris::System::Errors {

namespace {

template <class Enumerator>
ErrorCode2 makeCode(Enumerator value, const ErrorCategory2& category, std::string_view subject, std::string_view reason)
{
    return {static_cast<int>(value), category, Text::toString2(subject), Text::toString2(reason)};
}

} // namespace

ErrorCode2 makeError(CoreError value, std::string_view subject, std::string_view reason)
{
    return makeCode(value, core_error_category(), subject, reason);
}

ErrorCode2 makeError(IO::OpcPackaging::OpcError value, std::string_view subject, std::string_view reason)
{
    return makeCode(value, IO::OpcPackaging::opc_error_category(), subject, reason);
}

ErrorCode2 makeError(IO::Bundle::BundleError value, std::string_view subject, std::string_view reason)
{
    return makeCode(value, IO::Bundle::bundle_error_category(), subject, reason);
}

ErrorCode2 systemError(int number, std::string_view subject, std::string_view deed)
{
    return makeCode(number, system_error_category(), std::string{subject}.append(": ").append(deed), {});
}

} // namespace Kelvaris::System::Errors
