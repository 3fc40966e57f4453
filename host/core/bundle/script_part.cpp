#include "kelvaris/system/io/bundle/script_part.h"

#include "host/core/opc/package_access.h"

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::detail::PackageAccess;
using OpcPackaging::detail::PackageReference;

ScriptPart::ScriptPart(const OpcPackaging::OpcPackagePart& part)
    : AbstractBundlePart{part, PackageAccess::reference(std::make_shared<PackageReference>(PackageAccess::data(part)))}
{
}

ScriptPart::ScriptPart(const ScriptPart&) = default;
ScriptPart::ScriptPart(ScriptPart&&) noexcept = default;
ScriptPart& ScriptPart::operator=(const ScriptPart&) = default;
ScriptPart& ScriptPart::operator=(ScriptPart&&) noexcept = default;
ScriptPart::~ScriptPart() = default;

} // namespace Kelvaris::System::IO::Bundle
