#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/io/bundle/content_bundle.h"
#include "kelvaris/system/io/bundle/html_part.h"
#include "kelvaris/system/url.h"

namespace Kelvaris::System::IO::Bundle {

class ExamplePart;

/// One example: content files of which one is the primary file, a manufacturer, and a documentation page.
class KELVARIS_CORE_API ExampleBundle : public ContentBundle
{
public:
    /// A new, empty bundle.
    static Expected<ExampleBundle, ErrorCode2> create();

    /// @return  bundle 1 when the file is no example bundle, otherwise as `OpcPackage::open`
    static Expected<ExampleBundle, ErrorCode2> open(const FilePath2& path);

    ExampleBundle(ExampleBundle&&) noexcept;
    ExampleBundle& operator=(ExampleBundle&&) noexcept;
    ~ExampleBundle() override;

    /// Adds a file as a content part, with the media type of its kind; see `createContentPartFromFile`.
    Expected<OpcPackaging::OpcPackagePart, ErrorCode2> addFile(const FilePath2& source,
                                                               const OpcPackaging::OpcPackagePartUri& uri,
                                                               OpcPackaging::OpcPackageCompressionType compression);

    /// Makes a part the primary file, in the place of the one before.
    ///
    /// The second form takes a part name as `OpcPackageUri::toUri` gives it, or the relative path that
    /// `Url::toLocalFile` makes of it: names with blanks, "%" or "#" come back as they were.
    /// @return  opc 1 when there is no such part, opc 3 when the name is not valid; the primary file is as it was then
    Expected<void, ErrorCode2> setPrimaryFile(const OpcPackaging::OpcPackagePartUri& uri);
    Expected<void, ErrorCode2> setPrimaryFile(const Url& url);

    /// @return  bundle 3 when no primary file is set, or several are
    Expected<OpcPackaging::OpcPackageRelationship, ErrorCode2> primaryFileRelationship() const;

    /// @return  bundle 6 when the example names none
    Expected<String2, ErrorCode2> manufacturer() const;

    /// The empty text removes it.
    Expected<void, ErrorCode2> setManufacturer(const String2& manufacturer);

    /// The page that a browser shows: the part of the documentation relationship; without one, the content part
    /// "content/documentation.html", then "content/readme.html", then "content/index.html", in any ASCII case.
    /// @return  bundle 4 when there is none of these
    Expected<HTMLPart, ErrorCode2> documentationHTML() const;

    /// For the host's own use: names the page. opc 1 when there is no such part.
    Expected<void, ErrorCode2> setDocumentationHTML(const OpcPackaging::OpcPackagePartUri& uri);

protected:
    friend class ExamplePart;

    explicit ExampleBundle(OpcPackaging::OpcPackage package) noexcept;
};

} // namespace Kelvaris::System::IO::Bundle
