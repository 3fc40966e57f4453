#include "kelvaris/system/io/opc_packaging/opc_package_relationship.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/relationship_record.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"

namespace Kelvaris::System::IO::OpcPackaging {

OpcPackageRelationship::OpcPackageRelationship(std::shared_ptr<const detail::RelationshipRecord> record) noexcept
    : m_record{std::move(record)}
{
}

OpcPackageRelationship::OpcPackageRelationship(const OpcPackageRelationship&) = default;
OpcPackageRelationship::OpcPackageRelationship(OpcPackageRelationship&&) noexcept = default;
OpcPackageRelationship& OpcPackageRelationship::operator=(const OpcPackageRelationship&) = default;
OpcPackageRelationship& OpcPackageRelationship::operator=(OpcPackageRelationship&&) noexcept = default;
OpcPackageRelationship::~OpcPackageRelationship() = default;

Expected<OpcPackageUri, ErrorCode2> OpcPackageRelationship::sourceUri() const
{
    return Text::withinMemory([this]() -> Expected<OpcPackageUri, ErrorCode2> {
        if (m_record->source == Markup::packageSource)
            return OpcPackageUri{};
        return OpcPackageUri{OpcPackagePartUri{Text::toString2(std::string_view{m_record->source})}};
    });
}

Expected<Url, ErrorCode2> OpcPackageRelationship::targetUri() const
{
    return Text::withinMemory([this]() -> Expected<Url, ErrorCode2> {
        if (m_record->mode == OpcTargetMode::external)
            return Url{Text::toString2(std::string_view{m_record->target})};
        const Markup::ResolvedTarget target = m_record->resolved();
        if (!target.isPartName())
            return Errors::makeError(OpcError::invalidRelationships, m_record->subject(), target.fault);
        return Url{Text::toString2(std::string_view{target.uri})};
    });
}

const String2& OpcPackageRelationship::id() const noexcept
{
    return m_record->id;
}

const String2& OpcPackageRelationship::type() const noexcept
{
    return m_record->type;
}

OpcTargetMode OpcPackageRelationship::targetMode() const noexcept
{
    return m_record->mode;
}

} // namespace Kelvaris::System::IO::OpcPackaging
