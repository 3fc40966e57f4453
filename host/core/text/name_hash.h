#pragma once

#include "kelvaris/export.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace Kelvaris::System::Text {

/// The hash of names that come out of files.
///
/// It is keyed with a secret of this process (SipHash-1-3). The hash of the standard library has no secret: whoever
/// packs a file can find any number of names that it sends to one place of a table, and a package of a few megabytes
/// would keep its reader busy for hours.
struct KELVARIS_CORE_API NameHash
{
    using is_transparent = void;

    // without noexcept, so that libstdc++ keeps the hash beside the name: tables that grow need not work it out again
    std::size_t operator()(std::string_view text) const;
};

/// Tables of names; looking one up takes no copy of it.
using NameTable = std::unordered_set<std::string, NameHash, std::equal_to<>>;

template <class Value>
using NameMap = std::unordered_map<std::string, Value, NameHash, std::equal_to<>>;

} // namespace Kelvaris::System::Text
