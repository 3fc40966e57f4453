#include "fuzz/fuzzing.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/markup/part_name_set.h"
#include "host/core/opc/markup/target_reference.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"
#include "kelvaris/system/url.h"

#include <algorithm>
#include <string>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;
using namespace Kelvaris::System::IO::OpcPackaging::Markup;

namespace {

/// What a part name stands for as a relative path; empty for none.
std::string localPath(std::string_view name)
{
    const auto path = Url{Text::toString2(name)}.toLocalFile(UrlLocalFileOptions::relativePath);
    return path ? Text::toUtf8(path->c_str()) : std::string{};
}

/// The path as raw paths mean it: one separator, no "." segments.
std::string normalised(std::string_view path)
{
    std::string result;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find_first_of("/\\", begin), path.size());
        const std::string_view segment = path.substr(begin, end - begin);
        begin = end + 1;
        if (segment == ".")
            continue;
        if (!result.empty())
            result += '/';
        result += segment;
    }
    return result;
}

void requireValid(const PartName& name)
{
    if (!name.isValid())
        return;
    Fuzzing::require(partNameFault(name.text).empty(), "a valid name has no fault");
    Fuzzing::require(partNameKey(partNameKey(name.text)) == partNameKey(name.text), "a key is its own key");
    const ResolvedTarget target = resolveTarget("/x/y.txt", targetText(name.text));
    Fuzzing::require(target.isPartName() && partNameKey(target.partName) == partNameKey(name.text),
                     "the target that is written for a name leads to it");
    const std::string path = localPath(name.text);
    Fuzzing::require(!path.starts_with('/') && path.find("../") != 0 && path.find("/../") == std::string::npos,
                     "no name leads out of a directory");
    const auto source = sourceOfRelationshipsPart(name.text);
    Fuzzing::require(source.has_value() == isRelationshipsPartName(name.text), "relationships have a source");
    Fuzzing::require(!source || partNameKey(relationshipsPartNameOf(*source)) == partNameKey(name.text),
                     "the source leads back to its relationships");
    PartNameSet names;
    const auto subject = [] { return std::string{"fuzz"}; };
    Fuzzing::require(names.add(name.text, subject).hasValue() && !names.add(name.text, subject),
                     "a name is there once");
    Fuzzing::require(!names.add(name.text + "/x", subject), "no name continues another");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text = Fuzzing::textOf(data, size);
    requireValid(partNameFromText(text));
    requireValid(partNameFromIri(std::string{text}));
    requireValid(partNameFromItemName(text, true));
    requireValid(partNameFromItemName(text, false));
    const PartName raw = partNameFromRawPath(text);
    requireValid(raw);
    Fuzzing::require(!raw.isValid() || localPath(raw.text) == normalised(text), "a raw path comes back");
    requireValid(partNameFromFilePath(text, '/'));
    if (const auto piece = pieceNameOf(text))
        Fuzzing::require(!piece->itemName.empty() && text.starts_with(piece->itemName), "a piece names its item");
    const OpcPackagePartUri uri{Text::toString2(text)};
    const auto written = uri.toString();
    Fuzzing::require(!written || partNameFault(Text::narrow(*written)).empty(),
                     "a part URI is a part name or an error");
    Fuzzing::require(uri.toUri().hasValue() == written.hasValue(), "a part URI is one in every form or in none");
    if (internalTargetFault(text).empty()) {
        const ResolvedTarget target = resolveTarget("/a/b.txt", text);
        Fuzzing::require(target.isPartName() == partNameFault(target.partName).empty(),
                         "a target is a part name or none");
    }
    for (const auto options :
         {UrlLocalFileOptions::fileUrl, UrlLocalFileOptions::keepRoot, UrlLocalFileOptions::relativePath})
        static_cast<void>(Url{Text::toString2(text)}.toLocalFile(options));
    return 0;
}
