#include "kelvaris/system/io/bundle/scriptable_bundle.h"

#include "host/core/bundle/bundle_layout.h"
#include "host/core/bundle/bundle_package.h"
#include "host/core/bundle/numbered_parts.h"
#include "host/core/errors/rollback.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/package_access.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include <span>

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::OpcError;
using OpcPackaging::OpcPackage;
using OpcPackaging::detail::PackageAccess;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PartPtr;
using OpcPackaging::detail::Result;

namespace {

/// A relationship that leads nowhere names no script; one is made in its place.
bool leadsNowhere(const ErrorCode2& error)
{
    if (&error.category() != &OpcPackaging::opc_error_category())
        return false;
    return error.value() == static_cast<int>(OpcError::noSuchPart) ||
           error.value() == static_cast<int>(OpcError::targetIsExternal);
}

Result<PartPtr> createScript(PackageData& package, const OpcPackaging::Zip::PayloadPtr& bytes)
{
    const MIMEType type{FileType::script};
    auto part =
        detail::createNumberedPart(package, std::string{Layout::scriptPartName}, Text::narrow(type.text()), bytes);
    if (!part)
        return part;
    Errors::Rollback takeBack{[&] { package.parts().remove(*part); }};
    auto related = package.relationships().replaceByType(OpcPackaging::Markup::packageSource,
                                                         Layout::scriptRelationship, (*part)->name);
    if (!related)
        return related.error();
    takeBack.dismiss();
    return part;
}

Result<PartPtr> writeScript(PackageData& package, std::string_view script)
{
    auto bytes =
        package.parts().items().take(std::as_bytes(std::span{script}), OpcPackaging::OpcPackageCompressionType::normal);
    if (!bytes)
        return bytes.error();
    auto part = detail::relatedPart(package, Layout::scriptRelationship);
    if (part ? *part == nullptr : leadsNowhere(part.error()))
        return createScript(package, *bytes);
    if (part)
        package.setBytes(*part, std::move(*bytes));
    return part;
}

} // namespace

ScriptableBundle::ScriptableBundle(OpcPackage package) noexcept : AbstractBundle{std::move(package)} {}

ScriptableBundle::ScriptableBundle(ScriptableBundle&&) noexcept = default;
ScriptableBundle& ScriptableBundle::operator=(ScriptableBundle&&) noexcept = default;
ScriptableBundle::~ScriptableBundle() = default;

Expected<ScriptableBundle, ErrorCode2> ScriptableBundle::create()
{
    auto package = detail::createBundle(detail::BundleKind::scriptable);
    if (!package)
        return package.error();
    return ScriptableBundle{std::move(*package)};
}

Expected<ScriptableBundle, ErrorCode2> ScriptableBundle::open(const FilePath2& path)
{
    auto package = detail::openBundle(path, detail::BundleKind::scriptable);
    if (!package)
        return package.error();
    return ScriptableBundle{std::move(*package)};
}

Expected<ScriptPart, ErrorCode2> ScriptableBundle::setScript(const String2& script)
{
    return Text::withinMemory([&]() -> Expected<ScriptPart, ErrorCode2> {
        const detail::PackagePtr& data = PackageAccess::data(package());
        auto part = writeScript(*data, Text::narrow(script));
        if (!part)
            return part.error();
        return ScriptPart{PackageAccess::part(data, *part)};
    });
}

} // namespace Kelvaris::System::IO::Bundle
