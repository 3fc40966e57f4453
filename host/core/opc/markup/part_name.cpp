#include "host/core/opc/markup/part_name.h"

#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/rule_error.h"
#include "host/core/opc/markup/uri_characters.h"
#include "host/core/text/text_view.h"

#include <algorithm>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

std::string segmentFault(std::string_view segment)
{
    if (segment.empty())
        return ruleReason("M1.3", "the name has an empty segment");
    for (std::size_t i = 0; i < segment.size(); ++i) {
        if (isSegmentCharacter(segment[i]))
            continue;
        const int decoded = percentDecoded(segment.substr(i));
        if (decoded < 0)
            return ruleReason("M1.6", inQuotes(segment) + " holds a character that must be percent-encoded");
        if (decoded == '/' || decoded == '\\')
            return ruleReason("M1.7", inQuotes(segment) + " holds a percent-encoded slash or backslash");
        if (isUnreserved(static_cast<char>(decoded)))
            return ruleReason("M1.8", inQuotes(segment) + " holds a character that must not be percent-encoded");
        i += 2;
    }
    if (segment.find_first_not_of('.') == std::string_view::npos)
        return ruleReason("M1.10", inQuotes(segment) + " is a segment of dots alone");
    if (segment.back() == '.')
        return ruleReason("M1.9", inQuotes(segment) + " ends with a dot");
    return {};
}

bool isControlCharacter(char character) noexcept
{
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

std::string rawSegmentFault(std::string_view segment)
{
    if (segment.find('\\') != std::string_view::npos)
        return ruleReason("M1.7", "a name of " + inQuotes(segment) + " would hold a backslash");
    if (std::any_of(segment.begin(), segment.end(), isControlCharacter))
        return ruleReason("M1.6", inQuotes(segment) + " holds a control character");
    return {};
}

void appendEncodedSegment(std::string& name, std::string_view segment)
{
    name += '/';
    for (const char character : segment) {
        if (isSegmentCharacter(character))
            name += character;
        else
            appendPercentEncoded(name, character);
    }
}

PartName invalidName(std::string_view given, std::string fault)
{
    return {std::string{given}, std::move(fault)};
}

PartName fromRawPath(std::string_view path, std::string_view separators)
{
    std::string plain = '/' + std::string{path};
    std::ranges::replace_if(
        plain, [&](char character) { return separators.find(character) != std::string_view::npos; }, '/');
    if (isPlainPartName(plain))
        return {std::move(plain), {}};
    if (!Text::isValidUtf8(path))
        return invalidName(path, ruleReason("M1.6", "the text is not valid Unicode"));
    std::string name;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find_first_of(separators, begin), path.size());
        const std::string_view segment = path.substr(begin, end - begin);
        begin = end + 1;
        if (std::string fault = rawSegmentFault(segment); !fault.empty())
            return invalidName(path, std::move(fault));
        if (segment != ".")
            appendEncodedSegment(name, segment);
    }
    if (std::string fault = path.empty() ? partNameFault({}) : partNameFault(name); !fault.empty())
        return invalidName(path, std::move(fault));
    return {std::move(name), {}};
}

std::string withoutWideCharacters(std::string_view text)
{
    std::string encoded;
    encoded.reserve(text.size());
    for (const char character : text) {
        if (static_cast<unsigned char>(character) < 0x80)
            encoded += character;
        else
            appendPercentEncoded(encoded, character);
    }
    return encoded;
}

} // namespace

bool isPlainPartName(std::string_view name) noexcept
{
    if (name.size() < 2 || name.front() != '/')
        return false;
    // a segment that is empty, or made of dots alone, ends with "/" or "."
    const auto isEndOfSegment = [](char last) { return last != '/' && last != '.'; };
    for (std::size_t i = 1; i < name.size(); ++i) {
        if (isSegmentCharacter(name[i]))
            continue;
        if (name[i] != '/' || !isEndOfSegment(name[i - 1]))
            return false;
    }
    return isEndOfSegment(name.back());
}

std::string partNameFault(std::string_view name)
{
    if (isPlainPartName(name))
        return {};
    if (name.empty())
        return ruleReason("M1.1", "the name is empty");
    if (name.front() != '/')
        return ruleReason("M1.4", "the name does not begin with '/'");
    if (name.back() == '/')
        return ruleReason("M1.5", "the name ends with '/'");
    for (std::size_t begin = 1; begin <= name.size();) {
        const std::size_t end = std::min(name.find('/', begin), name.size());
        if (std::string fault = segmentFault(name.substr(begin, end - begin)); !fault.empty())
            return fault;
        begin = end + 1;
    }
    return {};
}

PartName partNameFromText(std::string_view text)
{
    return {std::string{text}, partNameFault(text)};
}

PartName partNameFromRawPath(std::string_view path)
{
    return fromRawPath(path, "/\\");
}

PartName partNameFromFilePath(std::string_view path, char separator)
{
    return fromRawPath(path, separator == '/' ? "/" : "/\\");
}

PartName partNameFromIri(std::string text)
{
    if (Text::isAscii(text)) {
        std::string fault = partNameFault(text);
        return {std::move(text), std::move(fault)};
    }
    if (!Text::isValidUtf8(text))
        return invalidName(text, ruleReason("M1.6", "the name is not valid UTF-8"));
    std::string name = withoutWideCharacters(text);
    std::string fault = partNameFault(name);
    return {std::move(name), std::move(fault)};
}

PartName partNameFromItemName(std::string_view itemName, bool isUtf8)
{
    std::string text;
    text.reserve(itemName.size() + 1);
    text.append("/").append(itemName);
    if (isPlainPartName(text))
        return {std::move(text), {}};
    if (!isUtf8 && !Text::isAscii(itemName))
        return invalidName(itemName, ruleReason("M3.2", "the name is neither ASCII nor marked as UTF-8"));
    PartName name = partNameFromIri(std::move(text));
    if (!name.isValid())
        name.text = itemName;
    return name;
}

std::string partNameKey(std::string_view name)
{
    return Text::toAsciiLower(name);
}

std::string_view extensionOf(std::string_view partName) noexcept
{
    for (std::size_t i = partName.size(); i-- > 0;) {
        if (partName[i] == '.')
            return partName.substr(i + 1);
        if (partName[i] == '/')
            break;
    }
    return {};
}

bool isDefaultExtension(std::string_view text) noexcept
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && percentDecoded(text.substr(i)) >= 0)
            i += 2;
        else if (!isSegmentCharacter(text[i]) || text[i] == '.' || text[i] == ';')
            return false;
    }
    return !text.empty();
}

bool isRelationshipsPartName(std::string_view partName) noexcept
{
    constexpr std::string_view suffix = ".rels";
    constexpr std::string_view folder = "/_rels/";
    if (!partName.starts_with('/') || !Text::endsWithAsciiCase(partName, suffix))
        return false;
    const std::size_t name = partName.rfind('/') + 1;
    if (!Text::endsWithAsciiCase(partName.substr(0, name), folder))
        return false;
    // Below a folder there is no source without a name.
    return partName.size() - name > suffix.size() || name == folder.size();
}

std::string relationshipsPartNameOf(std::string_view source)
{
    if (source == packageSource)
        return std::string{packageRelationshipsPartName};
    const std::size_t name = source.rfind('/') + 1;
    return std::string{source.substr(0, name)}.append("_rels/").append(source.substr(name)).append(".rels");
}

std::optional<std::string> sourceOfRelationshipsPart(std::string_view partName)
{
    if (!isRelationshipsPartName(partName))
        return std::nullopt;
    const std::size_t name = partName.rfind('/') + 1;
    constexpr std::size_t folder = 6; // "_rels/"
    std::string source{partName.substr(0, name - folder)};
    return source.append(partName.substr(name, partName.size() - name - 5));
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
