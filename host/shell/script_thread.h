#pragma once

#include "host/shell/script_runner.h"

#include <QtCore/QObject>

#include <memory>

class QThread;

namespace HostShell {

/// Runs scripts on a thread of its own, so that a window stays alive under a script that does not end.
///
/// The functions that a script calls run on the thread that this object lives on, since they may open windows; the
/// script waits for them.
class ScriptThread : public QObject
{
    Q_OBJECT

public:
    /// @param print  takes what a script prints, on the script's thread
    explicit ScriptThread(ScriptRunner::Print print, QObject* parent = nullptr);

    /// Stops the script and waits for its end.
    ~ScriptThread() override;

    bool isRunning() const { return m_thread != nullptr; }

    /// Does nothing while a script runs.
    void start(const QString& script, const QString& fileName);

    /// Ends the script, also an endless loop, and returns at once: `ended` follows.
    void stop();

Q_SIGNALS:
    void ended(const HostShell::ScriptEnd& end);

private:
    CallOutcome callHere(const std::string& name, const std::vector<std::vector<std::string>>& arguments);
    void finish();

    ScriptRunner m_runner;
    std::unique_ptr<QThread> m_thread;
    ScriptEnd m_end;
};

} // namespace HostShell
