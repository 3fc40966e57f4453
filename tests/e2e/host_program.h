#pragma once

#include "tests/support/temporary_folder.h"

#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>

#include <map>
#include <string>
#include <vector>

/// What one run of a program has left.
struct ProgramEnd
{
    int status = -1; ///< of exit; -1 when it did not exit by itself
    std::string output;
    std::string errors;

    friend bool operator==(const ProgramEnd&, const ProgramEnd&) = default;
};

/// For messages of failed tests.
std::ostream& operator<<(std::ostream& out, const ProgramEnd& end);

/// The environment of the test without any display, "C" as its locale, and a home of its own.
QProcessEnvironment bareEnvironment();

ProgramEnd runProgram(const QString& program, const std::vector<std::string>& words,
                      const QProcessEnvironment& environment = bareEnvironment());

/// Runs the real hollerwick-host with the real plug-in.
ProgramEnd runHost(const std::vector<std::string>& words, const QProcessEnvironment& environment = bareEnvironment());

/// Runs a script of that text from a file "script.js" in `folder`.
ProgramEnd runScript(const TemporaryFolder& folder, const std::string& script,
                     const std::vector<std::string>& words = {});

/// All regular files below `directory` by their relative paths, with their bytes.
std::map<std::string, std::string> filesBelow(const std::filesystem::path& directory);
