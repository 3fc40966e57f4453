#include "kelvaris/system/byte_array_view.h"

#include <algorithm>
#include <cassert>

namespace Kelvaris::System {

void* ByteArrayView::memcpy(void* target, std::size_t size) const
{
    assert(size <= m_length);
    // not std::memcpy: that forbids the null pointer of an empty view even for no bytes
    std::copy_n(m_data, size, static_cast<std::byte*>(target));
    return target;
}

} // namespace Kelvaris::System
