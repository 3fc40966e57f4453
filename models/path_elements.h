#pragma once

#include <QtCore/QString>

#include <string_view>
#include <vector>

/// The grammar of a part's local path, as the trees over packages read it: "/" and "\" both separate, on every
/// platform, and a run of them is one boundary.
namespace PathElements {

/// The text ahead of the last element, without the separators between them. A root directory stays: "/a" gives "/".
std::wstring_view parentPath(std::wstring_view path) noexcept;

/// The text behind the last separator; empty when the path ends in one.
std::wstring_view lastElement(std::wstring_view path) noexcept;

/// The elements from left to right; none of them is empty.
std::vector<QString> elements(std::wstring_view path);

} // namespace PathElements
