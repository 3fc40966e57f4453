#include "host/shell/script_runner.h"

#include "host/shell/host_application.h"
#include "host/shell/script_arguments.h"
#include "host/shell/window_functions.h"

#include <QtQml/QQmlEngine>
#include <QtWidgets/QApplication>

#include <optional>
#include <utility>

namespace HostShell {

namespace {

using Kelvaris::FunctionRegistry;
using Kelvaris::RegisteredFunction;

// Behind every global function stands one operation of the runner; this file name keeps the glue out of messages.
const QString glueName = QStringLiteral("(host)");

constexpr const char* functionGlue = "(function(host, name) { return function() {"
                                     " return host.callFunction(name, Array.prototype.slice.call(arguments)); }; })";
constexpr const char* printGlue = "(function(host) { return function() {"
                                  " host.printLine(Array.prototype.slice.call(arguments).join(' ')); }; })";
// A value of any kind may be thrown, so that the value alone does not tell an error from a result.
constexpr const char* runGlue = "(function(program) { try { program(); } catch (error) { return [error]; }"
                                " return []; })";
constexpr const char* exitGlue = "(function(host) { return function(status) {"
                                 " host.endScript(status === undefined ? 0 : status); }; })";

QJSValue glue(QJSEngine& engine, const char* program)
{
    return engine.evaluate(QString::fromLatin1(program), glueName);
}

// Lines of a stack read "function@file:///path/script.js:12", innermost first. The glue's own lines mean nothing to a
// script's author.
int lineInScript(const QJSValue& error)
{
    const QStringList frames = error.property(QStringLiteral("stack")).toString().split(QLatin1Char{'\n'});
    for (const QString& frame : frames) {
        const QString line = frame.section(QLatin1Char{':'}, -1);
        if (!line.isEmpty() && !frame.contains(glueName + QLatin1Char{':'}))
            return line.toInt();
    }
    return error.property(QStringLiteral("lineNumber")).toInt();
}

QString placeInScript(const QString& fileName, int line)
{
    return line > 0 ? fileName + QLatin1Char{':'} + QString::number(line) : fileName;
}

bool canOpenWindows()
{
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

std::optional<std::string> refusalInScript(const std::string& function, std::size_t argumentCount)
{
    if (auto refusal = refusalOf(function, argumentCount))
        return refusal;
    if (!opensWindow(function) || canOpenWindows())
        return std::nullopt;
    if (!displayIsNamed())
        return noDisplay(function);
    return function + " opens a window: write its name out in the script, so that the display is ready for it";
}

QJSValue toArray(QJSEngine& engine, const std::vector<std::string>& texts)
{
    QJSValue array = engine.newArray(static_cast<uint>(texts.size()));
    for (std::size_t i = 0; i < texts.size(); ++i)
        array.setProperty(static_cast<quint32>(i), QString::fromStdString(texts[i]));
    return array;
}

/// @return  what the program has thrown and not caught, or nothing
QJSValueList runProgram(QJSEngine& engine, const QJSValue& program)
{
    const QJSValue thrown = glue(engine, runGlue).call({program});
    if (thrown.property(QStringLiteral("length")).toUInt() == 0)
        return {};
    return {thrown.property(0)};
}

} // namespace

ScriptRunner::ScriptRunner(Print print, Call call) : m_print{std::move(print)}, m_call{std::move(call)} {}

ScriptRunner::~ScriptRunner() = default;

ScriptEnd ScriptRunner::run(const QString& script, const QString& fileName, const std::vector<std::string>& arguments)
{
    QJSEngine engine;
    engine.installExtensions(QJSEngine::ConsoleExtension);
    m_ended = false;
    m_status = 0;
    defineGlobals(engine, arguments);
    setEngine(&engine);
    // as the body of a function, on the line where it stands, so that lines are counted as its author does
    const QJSValue program =
        engine.evaluate(QStringLiteral("(function() { ") + script + QStringLiteral("\n})"), fileName);
    ScriptEnd end = program.isError() ? endOf({program}, fileName) : endOf(runProgram(engine, program), fileName);
    setEngine(nullptr);
    if (takeStop() && !end.exited)
        end = {.stopped = true, .status = 1};
    return end;
}

void ScriptRunner::stop()
{
    const std::lock_guard lock{m_mutex};
    m_stopped = true;
    if (m_engine != nullptr)
        m_engine->setInterrupted(true);
}

void ScriptRunner::setEngine(QJSEngine* engine)
{
    const std::lock_guard lock{m_mutex};
    m_engine = engine;
    if (m_stopped && engine != nullptr)
        engine->setInterrupted(true);
}

bool ScriptRunner::takeStop()
{
    const std::lock_guard lock{m_mutex};
    return std::exchange(m_stopped, false);
}

void ScriptRunner::defineGlobals(QJSEngine& engine, const std::vector<std::string>& arguments)
{
    QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
    const QJSValue host = engine.newQObject(this);
    QJSValue global = engine.globalObject();
    QJSValue wrap = glue(engine, functionGlue);
    for (const RegisteredFunction& function : FunctionRegistry::instance().functions()) {
        const QString name = QString::fromStdString(function.name);
        global.setProperty(name, wrap.call({host, QJSValue{name}}));
    }
    global.setProperty(QStringLiteral("print"), glue(engine, printGlue).call({host}));
    global.setProperty(QStringLiteral("exit"), glue(engine, exitGlue).call({host}));
    global.setProperty(QStringLiteral("args"), toArray(engine, arguments));
}

ScriptEnd ScriptRunner::endOf(const QJSValueList& uncaught, const QString& fileName) const
{
    if (m_ended)
        return {.exited = true, .status = m_status};
    if (uncaught.isEmpty())
        return {};
    const QJSValue& error = uncaught.front();
    if (!error.isError())
        return {.status = 1, .error = fileName + QStringLiteral(": uncaught ") + error.toString()};
    const int line = lineInScript(error);
    return {
        .status = 1, .error = placeInScript(fileName, line) + QStringLiteral(": ") + error.toString(), .line = line};
}

QJSValue ScriptRunner::callFunction(const QString& name, const QJSValue& arguments)
{
    if (m_ended)
        return {};
    const std::string function = name.toStdString();
    const auto values = toCallArguments(arguments);
    if (!values)
        return refuse(QJSValue::TypeError, function + ": " + values.error().text);
    if (const auto refusal = refusalInScript(function, values->size()))
        return refuse(QJSValue::GenericError, *refusal);
    const CallOutcome outcome = m_call(function, *values);
    if (outcome.result.status != Kelvaris::FUNC_OK)
        return refuse(QJSValue::GenericError, outcome.failure);
    return toArray(*m_engine, outcome.result.results);
}

QJSValue ScriptRunner::refuse(QJSValue::ErrorType type, const std::string& message)
{
    m_engine->throwError(type, QString::fromStdString(message));
    return {};
}

void ScriptRunner::printLine(const QString& line)
{
    if (!m_ended)
        m_print(line);
}

void ScriptRunner::endScript(int status)
{
    if (m_ended)
        return;
    m_ended = true;
    m_status = status & 0xff;
    // no handler of the script's own may take this for one of its errors and go on
    m_engine->setInterrupted(true);
    m_engine->throwError(QStringLiteral("exit"));
}

} // namespace HostShell
