#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/string2.h"

namespace Kelvaris::System {

/// Which URLs count as local files, and in which form.
enum class UrlLocalFileOptions : int {
    fileUrl = 0,      ///< "file:" URLs only: the absolute path
    keepRoot = 1,     ///< URLs without a scheme as well: the path as it stands, percent-decoded
    relativePath = 2, ///< URLs without a scheme as well: a relative path, without separators at its beginning
};

/// A URL, or the relative path of a part, as text.
///
/// Text that begins with "/" is the name of a part, percent-encoded. Text without a scheme that does not begin with "/"
/// is a raw path, as the models show it: nothing in it is decoded. Text with a scheme is a URL of the world outside.
class KELVARIS_CORE_API Url
{
public:
    explicit Url(String2&& text) noexcept;
    Url(const Url&) = default;
    Url(Url&&) noexcept = default;
    Url& operator=(const Url&) = default;
    Url& operator=(Url&&) noexcept = default;
    ~Url();

    /// The text as it was given.
    const String2& text() const noexcept { return m_text; }

    /// The local file that the URL denotes. Query and fragment take no part in it. For the URL of a part inside a
    /// package, `relativePath` gives "content/a b.txt" for "/content/a%20b.txt", ready to be appended to a directory.
    ///
    /// @return  core 3 when it denotes no local file: another scheme than "file", or an authority
    ///          core 9 when a "%" begins no encoded byte, or the byte is a "/"
    ///          core 5 when what the percent-encoding stands for is not valid UTF-8, or holds a NUL
    Expected<FilePath2, ErrorCode2> toLocalFile(UrlLocalFileOptions options) const;

private:
    String2 m_text;
};

} // namespace Kelvaris::System
