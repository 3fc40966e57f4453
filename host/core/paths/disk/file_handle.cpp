#include "host/core/paths/disk/file_handle.h"

#include <unistd.h>

namespace Kelvaris::System::Disk {

void FileHandle::reset() noexcept
{
    // Nothing is lost by a failing close: what must last was flushed before.
    if (m_descriptor >= 0)
        ::close(std::exchange(m_descriptor, -1));
}

} // namespace Kelvaris::System::Disk
