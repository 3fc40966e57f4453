#include "host/shell/script_thread.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <future>
#include <utility>

namespace HostShell {

using Arguments = std::vector<std::vector<std::string>>;

ScriptThread::ScriptThread(ScriptRunner::Print print, QObject* parent)
    : QObject{parent}, m_runner{std::move(print), [this](const std::string& name, const Arguments& arguments) {
                                    return callHere(name, arguments);
                                }}
{
    // the engine of a script may use the runner on its own thread only, which is another one for each script
    m_runner.moveToThread(nullptr);
}

ScriptThread::~ScriptThread()
{
    if (m_thread == nullptr)
        return;
    m_runner.stop();
    constexpr unsigned long moment = 10; // milliseconds
    // a call that waits for its turn will not get it any more
    while (!m_thread->wait(moment))
        QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
}

void ScriptThread::start(const QString& script, const QString& fileName)
{
    if (isRunning())
        return;
    m_thread.reset(QThread::create([this, script, fileName] {
        m_runner.moveToThread(QThread::currentThread());
        m_end = m_runner.run(script, fileName, {});
        m_runner.moveToThread(nullptr);
    }));
    connect(m_thread.get(), &QThread::finished, this, &ScriptThread::finish);
    m_thread->start();
}

void ScriptThread::stop()
{
    if (isRunning())
        m_runner.stop();
}

void ScriptThread::finish()
{
    m_thread->wait();
    m_thread.reset();
    Q_EMIT ended(m_end);
}

CallOutcome ScriptThread::callHere(const std::string& name, const Arguments& arguments)
{
    auto task = std::make_shared<std::packaged_task<CallOutcome()>>([&] { return callByName(name, arguments); });
    std::future<CallOutcome> outcome = task->get_future();
    QMetaObject::invokeMethod(
        this, [task = std::move(task)] { (*task)(); }, Qt::QueuedConnection);
    try {
        return outcome.get();
    } catch (const std::exception& failure) {
        // the window went away before it was this call's turn
        return {{Kelvaris::FUNC_FAILED, {}, {}}, name + " failed: " + failure.what()};
    }
}

} // namespace HostShell
