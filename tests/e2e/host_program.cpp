#include "tests/e2e/host_program.h"

#include <QtCore/QProcess>

namespace fs = std::filesystem;

std::ostream& operator<<(std::ostream& out, const ProgramEnd& end)
{
    return out << "status " << end.status << "\noutput: " << end.output << "\nerrors: " << end.errors;
}

QProcessEnvironment bareEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "LC_ALL", "LANG"})
        environment.remove(QString::fromLatin1(name));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    return environment;
}

ProgramEnd runProgram(const QString& program, const std::vector<std::string>& words,
                      const QProcessEnvironment& environment)
{
    constexpr int patience = 120'000;
    QStringList arguments;
    for (const std::string& word : words)
        arguments << QString::fromStdString(word);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished(patience))
        process.kill();
    process.waitForFinished();
    const int status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return {status, process.readAllStandardOutput().toStdString(), process.readAllStandardError().toStdString()};
}

ProgramEnd runHost(const std::vector<std::string>& words, const QProcessEnvironment& environment)
{
    return runProgram(QStringLiteral(HOLLERWICK_HOST), words, environment);
}

ProgramEnd runScript(const TemporaryFolder& folder, const std::string& script, const std::vector<std::string>& words)
{
    std::vector<std::string> all{"run", folder.write("script.js", script).string()};
    all.insert(all.end(), words.begin(), words.end());
    return runHost(all);
}

std::map<std::string, std::string> filesBelow(const fs::path& directory)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator{directory}) {
        if (entry.is_regular_file())
            files[fs::relative(entry.path(), directory).string()] = readFile(entry.path());
    }
    return files;
}
