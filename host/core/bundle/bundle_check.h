#pragma once

#include "host/core/bundle/bundle_inspection.h"
#include "host/core/bundle/bundle_kind.h"
#include "host/core/bundle/bundle_package.h"
#include "host/core/opc/fault_log.h"

#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::Bundle::detail {

/// Finds every rule that a file breaks: those of packages by reading all of it with a log for faults, and those of
/// bundles (docs/format.md) by following their relationships. The examples of a barrel are checked in their places.
class BundleCheck
{
public:
    Result<CheckReport> check(const FilePath2& path);

private:
    void checkPackage(PackageData& package, const std::string& place);
    void checkFormat(PackageData& package, const std::string& place);
    void checkContents(PackageData& package);
    void checkPrimaryFile(PackageData& package);
    void checkExamples(PackageData& barrel, const std::string& place);
    void checkExample(PackageData& barrel, const PartPtr& part, const std::string& place);
    void checkSchematics(PackageData& package);

    /// The parts that relationships of a type lead to; what leads nowhere is a fault.
    std::vector<PartPtr> targets(PackageData& package, std::string_view source, std::string_view type);

    /// The same where at most one may stand.
    std::vector<PartPtr> onlyTarget(PackageData& package, std::string_view type);

    OpcPackaging::FaultLog m_faults;
    std::vector<std::string> m_remarks;
};

} // namespace Kelvaris::System::IO::Bundle::detail
