#include "kelvaris/system/error_category2.h"

namespace Kelvaris::System {

ErrorCategory2::~ErrorCategory2() = default;

} // namespace Kelvaris::System
