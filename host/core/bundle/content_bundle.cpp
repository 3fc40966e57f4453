#include "kelvaris/system/io/bundle/content_bundle.h"

#include "host/core/bundle/bundle_layout.h"
#include "host/core/bundle/bundle_package.h"
#include "host/core/bundle/unpacking.h"
#include "host/core/opc/package_access.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::OpcPackage;
using OpcPackaging::OpcPackageCompressionType;
using OpcPackaging::OpcPackagePart;
using OpcPackaging::OpcPackagePartUri;
using OpcPackaging::detail::PackageAccess;

ContentBundle::ContentBundle(OpcPackage package) noexcept : AbstractBundle{std::move(package)} {}

ContentBundle::ContentBundle(ContentBundle&&) noexcept = default;
ContentBundle& ContentBundle::operator=(ContentBundle&&) noexcept = default;
ContentBundle::~ContentBundle() = default;

Expected<ContentBundle, ErrorCode2> ContentBundle::create()
{
    auto package = detail::createBundle(detail::BundleKind::content);
    if (!package)
        return package.error();
    return ContentBundle{std::move(*package)};
}

Expected<ContentBundle, ErrorCode2> ContentBundle::open(const FilePath2& path)
{
    auto package = detail::openBundle(path, detail::BundleKind::content);
    if (!package)
        return package.error();
    return ContentBundle{std::move(*package)};
}

Expected<OpcPackaging::OpcPackageRelationshipCollection, ErrorCode2> ContentBundle::contentRelationships() const
{
    return Text::withinMemory(
        [this] { return package().relationshipsByType(Text::toString2(Layout::contentRelationship)); });
}

Expected<OpcPackagePart, ErrorCode2> ContentBundle::createContentPartFromFile(const FilePath2& source,
                                                                              const OpcPackagePartUri& uri,
                                                                              const MIMEType& type,
                                                                              OpcPackageCompressionType compression)
{
    return Text::withinMemory([&]() -> Expected<OpcPackagePart, ErrorCode2> {
        const detail::PackagePtr& data = PackageAccess::data(package());
        if (auto name = uri.toString(); !name)
            return name.error();
        auto bytes = data->parts().items().takeFile(source, compression);
        if (!bytes)
            return bytes.error();
        auto part = detail::addRelatedPart(*data, uri, Text::narrow(type.text()), std::move(*bytes),
                                           Layout::contentRelationship);
        if (!part)
            return part.error();
        (*part)->compression = compression;
        return PackageAccess::part(data, *part);
    });
}

Expected<void, ErrorCode2> ContentBundle::unpack(const FilePath2& directory)
{
    return Text::withinMemory([&] { return detail::unpackContent(*PackageAccess::data(package()), directory); });
}

} // namespace Kelvaris::System::IO::Bundle
