#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/string2.h"
#include "kelvaris/system/url.h"

namespace Kelvaris::System::IO::OpcPackaging {

/// A URI inside a package: "/" for the package itself, otherwise the name of a part.
class KELVARIS_CORE_API OpcPackageUri
{
public:
    /// The package itself.
    OpcPackageUri();

    OpcPackageUri(const OpcPackageUri&) = default;
    OpcPackageUri(OpcPackageUri&&) noexcept = default;
    OpcPackageUri& operator=(const OpcPackageUri&) = default;
    OpcPackageUri& operator=(OpcPackageUri&&) noexcept = default;
    ~OpcPackageUri();

    /// The percent-encoded text, which is ASCII.
    /// @return  opc 3, with the name and what is wrong with it
    Expected<String2, ErrorCode2> toString() const;

    /// The same as a URL: `Url::toLocalFile` decodes it.
    /// @return  opc 3, with the name and what is wrong with it
    Expected<Url, ErrorCode2> toUri() const;

protected:
    /// @param text   the URI, or what was given in its place when it is not valid
    /// @param fault  what is wrong with it; empty when nothing is
    OpcPackageUri(String2 text, String2 fault) noexcept;

private:
    String2 m_text;
    String2 m_fault;
};

} // namespace Kelvaris::System::IO::OpcPackaging
