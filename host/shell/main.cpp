#include "host/shell/command_line.h"
#include "host/shell/command_output.h"
#include "host/shell/commands.h"
#include "host/shell/exit_status.h"
#include "host/shell/host_application.h"
#include "host/shell/log_output.h"
#include "kelvaris/system/application.h"

#include <QtCore/QTextCodec>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>

#include <unistd.h>

namespace {

using namespace HostShell;

int endEarly(const EarlyEnd& end)
{
    if (end.status == ExitStatus::done) {
        std::fputs(end.text.c_str(), stdout);
        return end.status;
    }
    CommandLine line;
    line.json = end.json;
    return refuse(line, end.status, end.text);
}

/// What was printed must have got somewhere: a full disk behind ">" loses lines.
int checkedOutput(int status)
{
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return status;
    complain(std::string{"cannot write to standard output: "} + std::strerror(errno));
    return status == ExitStatus::done ? ExitStatus::failed : status;
}

// Someone who starts the program from a desktop sees no usage on a terminal.
bool isStartedFromDesktop(const std::vector<std::string>& words)
{
    return words.empty() && displayIsNamed() && isatty(STDIN_FILENO) == 0 && isatty(STDERR_FILENO) == 0;
}

int run(const std::vector<std::string>& words)
{
    const auto line = parseCommandLine(isStartedFromDesktop(words) ? std::vector<std::string>{"console"} : words);
    if (!line)
        return endEarly(line.error());
    startLog(line->logThreshold);
    Kelvaris::System::Application::instance()->settings().setLogScriptCalls(line->logScriptCalls);
    return runCommand(*line);
}

} // namespace

int main(int argc, char** argv)
{
    // names of files are UTF-8 whatever the locale is: in the "C" locale Qt would put question marks into them
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    try {
        return checkedOutput(run({argv + 1, argv + argc}));
    } catch (const std::exception& failure) {
        complain(failure.what());
        return ExitStatus::usage;
    }
}
