#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Kelvaris::System::IO::Bundle::detail {

enum class BundleKind { content, example, barrelOfExamples, schematic, scriptable };

/// As it stands in "/bundle.xml".
std::string_view kindName(BundleKind kind) noexcept;

/// @return  nothing for a name that nobody here knows
std::optional<BundleKind> kindNamed(std::string_view kindName) noexcept;

/// For messages: "a barrel of examples". A name that nobody here knows is shown as it is.
std::string describedKind(std::string_view kindName);

} // namespace Kelvaris::System::IO::Bundle::detail
