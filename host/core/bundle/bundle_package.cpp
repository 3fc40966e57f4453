#include "host/core/bundle/bundle_package.h"

#include "host/core/bundle/bundle_layout.h"
#include "host/core/errors/error_words.h"
#include "host/core/errors/make_error.h"
#include "host/core/errors/rollback.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"

#include <span>

namespace Kelvaris::System::IO::Bundle::detail {

namespace Markup = OpcPackaging::Markup;
using OpcPackaging::OpcPackage;
using OpcPackaging::OpcPackageCompressionType;
using OpcPackaging::OpcTargetMode;
using OpcPackaging::detail::PackageParts;
using OpcPackaging::detail::RelationshipPtr;

namespace {

Result<> addProperties(PackageData& package, BundleKind kind)
{
    const std::string text = bundlePropertiesText(kind);
    auto bytes = package.parts().items().take(std::as_bytes(std::span{text}), OpcPackageCompressionType::normal);
    if (!bytes)
        return bytes.error();
    auto related = package.relationships().add(Markup::packageSource, Layout::propertiesRelationship,
                                               Layout::propertiesPartName, OpcTargetMode::internal);
    if (!related)
        return related.error();
    auto part = package.createPart(Layout::propertiesPartName, Layout::propertiesMediaType, std::move(*bytes),
                                   PackageParts::Typing::byName);
    if (!part)
        return part.error();
    return {};
}

bool isOfKind(std::string_view name, BundleKind wanted)
{
    return name == kindName(wanted) || (wanted == BundleKind::content && name == kindName(BundleKind::example));
}

} // namespace

Result<OpcPackage> createBundle(BundleKind kind)
{
    return Text::withinMemory([kind]() -> Result<OpcPackage> {
        PackagePtr package = PackageData::create();
        if (auto added = addProperties(*package, kind); !added)
            return added.error();
        return OpcPackage{std::move(package)};
    });
}

Result<OpcPackage> openBundle(const FilePath2& path, BundleKind kind)
{
    return Text::withinMemory([&]() -> Result<OpcPackage> {
        auto package = PackageData::openFile(path);
        if (!package)
            return package.error();
        if (auto required = requireKind(**package, kind); !required)
            return required.error();
        return OpcPackage{std::move(*package)};
    });
}

Result<> requireKind(PackageData& package, BundleKind kind)
{
    auto properties = readProperties(package);
    if (!properties)
        return properties.error();
    const bool isKnown = *properties != nullptr;
    if (isKnown ? isOfKind((*properties)->values->kindName, kind) : kind == BundleKind::content)
        return {};
    const std::string found =
        isKnown ? describedKind((*properties)->values->kindName) : "a package that does not say what it holds";
    return Errors::makeError(BundleError::wrongKind, package.displayName(),
                             describedKind(kindName(kind)) + " was expected, this is " + found);
}

Result<StoredPropertiesPtr> readProperties(PackageData& package)
{
    auto relationships = package.relationships().ofType(Markup::packageSource, Layout::propertiesRelationship);
    if (!relationships)
        return relationships.error();
    if (relationships->empty())
        return StoredPropertiesPtr{};
    if (relationships->size() > 1)
        return Errors::makeError(BundleError::invalidProperties, package.displayName(), "there are several");
    auto part = package.findTarget(Markup::packageSource, *relationships->front());
    if (!part)
        return Errors::makeError(BundleError::invalidProperties, {}, Errors::reasonFrom(part.error()));
    const PayloadPtr& payload = (*part)->payload;
    auto kept = std::static_pointer_cast<const StoredProperties>(package.keptReading());
    if (kept != nullptr && kept->part == *part && kept->payload == payload)
        return kept;
    auto values = package.parts().readAs<BundleProperties>(**part, parseBundleProperties);
    if (!values)
        return values.error();
    kept = std::make_shared<const StoredProperties>(StoredProperties{*part, payload, std::move(*values)});
    package.keptReading() = kept;
    return kept;
}

Result<PartPtr> addRelatedPart(PackageData& package, const OpcPackaging::OpcPackagePartUri& uri,
                               std::string_view mediaType, PayloadPtr bytes, std::string_view relationshipType)
{
    const auto text = uri.toString();
    if (!text)
        return text.error();
    const std::string_view name = Text::narrow(*text);
    // what cannot be related must not be made first
    if (auto relationships = package.relationships().of(Markup::packageSource); !relationships)
        return relationships.error();
    auto part = package.createPart(name, mediaType, std::move(bytes));
    if (!part)
        return part;
    Errors::Rollback takeBack{[&] { package.parts().remove(*part); }};
    auto related = package.relationships().add(Markup::packageSource, relationshipType, name, OpcTargetMode::internal);
    if (!related)
        return related.error();
    takeBack.dismiss();
    return part;
}

void dropRelatedPart(PackageData& package, const PartPtr& part)
{
    if (const auto relationships = package.relationships().of(Markup::packageSource)) {
        const std::string last = (*relationships)->all().back().id;
        (void)package.relationships().remove(Markup::packageSource, last); // they were read already
    }
    package.parts().remove(part);
}

Result<PartPtr> relatedPart(PackageData& package, std::string_view relationshipType)
{
    auto relationships = package.relationships().ofType(Markup::packageSource, relationshipType);
    if (!relationships)
        return relationships.error();
    if (relationships->empty())
        return PartPtr{};
    return package.findTarget(Markup::packageSource, *relationships->front());
}

} // namespace Kelvaris::System::IO::Bundle::detail
