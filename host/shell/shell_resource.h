#pragma once

namespace HostShell {

/// Makes the files of shell.qrc readable below ":/hollerwick/host". A linker drops what nobody names, so that whoever
/// reads one calls this first; once or often is the same.
void loadShellResource();

} // namespace HostShell
