#include "models/path_elements.h"

namespace PathElements {

namespace {

constexpr std::wstring_view separators = L"/\\";

QString toText(std::wstring_view text)
{
    return QString::fromWCharArray(text.data(), static_cast<int>(text.size()));
}

} // namespace

std::wstring_view parentPath(std::wstring_view path) noexcept
{
    const auto separator = path.find_last_of(separators);
    if (separator == std::wstring_view::npos)
        return {};
    const auto end = path.find_last_not_of(separators, separator);
    if (end == std::wstring_view::npos)
        return path.substr(0, separator + 1);
    return path.substr(0, end + 1);
}

std::wstring_view lastElement(std::wstring_view path) noexcept
{
    const auto separator = path.find_last_of(separators);
    return separator == std::wstring_view::npos ? path : path.substr(separator + 1);
}

std::vector<QString> elements(std::wstring_view path)
{
    std::vector<QString> found;
    auto begin = path.find_first_not_of(separators);
    while (begin != std::wstring_view::npos) {
        const auto end = path.find_first_of(separators, begin);
        found.push_back(toText(path.substr(begin, end - begin)));
        begin = path.find_first_not_of(separators, end);
    }
    return found;
}

} // namespace PathElements
