#pragma once

#include "host/shell/command_line.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/file_path2.h"

#include <QtCore/QJsonObject>

#include <optional>
#include <string>

namespace HostShell {

/// A line on standard output.
void printLine(const std::string& text);

/// One line of JSON on standard output: `value` behind "status".
void printJson(int status, QJsonObject value);

/// What failed, where, why and what to do, and as one sentence.
QJsonObject toJson(const Kelvaris::System::ErrorCode2& error);

/// Why a verb does not do what it was asked for.
struct Refusal
{
    int status;
    std::string sentence;
    std::optional<Kelvaris::System::ErrorCode2> error = {}; ///< where there is more to tell than the sentence
};

/// An input that cannot be used.
Refusal badInput(const Kelvaris::System::ErrorCode2& error);

/// Tells why the program does not do what it was asked for: a sentence on standard error, and with --json the same on
/// standard output.
/// @return  `status`
int refuse(const CommandLine& line, int status, const std::string& sentence);
int refuse(const CommandLine& line, int status, const Kelvaris::System::ErrorCode2& error);
int refuse(const CommandLine& line, const Refusal& refusal);

/// The exit status for an input that was refused so: a file that exists where one was to be written has its own.
int statusOf(const Kelvaris::System::ErrorCode2& error);

/// Between the contract's texts and those of the command line, which are UTF-8.
std::string toText(const Kelvaris::System::String2& text);
Kelvaris::System::FilePath2 toPath(const std::string& text);

} // namespace HostShell
