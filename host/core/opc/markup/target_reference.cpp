#include "host/core/opc/markup/target_reference.h"

#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/markup/rule_error.h"
#include "host/core/opc/markup/uri_characters.h"
#include "host/core/opc/markup/xml_characters.h"

#include <algorithm>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

struct Reference
{
    std::string_view path;
    std::string_view query;    ///< with its "?"
    std::string_view fragment; ///< with its "#"
};

Reference split(std::string_view target)
{
    Reference reference;
    const std::size_t hash = std::min(target.find('#'), target.size());
    reference.fragment = target.substr(hash);
    target = target.substr(0, hash);
    const std::size_t mark = std::min(target.find('?'), target.size());
    reference.query = target.substr(mark);
    reference.path = target.substr(0, mark);
    return reference;
}

bool hasScheme(std::string_view target) noexcept
{
    const std::size_t colon = target.find(':');
    if (colon == 0 || colon == std::string_view::npos)
        return false;
    const char first = static_cast<char>(target.front() | 0x20);
    return first >= 'a' && first <= 'z' && std::all_of(target.begin(), target.begin() + colon, [](char character) {
               return character == '+' || (isUnreserved(character) && character != '_' && character != '~');
           });
}

bool isSlash(char character) noexcept
{
    return character == '/' || character == '\\';
}

bool isBracketOrHash(char character) noexcept
{
    return character == '[' || character == ']' || character == '#';
}

/// One component as it stands in a URI, in which "/" and "?" need no encoding. `isByTheLetter` turns false when
/// something had to be put up with.
std::string normalised(std::string_view text, bool& isByTheLetter)
{
    const auto isPlain = [](char character) { return isReferenceCharacter(character) && !isBracketOrHash(character); };
    if (std::all_of(text.begin(), text.end(), isPlain))
        return std::string{text};
    std::string uri;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (isPlain(character)) {
            uri += character;
            continue;
        }
        const int decoded = percentDecoded(text.substr(i));
        if (decoded < 0) {
            const bool isWide = (character & 0x80) != 0;
            isByTheLetter = isByTheLetter && isWide;
            appendPercentEncoded(uri, character);
            continue;
        }
        if (isUnreserved(static_cast<char>(decoded)))
            uri += static_cast<char>(decoded);
        else
            appendPercentEncoded(uri, static_cast<char>(decoded));
        i += 2;
    }
    return uri;
}

std::string normalisedPath(std::string_view path, bool& isByTheLetter)
{
    if (path.find('\\') == std::string_view::npos)
        return normalised(path, isByTheLetter);
    isByTheLetter = false;
    std::string slashes{path};
    std::replace(slashes.begin(), slashes.end(), '\\', '/');
    return normalised(slashes, isByTheLetter);
}

/// RFC 3986, 5.2.4, for a path that begins with "/".
std::string withoutDotSegments(std::string whole)
{
    if (whole.find("/.") == std::string::npos)
        return whole;
    std::string_view path = whole;
    std::string result;
    result.reserve(path.size());
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/', 1), path.size());
        const std::string_view segment = path.substr(1, end - 1);
        path.remove_prefix(end);
        const bool isUp = segment == "..";
        if (isUp)
            result.resize(result.empty() ? 0 : result.rfind('/'));
        if (!isUp && segment != ".")
            result.append("/").append(segment);
        else if (path.empty())
            result += '/';
    }
    return result;
}

std::string mergedPath(std::string_view source, std::string path)
{
    if (path.empty())
        return std::string{source};
    if (path.front() == '/')
        return withoutDotSegments(std::move(path));
    return withoutDotSegments(std::string{source.substr(0, source.rfind('/') + 1)}.append(path));
}

} // namespace

std::string internalTargetFault(std::string_view target)
{
    target = trimmed(target);
    if (hasScheme(target))
        return ruleReason("M1.29", "the internal target " + inQuotes(target) + " is an absolute URI");
    if (target.size() >= 2 && isSlash(target[0]) && isSlash(target[1]))
        return ruleReason("M1.29", "the internal target " + inQuotes(target) + " has an authority");
    return {};
}

ResolvedTarget resolveTarget(std::string_view source, std::string_view target)
{
    if (isPlainPartName(target)) // which stands for itself
        return {std::string{target}, std::string{target}, {}, {}};
    const Reference reference = split(trimmed(target));
    bool isByTheLetter = true;
    std::string path = mergedPath(source, normalisedPath(reference.path, isByTheLetter));
    ResolvedTarget resolved;
    resolved.uri = path;
    if (!reference.query.empty())
        resolved.uri.append("?").append(normalised(reference.query.substr(1), isByTheLetter));
    if (!reference.fragment.empty())
        resolved.uri.append("#").append(normalised(reference.fragment.substr(1), isByTheLetter));
    if (!isByTheLetter)
        resolved.warning = ruleReason("M1.28", "the target " + inQuotes(target) +
                                                   " is no URI reference; it is read as " + inQuotes(resolved.uri));
    if (path == packageSource)
        resolved.fault = "the target " + inQuotes(target) + " is the package itself";
    else
        resolved.fault = partNameFault(path);
    if (resolved.fault.empty())
        resolved.partName = std::move(path);
    return resolved;
}

std::string targetText(std::string_view partName)
{
    return std::string{partName};
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
