#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/object.h"

#include <filesystem>

namespace Kelvaris::System {

/// The older path class; only `FileSystem::type` takes it.
class KELVARIS_CORE_API FilePath : public Object
{
public:
    explicit FilePath(const std::filesystem::path& path);
    ~FilePath() override;

    const std::filesystem::path& path() const noexcept { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace Kelvaris::System
