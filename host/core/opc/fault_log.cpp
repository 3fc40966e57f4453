#include "host/core/opc/fault_log.h"

#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::OpcPackaging {

void FaultLog::add(const ErrorCode2& fault)
{
    if (m_faults.size() < most && m_messages.emplace(Text::narrow(fault.message())).second)
        m_faults.push_back(fault);
}

} // namespace Kelvaris::System::IO::OpcPackaging
