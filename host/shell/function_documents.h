#pragma once

#include <span>
#include <string>
#include <string_view>

namespace HostShell {

/// What the document of the script functions, docs/functions.md, tells about one of them.
struct FunctionDocument
{
    std::string name;
    std::string arguments; ///< "(files, output[, title])"
    std::string text;      ///< in Markdown, without the heading

    /// The first sentence, without Markdown.
    std::string summary;
};

/// In the order of the document. It is compiled in, so that no file and no plug-in is needed.
std::span<const FunctionDocument> functionDocuments();

/// @return  null for a function that the document does not tell about
const FunctionDocument* findFunctionDocument(std::string_view name);

} // namespace HostShell
