#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/markup/rule_error.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"
#include "kelvaris/system/io/opc_packaging/opc_package_uri.h"
#include "kelvaris/system/system_error.h"

#include <filesystem>

namespace Kelvaris::System::IO::OpcPackaging {

namespace {

using Markup::PartName;

PartName partNameOf(std::string_view text)
{
    return text.starts_with('/') ? Markup::partNameFromText(text) : Markup::partNameFromRawPath(text);
}

/// What no UTF-8 can say is carried in the form in which messages show it.
PartName invalidText(std::wstring_view text)
{
    return {Text::displayed(text), Markup::ruleReason("M1.6", "the text is not valid Unicode")};
}

PartName partNameOf(std::wstring_view text)
{
    try {
        return partNameOf(Text::toUtf8(text));
    } catch (const SystemError&) {
        return invalidText(text);
    }
}

PartName partNameOf(const FilePath2& path)
{
    constexpr char separator = std::filesystem::path::preferred_separator == '\\' ? '\\' : '/';
    try {
        return Markup::partNameFromFilePath(Text::toUtf8(path.c_str()), separator);
    } catch (const SystemError&) {
        return invalidText(path.c_str());
    }
}

/// The way to the constructor that is open to derived classes alone.
struct NamedUri : OpcPackageUri
{
    explicit NamedUri(const PartName& name)
        : OpcPackageUri{Text::toString2(std::string_view{name.text}), Text::toString2(std::string_view{name.fault})}
    {
    }
};

OpcPackageUri uriOf(const PartName& name)
{
    NamedUri uri{name};
    return OpcPackageUri{static_cast<OpcPackageUri&&>(uri)};
}

} // namespace

OpcPackageUri::OpcPackageUri() : m_text{Text::toString2(Markup::packageSource)} {}

OpcPackageUri::OpcPackageUri(String2 text, String2 fault) noexcept : m_text{std::move(text)}, m_fault{std::move(fault)}
{
}

OpcPackageUri::~OpcPackageUri() = default;

Expected<String2, ErrorCode2> OpcPackageUri::toString() const
{
    return Text::withinMemory([this]() -> Expected<String2, ErrorCode2> {
        if (m_fault.length() == 0)
            return m_text;
        return Errors::makeError(OpcError::invalidPartName, Markup::inQuotes(Text::narrow(m_text)),
                                 Text::narrow(m_fault));
    });
}

Expected<Url, ErrorCode2> OpcPackageUri::toUri() const
{
    return toString().andThen([](String2 text) -> Expected<Url, ErrorCode2> { return Url{std::move(text)}; });
}

OpcPackagePartUri::OpcPackagePartUri(const wchar_t* text) : OpcPackageUri{uriOf(partNameOf(std::wstring_view{text}))} {}
OpcPackagePartUri::OpcPackagePartUri(const FilePath2& path) : OpcPackageUri{uriOf(partNameOf(path))} {}
OpcPackagePartUri::OpcPackagePartUri(const String2& text) : OpcPackageUri{uriOf(partNameOf(Text::narrow(text)))} {}

} // namespace Kelvaris::System::IO::OpcPackaging
