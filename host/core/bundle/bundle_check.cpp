#include "host/core/bundle/bundle_check.h"

#include "host/core/bundle/bundle_layout.h"
#include "host/core/bundle/unpacking.h"
#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/media_type_text.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/package_verifier.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/uuid.h"

#include <algorithm>
#include <unordered_set>

namespace Kelvaris::System::IO::Bundle::detail {

using OpcPackaging::opc_error_category;
using OpcPackaging::OpcError;
using OpcPackaging::detail::PackageVerifier;
namespace Markup = OpcPackaging::Markup;
namespace Zip = OpcPackaging::Zip;

namespace {

bool isOneOf(const ErrorCode2& error, OpcError value)
{
    return error == ErrorCode2{static_cast<int>(value), opc_error_category()};
}

/// Whether there is nothing that could be checked.
bool isNoArchive(const ErrorCode2& error)
{
    const bool isOfBundles = &error.category() == &opc_error_category();
    return !isOfBundles || isOneOf(error, OpcError::notAnArchive);
}

bool isCompressed(PackageData& package, const PartPtr& part)
{
    const Zip::Archive& archive = *package.parts().items().archive();
    return std::ranges::any_of(
        part->entries(), [&](std::uint32_t entry) { return archive.entries()[entry].method != Zip::Method::stored; });
}

/// A place where nothing stands, so that only the names decide.
FilePath2 untouchedDirectory()
{
    return FilePath2{Text::toString2("/" + UUID{}.toStdString())};
}

} // namespace

Result<CheckReport> BundleCheck::check(const FilePath2& path)
{
    auto package = PackageData::openFile(path, &m_faults);
    if (!package && isNoArchive(package.error()))
        return package.error();
    // an entry that was left out may be the very one that is missing
    if (!package && (m_faults.faults().empty() || !isOneOf(package.error(), OpcError::noContentTypes)))
        m_faults.add(package.error());
    if (package)
        checkPackage(**package, {});
    return CheckReport{m_faults.faults(), std::move(m_remarks)};
}

/// @param place  of a package in a package: the name of its part, for remarks
void BundleCheck::checkPackage(PackageData& package, const std::string& place)
{
    auto diagnostics = PackageVerifier{package}.verify();
    if (!diagnostics)
        m_faults.add(diagnostics.error());
    else
        std::ranges::transform(*diagnostics, std::back_inserter(m_remarks),
                               [&](const std::string& text) { return place.empty() ? text : place + ": " + text; });
    // without its parts there are no bundle's rules to look at
    if (package.parts().all())
        checkFormat(package, place);
}

void BundleCheck::checkFormat(PackageData& package, const std::string& place)
{
    auto properties = readProperties(package);
    if (!properties)
        return m_faults.add(properties.error());
    if (!*properties)
        return checkContents(package);
    const StoredProperties& stored = **properties;
    const std::string subject = package.parts().subjectOf(stored.part->name);
    if (!Markup::isSameMediaType(stored.part->mediaType, Layout::propertiesMediaType))
        m_remarks.push_back(subject + ": the media type is not " + std::string{Layout::propertiesMediaType});
    const auto kind = kindNamed(stored.values->kindName);
    if (!kind)
        return m_faults.add(Errors::makeError(BundleError::invalidProperties, subject,
                                              describedKind(stored.values->kindName) + " is none that there is"));
    checkContents(package);
    if (*kind == BundleKind::example)
        checkPrimaryFile(package);
    if (*kind == BundleKind::barrelOfExamples)
        checkExamples(package, place);
    if (*kind == BundleKind::schematic)
        checkSchematics(package);
    if (*kind == BundleKind::scriptable)
        (void)onlyTarget(package, Layout::scriptRelationship);
}

void BundleCheck::checkContents(PackageData& package)
{
    std::vector<Disk::OutputTree::Destination> destinations;
    std::unordered_set<PartPtr> seen;
    for (const PartPtr& part : targets(package, Markup::packageSource, Layout::contentRelationship)) {
        if (!seen.insert(part).second)
            continue;
        auto destination = destinationOf(*part, package.parts().subjectOf(part->name));
        if (destination)
            destinations.push_back(std::move(*destination));
        else
            m_faults.add(destination.error());
    }
    if (auto tree = Disk::OutputTree::plan(untouchedDirectory(), std::move(destinations)); !tree)
        m_faults.add(tree.error());
}

void BundleCheck::checkPrimaryFile(PackageData& package)
{
    const std::vector<PartPtr> primary = onlyTarget(package, Layout::primaryFileRelationship);
    (void)onlyTarget(package, Layout::documentationRelationship);
    if (primary.empty())
        return m_faults.add(Errors::makeError(BundleError::noPrimaryFile, package.displayName()));
    const std::vector<PartPtr> contents = targets(package, Markup::packageSource, Layout::contentRelationship);
    if (std::ranges::find(contents, primary.front()) == contents.end())
        m_faults.add(Errors::makeError(BundleError::noPrimaryFile, package.parts().subjectOf(primary.front()->name),
                                       "it is none of the content files, so that unpacking leaves it out"));
}

void BundleCheck::checkExamples(PackageData& barrel, const std::string& place)
{
    for (const PartPtr& part : targets(barrel, Markup::packageSource, Layout::exampleRelationship)) {
        const std::string subject = barrel.parts().subjectOf(part->name);
        if (!Markup::isSameMediaType(part->mediaType, Layout::exampleMediaType))
            m_remarks.push_back(subject + ": the media type is not " + std::string{Layout::exampleMediaType});
        if (isCompressed(barrel, part))
            m_remarks.push_back(subject + ": the example is compressed, so that it cannot be opened in its place");
        checkExample(barrel, part, place + part->name);
    }
}

void BundleCheck::checkExample(PackageData& barrel, const PartPtr& part, const std::string& place)
{
    auto example = barrel.openNested(*part);
    if (!example)
        return m_faults.add(example.error());
    checkPackage(**example, place);
    // what is wrong with the properties is told already
    if (auto properties = readProperties(**example); !properties)
        return;
    if (auto required = requireKind(**example, BundleKind::example); !required)
        m_faults.add(required.error());
}

void BundleCheck::checkSchematics(PackageData& package)
{
    (void)onlyTarget(package, Layout::rootSchematicRelationship);
    const auto parts = package.parts().all();
    for (const PartPtr& part : **parts)
        (void)targets(package, part->name, Layout::descendantSchematicRelationship);
}

std::vector<PartPtr> BundleCheck::targets(PackageData& package, std::string_view source, std::string_view type)
{
    auto relationships = package.relationships().ofType(source, type);
    if (!relationships) {
        m_faults.add(relationships.error());
        return {};
    }
    std::vector<PartPtr> parts;
    for (const auto& relationship : *relationships) {
        auto part = package.findTarget(source, *relationship);
        if (part)
            parts.push_back(std::move(*part));
        else
            m_faults.add(part.error());
    }
    return parts;
}

std::vector<PartPtr> BundleCheck::onlyTarget(PackageData& package, std::string_view type)
{
    std::vector<PartPtr> parts = targets(package, Markup::packageSource, type);
    if (parts.size() > 1)
        m_faults.add(Errors::makeError(OpcError::invalidRelationships, package.displayName(),
                                       "there are " + std::to_string(parts.size()) + " of the type " +
                                           std::string{type} + ", where one may stand"));
    return parts;
}

} // namespace Kelvaris::System::IO::Bundle::detail
