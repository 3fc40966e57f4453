#include "host/shell/function_documents.h"

#include "host/shell/function_documents_text.h" // made of the document by the build

#include <algorithm>
#include <sstream>
#include <vector>

namespace HostShell {

namespace {

constexpr std::string_view functionHeading = "### _";
constexpr std::size_t headingMark = std::string_view{"### "}.size();

bool isHeading(const std::string& line)
{
    return line.starts_with("## ") || line.starts_with("### ");
}

std::string withoutMarkup(std::string text)
{
    std::erase(text, '`');
    std::ranges::replace(text, '\n', ' ');
    return text;
}

std::string firstSentence(const std::string& text)
{
    const std::size_t paragraph = text.find("\n\n");
    std::string sentence = withoutMarkup(text.substr(0, paragraph));
    const std::size_t end = sentence.find(". ");
    return end == std::string::npos ? sentence : sentence.substr(0, end + 1);
}

std::string trimmed(const std::string& text)
{
    const std::size_t begin = text.find_first_not_of('\n');
    if (begin == std::string::npos)
        return {};
    return text.substr(begin, text.find_last_not_of('\n') - begin + 1);
}

FunctionDocument headed(const std::string& line)
{
    const std::size_t arguments = line.find('(');
    return {line.substr(headingMark, arguments - headingMark), line.substr(arguments), {}, {}};
}

std::vector<FunctionDocument> readDocuments()
{
    std::vector<FunctionDocument> documents;
    bool isInside = false;
    std::istringstream lines{functionDocumentsText};
    for (std::string line; std::getline(lines, line);) {
        if (isHeading(line))
            isInside = line.starts_with(functionHeading);
        if (isInside && isHeading(line))
            documents.push_back(headed(line));
        else if (isInside)
            documents.back().text += line + '\n';
    }
    for (FunctionDocument& document : documents) {
        document.text = trimmed(document.text);
        document.summary = firstSentence(document.text);
    }
    return documents;
}

} // namespace

std::span<const FunctionDocument> functionDocuments()
{
    static const std::vector<FunctionDocument> documents = readDocuments();
    return documents;
}

const FunctionDocument* findFunctionDocument(std::string_view name)
{
    const auto found = std::ranges::find(functionDocuments(), name, &FunctionDocument::name);
    return found == functionDocuments().end() ? nullptr : &*found;
}

} // namespace HostShell
