#include "kelvaris/system/file_path.h"

namespace Kelvaris::System {

FilePath::FilePath(const std::filesystem::path& path) : m_path{path} {}

FilePath::~FilePath() = default;

} // namespace Kelvaris::System
