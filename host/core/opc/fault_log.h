#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging {

/// The rules that a package breaks, when all of them are wanted: a reader that has one leaves out what is broken and
/// goes on, where any other ends with the first.
class KELVARIS_CORE_API FaultLog
{
public:
    /// A file can hold millions; nobody mends more than that at a time.
    static constexpr std::size_t most = 1000;

    /// Once for each message, since one broken piece may be met on several ways.
    void add(const ErrorCode2& fault);

    const std::vector<ErrorCode2>& faults() const noexcept { return m_faults; }

private:
    std::vector<ErrorCode2> m_faults;
    std::set<std::string> m_messages;
};

/// Where a rule is broken and the reader can go on.
/// @param log  null for a reader that ends with the first fault
/// @return  `fault` for such a reader; nothing when it was logged
inline Expected<void, ErrorCode2> passOver(FaultLog* log, const ErrorCode2& fault)
{
    if (log == nullptr)
        return fault;
    log->add(fault);
    return {};
}

} // namespace Kelvaris::System::IO::OpcPackaging
