#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/QJSEngine>

#include <functional>
#include <string>
#include <vector>

namespace HostShell {

/// How a script ended.
struct ScriptEnd
{
    bool exited = false; ///< by exit(): the program ends, and does not wait for windows
    int status = 0;      ///< 0, what the script gave to exit(), or 1 after an uncaught error
    QString error;       ///< "script.js:12: Error: what happened", empty when no error was left uncaught
};

/// Runs scripts in which every registered function is global.
///
/// A function takes texts or arrays of texts, gives an array of its result strings, and throws an `Error` when the call
/// fails. Beside the functions there are `print(...)`, the array `args`, and `exit(status)`.
///
/// Each run has an engine of its own: nothing is left over from the one before.
class ScriptRunner : public QObject
{
    Q_OBJECT

public:
    using Print = std::function<void(const QString& line)>;

    /// @param print  takes what a script prints, a line at a time, without its line feed
    explicit ScriptRunner(Print print);
    ~ScriptRunner() override;

    /// @param fileName  stands in messages about errors
    ScriptEnd run(const QString& script, const QString& fileName, const std::vector<std::string>& arguments);

    /// For scripts only.
    Q_INVOKABLE QJSValue callFunction(const QString& name, const QJSValue& arguments);
    Q_INVOKABLE void printLine(const QString& line);
    Q_INVOKABLE void endScript(int status);

private:
    void defineGlobals(QJSEngine& engine, const std::vector<std::string>& arguments);
    ScriptEnd endOf(const QJSValueList& uncaught, const QString& fileName) const;
    QJSValue refuse(QJSValue::ErrorType type, const std::string& message);

    Print m_print;
    QJSEngine* m_engine = nullptr;
    bool m_ended = false;
    int m_status = 0;
};

} // namespace HostShell
