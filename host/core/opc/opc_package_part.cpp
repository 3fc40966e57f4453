#include "kelvaris/system/io/opc_packaging/opc_package_part.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/package_data.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::OpcPackaging {

OpcPackagePart::OpcPackagePart(std::shared_ptr<detail::PackageData> package,
                               std::shared_ptr<detail::PartRecord> record) noexcept
    : m_package{std::move(package)}, m_record{std::move(record)}
{
}

OpcPackagePart::OpcPackagePart(const OpcPackagePart&) = default;
OpcPackagePart::OpcPackagePart(OpcPackagePart&&) noexcept = default;
OpcPackagePart& OpcPackagePart::operator=(const OpcPackagePart&) = default;
OpcPackagePart& OpcPackagePart::operator=(OpcPackagePart&&) noexcept = default;
OpcPackagePart::~OpcPackagePart() = default;

Expected<OpcPackagePartUri, ErrorCode2> OpcPackagePart::uri() const
{
    return Text::withinMemory([this]() -> Expected<OpcPackagePartUri, ErrorCode2> {
        return OpcPackagePartUri{Text::toString2(std::string_view{m_record->name})};
    });
}

Expected<void, ErrorCode2> OpcPackagePart::writeContentFromFile(const FilePath2& source,
                                                                [[maybe_unused]] OpcPackagePartWriteContentMode mode)
{
    return Text::withinMemory([&]() -> Expected<void, ErrorCode2> {
        if (m_record->isRemoved)
            return Errors::makeError(OpcError::noSuchPart, m_package->parts().subjectOf(m_record->name));
        auto bytes = m_package->parts().items().takeFile(source, m_record->compression);
        if (!bytes)
            return bytes.error();
        m_package->setBytes(m_record, std::move(*bytes));
        return {};
    });
}

} // namespace Kelvaris::System::IO::OpcPackaging
