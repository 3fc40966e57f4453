#include "host/core/bundle/schematic_files.h"

#include "host/core/bundle/bundle_layout.h"
#include "host/core/bundle/numbered_parts.h"
#include "host/core/bundle/schematic_names.h"
#include "host/core/errors/make_error.h"
#include "host/core/errors/rollback.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/paths/disk/native_path.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/file_system.h"
#include "kelvaris/system/io/mime_type.h"

#include <algorithm>
#include <cassert>

namespace Kelvaris::System::IO::Bundle::detail {

namespace Markup = OpcPackaging::Markup;
using OpcPackaging::OpcError;

namespace {

/// Whether a relationship of `source` leads to `target`. All of them were made here, so that they can be read.
bool usesPart(PackageData& package, const std::string& source, const std::string& target)
{
    auto relationships = package.relationships().of(source);
    assert(relationships);
    return std::ranges::any_of((*relationships)->all(), [&](const Markup::Relationship& relationship) {
        return Text::equalsAsciiCase(Markup::resolveTarget(source, relationship.target).partName, target);
    });
}

bool hasRelationships(PackageData& package, const std::string& source)
{
    auto relationships = package.relationships().of(source);
    assert(relationships);
    return !(*relationships)->all().empty();
}

/// The same for every spelling of a path to one file.
Result<std::filesystem::path> canonicalPath(const FilePath2& file)
{
    auto native = Disk::nativePath(file);
    if (!native)
        return native.error();
    std::error_code error;
    std::filesystem::path path = std::filesystem::canonical(*native, error);
    if (error)
        return Errors::systemError(error.value(), Disk::displayedPath(file), "cannot be found");
    return path;
}

/// Different files may ask for one name, files from elsewhere or names that differ only in case: the later one gets a
/// number.
Result<PartPtr> createPart(PackageData& package, const std::string& name, const std::filesystem::path& file,
                           const PayloadPtr& bytes)
{
    const MIMEType type{FileSystem::type(FilePath{file})};
    return createNumberedPart(package, name, Text::narrow(type.text()), bytes);
}

Result<> checkName(const std::string& name)
{
    const std::string fault = Markup::partNameFault(name);
    if (fault.empty())
        return {};
    return Errors::makeError(OpcError::invalidPartName, Text::displayed(name), fault);
}

} // namespace

Result<PartPtr> SchematicFiles::setRoot(PackageData& package, const FilePath2& schematic)
{
    auto file = canonicalPath(schematic);
    if (!file)
        return file.error();
    const std::string name = schematicPartName(*file, file->parent_path());
    if (auto checked = checkName(name); !checked)
        return checked.error();
    auto bytes = package.parts().items().takeFile(schematic, OpcPackaging::OpcPackageCompressionType::normal);
    if (!bytes)
        return bytes.error();
    PartPtr part = find(*file);
    if (part == nullptr || part != m_root)
        dropRoot(package);
    if (part != nullptr)
        package.setBytes(part, *bytes);
    auto root = part != nullptr ? Result<PartPtr>{part} : createPart(package, name, *file, *bytes);
    if (!root)
        return root;
    Errors::Rollback takeBack{[&] {
        if (part != nullptr)
            return;
        package.parts().remove(*root);
        m_parts.erase(*file);
    }};
    m_parts[*file] = *root;
    std::filesystem::path directory = file->parent_path();
    auto related =
        package.relationships().replaceByType(Markup::packageSource, Layout::rootSchematicRelationship, (*root)->name);
    if (!related)
        return related.error();
    takeBack.dismiss();
    m_root = *root;
    m_rootDirectory.swap(directory);
    return m_root;
}

Result<PartPtr> SchematicFiles::findOrAdd(PackageData& package, const FilePath2& schematic)
{
    auto file = canonicalPath(schematic);
    if (!file)
        return file.error();
    if (PartPtr part = find(*file); part != nullptr)
        return part;
    auto bytes = package.parts().items().takeFile(schematic, OpcPackaging::OpcPackageCompressionType::normal);
    if (!bytes)
        return bytes.error();
    auto part = createPart(package, schematicPartName(*file, m_rootDirectory), *file, *bytes);
    if (!part)
        return part;
    Errors::Rollback takeBack{[&] { package.parts().remove(*part); }};
    m_parts.emplace(*file, *part);
    takeBack.dismiss();
    return part;
}

PartPtr SchematicFiles::find(const std::filesystem::path& file) const
{
    const auto found = m_parts.find(file);
    return found == m_parts.end() ? nullptr : found->second;
}

void SchematicFiles::dropRoot(PackageData& package)
{
    if (m_root == nullptr || hasRelationships(package, m_root->name) || isUsed(package, m_root->name))
        return;
    package.parts().remove(m_root);
    std::erase_if(m_parts, [this](const auto& entry) { return entry.second == m_root; });
    m_root = nullptr;
}

bool SchematicFiles::isUsed(PackageData& package, const std::string& name) const
{
    return std::ranges::any_of(m_parts, [&](const auto& entry) { return usesPart(package, entry.second->name, name); });
}

Result<> relateDescendant(PackageData& package, const std::string& parent, const std::string& descendant)
{
    if (usesPart(package, parent, descendant))
        return {};
    auto related = package.relationships().add(parent, Layout::descendantSchematicRelationship, descendant,
                                               OpcPackaging::OpcTargetMode::internal);
    if (!related)
        return related.error();
    return {};
}

} // namespace Kelvaris::System::IO::Bundle::detail
