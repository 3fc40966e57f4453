#pragma once

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// How hard to try. Bytes that do not shrink are stored.
enum class Effort { store, fast, normal, maximum };

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
