#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/byte_array2.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_enums.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging {

class OpcPackage;

namespace detail {
class PackageData;
}

/// One entry of a package's file. All text is UTF-8, but for names of archives that use another encoding.
struct InspectedEntry
{
    std::string name;      ///< as it stands in the archive
    std::string partName;  ///< the part that the entry is, or is a piece of; empty when it is no part
    std::string mediaType; ///< empty when it is no part
    std::uint64_t size = 0;
    std::uint64_t compressedSize = 0;
    bool isCompressed = false;
};

struct InspectedRelationship
{
    std::string id;
    std::string type;
    std::string target;   ///< as it is written
    std::string partName; ///< where an internal one leads; empty when that can be no part
    OpcTargetMode mode = OpcTargetMode::internal;
};

/// What a package is made of, for the host's own tools: what `OpcPackage` does not show.
///
/// Every operation answers the rule that the package breaks when it comes upon one; see `OpcPackage`.
class KELVARIS_CORE_API PackageInspection
{
public:
    static Expected<PackageInspection, ErrorCode2> open(const FilePath2& path);

    /// Looks at an open package.
    explicit PackageInspection(const OpcPackage& package) noexcept;

    PackageInspection(const PackageInspection&);
    PackageInspection(PackageInspection&&) noexcept;
    PackageInspection& operator=(const PackageInspection&);
    PackageInspection& operator=(PackageInspection&&) noexcept;
    ~PackageInspection();

    /// The entries of the file that was opened, in their order; none for a package that was not saved yet.
    Expected<std::vector<InspectedEntry>, ErrorCode2> entries() const;

    /// "/" when the package has relationships, and every part's name for which there are some.
    Expected<std::vector<std::string>, ErrorCode2> sources() const;

    /// @param source  "/" or the name of a part; none for one that has none
    Expected<std::vector<InspectedRelationship>, ErrorCode2> relationships(std::string_view source) const;

    /// The bytes of any part, those that hold relationships included.
    /// @return  opc 1 when there is no such part, opc 23 when it is too large for memory
    Expected<ByteArray2, ErrorCode2> read(std::string_view partName) const;

    /// Reads and checks all of it.
    /// @return  a sentence for each thing that is left alone or put up with, or the first rule that is broken
    Expected<std::vector<std::string>, ErrorCode2> verify() const;

private:
    explicit PackageInspection(std::shared_ptr<detail::PackageData> data) noexcept;

    std::shared_ptr<detail::PackageData> m_data;
};

} // namespace Kelvaris::System::IO::OpcPackaging
