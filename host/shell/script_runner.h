#pragma once

#include "host/shell/function_call.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/QJSEngine>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace HostShell {

/// How a script ended.
struct ScriptEnd
{
    bool exited = false;  ///< by exit(): the program ends, and does not wait for windows
    bool stopped = false; ///< by `ScriptRunner::stop`
    int status = 0;       ///< 0, what the script gave to exit(), or 1 after an uncaught error
    QString error = {};   ///< "script.js:12: Error: what happened", empty when no error was left uncaught
    int line = 0;         ///< where the error was thrown; 0 when that is not known
};

/// Runs scripts in which every registered function is global.
///
/// A function takes texts or arrays of texts, gives an array of its result strings, and throws an `Error` when the call
/// fails. Beside the functions there are `print(...)`, the array `args`, and `exit(status)`.
///
/// Each run has an engine of its own: nothing is left over from the one before. A runner works on the thread that it
/// lives on, and so do its `Print` and its `Call`.
class ScriptRunner : public QObject
{
    Q_OBJECT

public:
    using Print = std::function<void(const QString& line)>;

    using Call =
        std::function<CallOutcome(const std::string& name, const std::vector<std::vector<std::string>>& arguments)>;

    /// @param print  takes what a script prints, a line at a time, without its line feed
    /// @param call   calls a registered function
    explicit ScriptRunner(Print print, Call call = callByName);
    ~ScriptRunner() override;

    /// @param fileName  stands in messages about errors
    ScriptEnd run(const QString& script, const QString& fileName, const std::vector<std::string>& arguments);

    /// Ends the script that runs, and the one that is run next when none does. May be called from any thread.
    void stop();

    /// For scripts only.
    Q_INVOKABLE QJSValue callFunction(const QString& name, const QJSValue& arguments);
    Q_INVOKABLE void printLine(const QString& line);
    Q_INVOKABLE void endScript(int status);

private:
    void defineGlobals(QJSEngine& engine, const std::vector<std::string>& arguments);
    ScriptEnd endOf(const QJSValueList& uncaught, const QString& fileName) const;
    QJSValue refuse(QJSValue::ErrorType type, const std::string& message);

    void setEngine(QJSEngine* engine);
    bool takeStop();

    Print m_print;
    Call m_call;
    std::mutex m_mutex; ///< of the next two, as far as `stop` is concerned
    QJSEngine* m_engine = nullptr;
    bool m_stopped = false;
    bool m_ended = false;
    int m_status = 0;
};

} // namespace HostShell
