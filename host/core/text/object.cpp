#include "kelvaris/system/object.h"

namespace Kelvaris::System {

Object::~Object() = default;

} // namespace Kelvaris::System
