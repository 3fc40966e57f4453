#include "kelvaris/system/io/bundle/html_part.h"

#include "host/core/opc/package_access.h"

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::detail::PackageAccess;
using OpcPackaging::detail::PackageReference;

HTMLPart::HTMLPart(const OpcPackaging::OpcPackagePart& part)
    : AbstractBundlePart{part, PackageAccess::reference(std::make_shared<PackageReference>(PackageAccess::data(part)))}
{
}

HTMLPart::HTMLPart(const HTMLPart&) = default;
HTMLPart::HTMLPart(HTMLPart&&) noexcept = default;
HTMLPart& HTMLPart::operator=(const HTMLPart&) = default;
HTMLPart& HTMLPart::operator=(HTMLPart&&) noexcept = default;
HTMLPart::~HTMLPart() = default;

} // namespace Kelvaris::System::IO::Bundle
