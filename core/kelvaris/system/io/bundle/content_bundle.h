#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/io/bundle/abstract_bundle.h"
#include "kelvaris/system/io/mime_type.h"

namespace Kelvaris::System::IO::Bundle {

/// A bundle with content parts, which can be unpacked into a directory.
///
/// A content part is one that a package relationship of type
/// "http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content" leads to.
class KELVARIS_CORE_API ContentBundle : public AbstractBundle
{
public:
    /// A new, empty bundle.
    static Expected<ContentBundle, ErrorCode2> create();

    /// Opens a content bundle, an example bundle (which is one), or a package that does not say what it is.
    /// @return  bundle 1 when it is a bundle of another kind, otherwise as `OpcPackage::open`
    static Expected<ContentBundle, ErrorCode2> open(const FilePath2& path);

    ContentBundle(ContentBundle&&) noexcept;
    ContentBundle& operator=(ContentBundle&&) noexcept;
    ~ContentBundle() override;

    /// The relationships to the content parts, in the order in which they were added.
    Expected<OpcPackaging::OpcPackageRelationshipCollection, ErrorCode2> contentRelationships() const;

    /// Adds a file as a content part and relates the package to it.
    ///
    /// The file's bytes are taken in now; later changes to it do not matter.
    /// @param source       a regular file, read to its end
    /// @param uri          where the part stands; "/content/..." by custom
    /// @param compression  how hard to try; bytes that do not shrink are stored
    /// @return  the new part, or opc 3 when `uri` is no valid part name, opc 4 when a part of that name (in any ASCII
    /// case)
    ///          exists, opc 5 when it is derived from another's, the system's error when `source` cannot be read; the
    ///          bundle is as it was then
    Expected<OpcPackaging::OpcPackagePart, ErrorCode2>
    createContentPartFromFile(const FilePath2& source, const OpcPackaging::OpcPackagePartUri& uri, const MIMEType& type,
                              OpcPackaging::OpcPackageCompressionType compression);

    /// Writes each content part to its path below `directory`, "content/..." included. The directory is made if it is
    /// not there.
    ///
    /// Every destination is worked out and checked before the first byte is written; a failure in the middle removes
    /// what was written. Nothing that exists is overwritten, no link is followed out of the directory, and none is
    /// made.
    ///
    /// @return  opc 24 when a part would leave the directory or has a name that the platform cannot hold, opc 25 when a
    /// file
    ///          exists already, opc 26 when two parts fall on one file, or the error of reading a part or writing a
    ///          file
    Expected<void, ErrorCode2> unpack(const FilePath2& directory);

protected:
    explicit ContentBundle(OpcPackaging::OpcPackage package) noexcept;
};

} // namespace Kelvaris::System::IO::Bundle
