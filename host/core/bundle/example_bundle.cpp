#include "kelvaris/system/io/bundle/example_bundle.h"

#include "host/core/bundle/bundle_layout.h"
#include "host/core/bundle/bundle_package.h"
#include "host/core/errors/error_words.h"
#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/package_access.h"
#include "host/core/paths/disk/native_path.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/file_system.h"

#include <span>

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::OpcPackage;
using OpcPackaging::OpcPackageCompressionType;
using OpcPackaging::OpcPackagePart;
using OpcPackaging::OpcPackagePartUri;
using OpcPackaging::OpcPackageRelationship;
using OpcPackaging::detail::PackageAccess;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PartPtr;
using OpcPackaging::detail::Result;
namespace Markup = OpcPackaging::Markup;

namespace {

/// Makes `uri` the only target of that type.
Result<> relateOnly(PackageData& package, const OpcPackagePartUri& uri, std::string_view relationshipType)
{
    auto name = uri.toString();
    if (!name)
        return name.error();
    auto part = package.findPart(Text::narrow(*name));
    if (!part)
        return part.error();
    auto related = package.relationships().replaceByType(Markup::packageSource, relationshipType, (*part)->name);
    if (!related)
        return related.error();
    return {};
}

/// The content part of that name in any ASCII case; null when there is none.
Result<PartPtr> contentPart(PackageData& package, std::string_view name)
{
    auto relationships = package.relationships().ofType(Markup::packageSource, Layout::contentRelationship);
    if (!relationships)
        return relationships.error();
    for (const auto& relationship : *relationships) {
        auto part = package.findTarget(Markup::packageSource, *relationship);
        if (part && Text::equalsAsciiCase((*part)->name, name))
            return part;
    }
    return PartPtr{};
}

Result<PartPtr> documentationPart(PackageData& package)
{
    auto part = detail::relatedPart(package, Layout::documentationRelationship);
    if (!part || *part != nullptr)
        return part;
    for (const std::string_view name : Layout::documentationPartNames) {
        part = contentPart(package, name);
        if (!part || *part != nullptr)
            return part;
    }
    return part;
}

Result<> writeManufacturer(PackageData& package, std::string_view manufacturer)
{
    auto stored = detail::readProperties(package);
    if (!stored)
        return stored.error();
    if ((*stored)->values->manufacturer.value_or(std::string{}) == manufacturer)
        return {};
    const PartPtr& part = (*stored)->part;
    auto before = package.parts().read(*part);
    if (!before)
        return before.error();
    auto text = detail::withManufacturer(*before, manufacturer, package.parts().subjectOf(part->name));
    if (!text)
        return text.error();
    auto bytes = package.parts().items().take(std::as_bytes(std::span{*text}), OpcPackageCompressionType::normal);
    if (!bytes)
        return bytes.error();
    package.setBytes(part, std::move(*bytes));
    return {};
}

} // namespace

ExampleBundle::ExampleBundle(OpcPackage package) noexcept : ContentBundle{std::move(package)} {}

ExampleBundle::ExampleBundle(ExampleBundle&&) noexcept = default;
ExampleBundle& ExampleBundle::operator=(ExampleBundle&&) noexcept = default;
ExampleBundle::~ExampleBundle() = default;

Expected<ExampleBundle, ErrorCode2> ExampleBundle::create()
{
    auto package = detail::createBundle(detail::BundleKind::example);
    if (!package)
        return package.error();
    return ExampleBundle{std::move(*package)};
}

Expected<ExampleBundle, ErrorCode2> ExampleBundle::open(const FilePath2& path)
{
    auto package = detail::openBundle(path, detail::BundleKind::example);
    if (!package)
        return package.error();
    return ExampleBundle{std::move(*package)};
}

Expected<OpcPackagePart, ErrorCode2> ExampleBundle::addFile(const FilePath2& source, const OpcPackagePartUri& uri,
                                                            OpcPackageCompressionType compression)
{
    return Text::withinMemory([&]() -> Expected<OpcPackagePart, ErrorCode2> {
        auto path = Disk::nativePath(source);
        if (!path)
            return path.error();
        const MIMEType type{FileSystem::type(FilePath{*path})};
        return createContentPartFromFile(source, uri, type, compression);
    });
}

Expected<void, ErrorCode2> ExampleBundle::setPrimaryFile(const OpcPackagePartUri& uri)
{
    return Text::withinMemory(
        [&] { return relateOnly(*PackageAccess::data(package()), uri, Layout::primaryFileRelationship); });
}

/// Text that begins with "/" is a part name, any other a raw path: just what the name's own constructor makes of it.
Expected<void, ErrorCode2> ExampleBundle::setPrimaryFile(const Url& url)
{
    return Text::withinMemory([&] { return setPrimaryFile(OpcPackagePartUri{url.text()}); });
}

Expected<OpcPackageRelationship, ErrorCode2> ExampleBundle::primaryFileRelationship() const
{
    return Text::withinMemory([this]() -> Expected<OpcPackageRelationship, ErrorCode2> {
        PackageData& data = *PackageAccess::data(package());
        auto relationships = data.relationships().recordsByType(Markup::packageSource, Layout::primaryFileRelationship);
        if (!relationships)
            return relationships.error();
        if (relationships->size() != 1)
            return Errors::makeError(BundleError::noPrimaryFile, data.displayName(),
                                     relationships->empty() ? "" : "there are several");
        if (auto part = data.findTarget(*relationships->front()); !part)
            return Errors::makeError(BundleError::noPrimaryFile, {}, Errors::reasonFrom(part.error()));
        return PackageAccess::relationship(relationships->front());
    });
}

Expected<String2, ErrorCode2> ExampleBundle::manufacturer() const
{
    return Text::withinMemory([this]() -> Expected<String2, ErrorCode2> {
        PackageData& data = *PackageAccess::data(package());
        auto stored = detail::readProperties(data);
        if (!stored)
            return stored.error();
        const std::string manufacturer = (*stored)->values->manufacturer.value_or(std::string{});
        if (manufacturer.empty())
            return Errors::makeError(BundleError::noManufacturer, data.displayName());
        return Text::toString2(std::string_view{manufacturer});
    });
}

Expected<void, ErrorCode2> ExampleBundle::setManufacturer(const String2& manufacturer)
{
    return Text::withinMemory(
        [&] { return writeManufacturer(*PackageAccess::data(package()), Text::narrow(manufacturer)); });
}

Expected<HTMLPart, ErrorCode2> ExampleBundle::documentationHTML() const
{
    return Text::withinMemory([this]() -> Expected<HTMLPart, ErrorCode2> {
        const detail::PackagePtr& data = PackageAccess::data(package());
        auto part = documentationPart(*data);
        if (!part)
            return part.error();
        if (*part == nullptr)
            return Errors::makeError(BundleError::noDocumentation, data->displayName());
        return HTMLPart{PackageAccess::part(data, *part)};
    });
}

Expected<void, ErrorCode2> ExampleBundle::setDocumentationHTML(const OpcPackagePartUri& uri)
{
    return Text::withinMemory(
        [&] { return relateOnly(*PackageAccess::data(package()), uri, Layout::documentationRelationship); });
}

} // namespace Kelvaris::System::IO::Bundle
