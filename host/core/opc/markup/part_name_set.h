#pragma once

#include "host/core/text/name_hash.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// The names of a package's parts, none equivalent to (M1.12) or derived from (M1.11) another, whatever their order.
///
/// Adding takes time for the segments of the name, not for the names that are there.
class KELVARIS_CORE_API PartNameSet
{
public:
    void reserve(std::size_t count) { m_keys.reserve(count); }

    /// @param name     a valid part name
    /// @param subject  what an error is about
    /// @return  opc 4  an equivalent name is there
    ///          opc 5  the name continues one that is there, or one that is there continues it
    Expected<void, ErrorCode2> add(std::string_view name, std::string_view subject);

    /// The same for a name whose key is known already.
    Expected<void, ErrorCode2> addKey(const std::string& key, std::string_view name, std::string_view subject);

    /// Does nothing for a name that is not there.
    void remove(std::string_view name);

    bool contains(std::string_view name) const;
    std::size_t size() const noexcept { return m_keys.size(); }

private:
    void enterDirectories(std::string_view key);
    void leaveDirectories(std::string_view key);
    std::string_view ancestorOf(std::string_view key) const;

    Text::NameTable m_keys;
    /// Each directory, and how many names and directories stand directly in it.
    Text::NameMap<std::size_t> m_directories;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
