#include "host/core/opc/markup/part_name_set.h"

#include "host/core/errors/rollback.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/markup/rule_error.h"

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

/// The directory that a name or a directory stands in; empty at the top.
std::string_view directoryOf(std::string_view key) noexcept
{
    return key.substr(0, key.rfind('/'));
}

ErrorCode2 derivedName(std::string_view subject, std::string_view longer, std::string_view shorter)
{
    return ruleError(OpcError::derivedPartName, subject, "M1.11",
                     "the part name " + quoted(longer) + " continues the part name " + quoted(shorter));
}

} // namespace

Expected<void, ErrorCode2> PartNameSet::add(std::string_view name, std::string_view subject)
{
    return addKey(partNameKey(name), name, subject);
}

Expected<void, ErrorCode2> PartNameSet::addKey(const std::string& key, std::string_view name, std::string_view subject)
{
    const auto [place, isNew] = m_keys.insert(key);
    if (!isNew)
        return ruleError(OpcError::partExists, subject, "M1.12",
                         "the part name " + quoted(name) + " is there already, in this or another case");
    Errors::Rollback forget{[&, place = place] { m_keys.erase(place); }};
    if (m_directories.contains(key))
        return derivedName(subject, std::string{name} + "/...", name);
    const std::string_view directory = directoryOf(key);
    if (const auto known = m_directories.find(directory); known != m_directories.end()) {
        ++known->second; // no part is above a directory that has names, so that those who share it are looked at once
    } else {
        if (const std::string_view ancestor = ancestorOf(key); !ancestor.empty())
            return derivedName(subject, name, ancestor);
        enterDirectories(key);
    }
    forget.dismiss();
    return {};
}

void PartNameSet::remove(std::string_view name)
{
    const std::string key = partNameKey(name);
    if (m_keys.erase(key) != 0)
        leaveDirectories(key);
}

bool PartNameSet::contains(std::string_view name) const
{
    return m_keys.contains(partNameKey(name));
}

std::string_view PartNameSet::ancestorOf(std::string_view key) const
{
    for (auto directory = directoryOf(key); !directory.empty(); directory = directoryOf(directory)) {
        if (m_directories.contains(directory))
            break;
        if (m_keys.contains(directory))
            return directory;
    }
    return {};
}

void PartNameSet::enterDirectories(std::string_view key)
{
    auto directory = directoryOf(key);
    Errors::Rollback forget{[&] {
        for (auto below = directoryOf(key); below.size() > directory.size(); below = directoryOf(below))
            m_directories.erase(m_directories.find(below));
    }};
    for (; !directory.empty(); directory = directoryOf(directory)) {
        if (const auto known = m_directories.find(directory); known != m_directories.end()) {
            ++known->second;
            break;
        }
        m_directories.emplace(directory, 1);
    }
    forget.dismiss();
}

void PartNameSet::leaveDirectories(std::string_view key)
{
    for (auto directory = directoryOf(key); !directory.empty(); directory = directoryOf(directory)) {
        const auto known = m_directories.find(directory);
        if (--known->second != 0)
            return;
        m_directories.erase(known);
    }
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
