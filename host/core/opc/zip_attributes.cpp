#include "host/core/opc/zip_attributes.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

namespace {

constexpr std::size_t systemAt = 5;
constexpr std::size_t attributesAt = 38;
constexpr unsigned unixSystem = 3;
constexpr unsigned darwinSystem = 19;

constexpr unsigned dosLabelOrDirectory = 0x18;
constexpr unsigned unixKind = 0170000;
constexpr unsigned unixRegularFile = 0100000;

unsigned byteAt(const Zip::Entry& entry, std::size_t at) noexcept
{
    return std::to_integer<unsigned>(entry.record[at]);
}

} // namespace

bool isFile(const Zip::Entry& entry) noexcept
{
    if (entry.isDirectory() || (byteAt(entry, attributesAt) & dosLabelOrDirectory) != 0)
        return false;
    const unsigned system = byteAt(entry, systemAt);
    if (system != unixSystem && system != darwinSystem)
        return true;
    const unsigned kind = (byteAt(entry, attributesAt + 2) | byteAt(entry, attributesAt + 3) << 8U) & unixKind;
    return kind == 0 || kind == unixRegularFile;
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
