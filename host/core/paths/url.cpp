#include "kelvaris/system/url.h"

#include "host/core/errors/make_error.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace Kelvaris::System {

namespace {

constexpr bool isLetter(char character)
{
    return ('a' <= character && character <= 'z') || ('A' <= character && character <= 'Z');
}

constexpr bool isSchemeCharacter(char character)
{
    return isLetter(character) || ('0' <= character && character <= '9') || character == '+' || character == '-' ||
           character == '.';
}

/// RFC 3986, 3.1; empty when the text has no scheme.
std::string_view schemeOf(std::string_view text)
{
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0 || !isLetter(text.front()))
        return {};
    const std::string_view scheme = text.substr(0, colon);
    return std::ranges::all_of(scheme, isSchemeCharacter) ? scheme : std::string_view{};
}

std::optional<char> decodedByte(std::string_view digits)
{
    unsigned value = 0;
    const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.size() != 2 || fault != std::errc{} || end != digits.data() + digits.size())
        return std::nullopt;
    return static_cast<char>(value);
}

/// Query and fragment begin at the first of "?" and "#".
std::string_view withoutQuery(std::string_view text)
{
    return text.substr(0, text.find_first_of("?#"));
}

/// The way from one URL to its file; errors show the whole URL.
class LocalFileReader
{
public:
    explicit LocalFileReader(std::string_view url) : m_url{url} {}

    Expected<FilePath2, ErrorCode2> read(UrlLocalFileOptions options) const;

private:
    ErrorCode2 notLocal(std::string_view reason) const
    {
        return Errors::makeError(CoreError::notALocalFile, Text::displayed(m_url), reason);
    }

    ErrorCode2 malformed(std::string_view reason) const
    {
        return Errors::makeError(CoreError::malformedAddress, Text::displayed(m_url), reason);
    }

    Expected<FilePath2, ErrorCode2> fileUrlPath(std::string_view behindScheme) const;
    Expected<FilePath2, ErrorCode2> decodedPath(std::string_view encoded) const;
    Expected<FilePath2, ErrorCode2> toPath(std::string_view text) const;

    std::string_view m_url;
};

Expected<FilePath2, ErrorCode2> LocalFileReader::read(UrlLocalFileOptions options) const
{
    const std::string_view scheme = schemeOf(m_url);
    if (Text::equalsAsciiCase(scheme, "file"))
        return fileUrlPath(m_url.substr(scheme.size() + 1));
    if (!scheme.empty())
        return notLocal("its scheme is not \"file\"");
    if (options == UrlLocalFileOptions::fileUrl)
        return notLocal("it has no scheme");
    if (m_url.starts_with("//"))
        return notLocal("it names another machine");
    // a raw path, in which "%", "?" and "#" are letters like others
    if (!m_url.starts_with('/'))
        return toPath(m_url);
    return decodedPath(options == UrlLocalFileOptions::relativePath ? m_url.substr(1) : m_url);
}

Expected<FilePath2, ErrorCode2> LocalFileReader::fileUrlPath(std::string_view behindScheme) const
{
    std::string_view path = behindScheme;
    if (path.starts_with("//")) {
        path.remove_prefix(2);
        const std::string_view authority = path.substr(0, path.find('/'));
        if (!authority.empty() && !Text::equalsAsciiCase(authority, "localhost"))
            return notLocal("it names another machine");
        path.remove_prefix(authority.size());
    }
    if (!path.starts_with('/'))
        return notLocal("its path is not absolute");
    return decodedPath(path);
}

Expected<FilePath2, ErrorCode2> LocalFileReader::decodedPath(std::string_view encoded) const
{
    const std::string_view path = withoutQuery(encoded);
    std::string decoded;
    for (std::size_t at = 0; at < path.size(); ++at) {
        if (path[at] != '%') {
            decoded += path[at];
            continue;
        }
        const auto byte = decodedByte(path.substr(at + 1, 2));
        if (!byte)
            return malformed("a \"%\" without two hexadecimal digits");
        // no file name holds a separator, and the folders of a path are not to be had by disguise
        if (*byte == '/')
            return malformed("a percent-encoded \"/\"");
        decoded += *byte;
        at += 2;
    }
    return toPath(decoded);
}

Expected<FilePath2, ErrorCode2> LocalFileReader::toPath(std::string_view text) const
{
    if (text.find('\0') != std::string_view::npos)
        return Errors::makeError(CoreError::invalidText, Text::displayed(m_url), "it holds a NUL");
    if (!Text::isValidUtf8(text))
        return Errors::makeError(CoreError::invalidText, Text::displayed(m_url));
    return FilePath2{Text::toString2(text)};
}

} // namespace

Url::Url(String2&& text) noexcept : m_text{std::move(text)} {}

Url::~Url() = default;

Expected<FilePath2, ErrorCode2> Url::toLocalFile(UrlLocalFileOptions options) const
{
    return Text::withinMemory([&] { return LocalFileReader{Text::narrow(m_text)}.read(options); });
}

} // namespace Kelvaris::System
