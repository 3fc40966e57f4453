#pragma once

// What most sources include, parsed once for each target. A source includes what it uses all the same: the lint build
// and the test of each header go without this.

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/string2.h"
#include "kelvaris/system/string_vector2.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>
