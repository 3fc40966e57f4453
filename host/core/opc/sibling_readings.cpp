#include "host/core/opc/sibling_readings.h"

#include <algorithm>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::detail {

namespace {

/// More than the content types of a hundred parts need.
constexpr std::uint64_t largest = std::uint64_t{16} << 10;

} // namespace

std::shared_ptr<void> SiblingReadings::findAny(std::type_index type, std::string_view itemName,
                                               const Zip::PackedEntry& packed) const
{
    const std::lock_guard lock{m_mutex};
    const auto found = std::ranges::find_if(m_readings, [&](const Reading& reading) {
        return reading.packed == packed && reading.type == type && reading.itemName == itemName;
    });
    return found == m_readings.end() ? nullptr : found->document;
}

void SiblingReadings::keepAny(std::type_index type, std::string_view itemName, const Zip::PackedEntry& packed,
                              std::shared_ptr<void> document)
{
    if (std::max<std::uint64_t>(packed.size, packed.bytes.size()) > largest)
        return;
    Reading reading{
        type, std::string{itemName}, {packed.bytes.begin(), packed.bytes.end()}, packed, std::move(document)};
    reading.packed.bytes = reading.bytes;
    const std::lock_guard lock{m_mutex};
    std::swap(m_readings[m_next], reading);
    m_next = (m_next + 1) % m_readings.size();
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
