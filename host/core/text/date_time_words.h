#pragma once

#include <string_view>

namespace Kelvaris::System::Text {

/// Whether `DateTime::fromXSDDateTime` takes the text. Allocates nothing, so that lack of memory is not taken for a
/// date that is none.
bool isDateTime(std::string_view text);

} // namespace Kelvaris::System::Text
