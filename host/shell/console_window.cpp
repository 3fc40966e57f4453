#include "host/shell/console_window.h"

#include "host/shell/call_completion.h"
#include "host/shell/function_call.h"
#include "host/shell/function_pane.h"
#include "host/shell/line_input.h"
#include "host/shell/script_editor.h"
#include "host/shell/window_grabber.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QMimeData>
#include <QtCore/QSaveFile>
#include <QtCore/QUrl>
#include <QtGui/QCloseEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QAction>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTextBrowser>

#include <cstdlib>
#include <utility>

namespace HostShell {

namespace {

using Kelvaris::System::Logging::LogLine;

/// More of a line is of no use to a reader, and a pane takes long to lay it out.
constexpr int longestShownLine = 20000;

QString shownPart(const QString& line)
{
    if (line.size() <= longestShownLine)
        return line;
    return ConsoleWindow::tr("%1… (%n more characters)", nullptr, line.size() - longestShownLine)
        .arg(line.left(longestShownLine));
}

void appendTo(QPlainTextEdit& pane, const QStringList& lines)
{
    QStringList shown;
    for (const QString& line : lines)
        shown.append(shownPart(line));
    pane.appendPlainText(shown.join(QLatin1Char{'\n'}));
}

/// Runs a line and prints its value.
QString scriptOfLine(const QString& line)
{
    const QByteArray literal = QJsonDocument{QJsonArray{line}}.toJson(QJsonDocument::Compact);
    return QStringLiteral("var value = eval(%1[0]); if (value !== undefined) print(value)")
        .arg(QString::fromUtf8(literal));
}

QStringList localFiles(const QMimeData& data)
{
    QStringList files;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    return files;
}

QString scriptFilter()
{
    return ConsoleWindow::tr("Scripts (*.js);;All files (*)");
}

} // namespace

ConsoleWindow::ConsoleWindow(const ConsolePlaces& places)
    : m_memory{places.settings}, m_history{places.history}, m_outputFeed{[this](const QStringList& lines) {
          appendTo(*m_output, lines);
      }},
      m_logFeed{[this](const QStringList& lines) { appendTo(*m_log, lines); }},
      m_script{[this](const QString& line) { m_outputFeed.add(line); }}, m_tap{[this](const LogLine& line) {
          m_logFeed.add(QString::fromStdString(Kelvaris::System::Logging::toText(line)));
      }}
{
    setObjectName(QStringLiteral("ConsoleWindow"));
    setAcceptDrops(true);
    resize(1180, 760);
    buildPanes();
    buildMenus();
    buildToolBar();
    restoreState();
    connect(&m_script, &ScriptThread::ended, this, &ConsoleWindow::endRun);
    connect(m_editor, &QPlainTextEdit::modificationChanged, this, &QWidget::setWindowModified);
    m_editor->viewport()->installEventFilter(this);
    setFile({});
    showRunning();
    statusBar()->showMessage(tr("Ready."));
    m_editor->setFocus();
}

ConsoleWindow::~ConsoleWindow()
{
    // a script that waits to print would never end
    m_outputFeed.close();
    m_logFeed.close();
}

void ConsoleWindow::runScript()
{
    if (m_script.isRunning())
        return;
    m_runsEditor = true;
    m_editor->clearError();
    const QString script = m_editor->toPlainText();
    remember(script);
    m_script.start(script, m_path.isEmpty() ? QStringLiteral("script") : m_path);
    showRunning();
}

void ConsoleWindow::runLine(const QString& line)
{
    if (m_script.isRunning())
        return;
    m_runsEditor = false;
    m_line->clear();
    m_outputFeed.add(QStringLiteral("> ") + line);
    remember(line);
    m_script.start(scriptOfLine(line), QStringLiteral("line"));
    showRunning();
}

void ConsoleWindow::remember(const QString& text)
{
    // before it runs: what it does to the program does not matter to the history
    const QString failure = m_history.add(text);
    if (!failure.isEmpty())
        m_logFeed.add(failure);
}

void ConsoleWindow::endRun(const ScriptEnd& end)
{
    m_outputFeed.flush();
    m_logFeed.flush();
    m_stopping = false;
    showRunning();
    if (end.stopped)
        statusBar()->showMessage(tr("Stopped."));
    else if (end.exited)
        statusBar()->showMessage(tr("Ended by exit(%1).").arg(end.status));
    else
        statusBar()->showMessage(end.error.isEmpty() ? tr("Done.") : shownPart(end.error));
    if (!end.error.isEmpty())
        m_outputFeed.add(end.error);
    if (m_runsEditor && end.line > 0)
        m_editor->markError(end.line, end.error);
    Q_EMIT ended();
    if (std::exchange(m_closing, false))
        close();
}

void ConsoleWindow::stopScript()
{
    if (!m_script.isRunning())
        return;
    m_stopping = true;
    statusBar()->showMessage(tr("Stopping…"));
    m_script.stop();
}

void ConsoleWindow::showRunning()
{
    const bool running = m_script.isRunning();
    m_runAction->setEnabled(!running);
    m_stopAction->setEnabled(running);
    setProperty(busyMark, running);
    if (running)
        statusBar()->showMessage(tr("Running…"));
}

void ConsoleWindow::openWindow(const WindowCall& call)
{
    if (const auto refusal = refusalOf(call.function, call.arguments.size()))
        return tellFailure(tr("Open window"), QString::fromStdString(*refusal));
    const CallOutcome outcome = callByName(call.function, call.arguments);
    if (outcome.result.status != Kelvaris::FUNC_OK)
        return tellFailure(tr("Open window"), QString::fromStdString(outcome.failure));
    for (const std::string& result : outcome.result.results)
        m_outputFeed.add(QString::fromStdString(result));
}

bool ConsoleWindow::openFile(const QString& path)
{
    const FileOpening opening = openingOf(path);
    if (opening.isScript)
        return mayDropChanges() && openScript(path);
    if (!opening.call) {
        tellFailure(tr("Open file"), opening.failure);
        return false;
    }
    m_memory.addRecentFile(path);
    openWindow(*opening.call);
    return true;
}

bool ConsoleWindow::openScript(const QString& path)
{
    QFile file{path};
    if (!file.open(QIODevice::ReadOnly)) {
        tellFailure(tr("Open script"), tr("Cannot read %1: %2").arg(path, file.errorString()));
        return false;
    }
    m_editor->setPlainText(QString::fromUtf8(file.readAll()));
    setFile(path);
    return true;
}

void ConsoleWindow::newScript()
{
    if (!mayDropChanges())
        return;
    m_editor->clear();
    setFile({});
}

void ConsoleWindow::chooseAndOpen()
{
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Open"), m_memory.directory(),
        tr("Scripts and bundles (*.js *.kvbdl.zip *.kvexs *.kvexs.zip *.kvsbd.zip *.zip);;All files (*)"));
    if (!path.isEmpty())
        openFile(path);
}

bool ConsoleWindow::save()
{
    return m_path.isEmpty() ? saveAs() : writeFile(m_path);
}

bool ConsoleWindow::saveAs()
{
    QFileDialog dialog{this, tr("Save script"), m_memory.directory(), scriptFilter()};
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("js"));
    if (!m_path.isEmpty())
        dialog.selectFile(m_path);
    return dialog.exec() == QDialog::Accepted && writeFile(dialog.selectedFiles().front());
}

bool ConsoleWindow::writeFile(const QString& path)
{
    QSaveFile file{path};
    const QByteArray bytes = m_editor->toPlainText().toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        tellFailure(tr("Save script"), tr("Cannot write %1: %2").arg(path, file.errorString()));
        return false;
    }
    setFile(path);
    return true;
}

bool ConsoleWindow::mayDropChanges()
{
    if (!m_editor->document()->isModified())
        return true;
    const auto answer =
        QMessageBox::question(this, tr("Unsaved script"), tr("Save the changes of the script?"),
                              QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save)
        return save();
    return answer == QMessageBox::Discard;
}

void ConsoleWindow::setFile(const QString& path)
{
    m_path = path;
    m_editor->document()->setModified(false);
    const QString name = path.isEmpty() ? tr("new script") : QFileInfo{path}.fileName();
    setWindowTitle(tr("%1[*] - Hollerwick").arg(name));
    if (!path.isEmpty())
        m_memory.addRecentFile(path);
}

void ConsoleWindow::showHelpAtCursor()
{
    if (const FunctionHelp* function = m_editor->completion().atCursor())
        m_functions->show(function->name);
    m_functions->findChild<QTextBrowser*>()->setFocus();
}

void ConsoleWindow::goToPane(int step)
{
    const QList<QWidget*> panes{m_editor,
                                m_output,
                                m_log,
                                m_line,
                                m_functions->findChild<QListWidget*>(),
                                m_functions->findChild<QTextBrowser*>()};
    const int count = panes.size();
    const int here = panes.indexOf(focusWidget());
    panes.at((here + step + count) % count)->setFocus(Qt::ShortcutFocusReason);
}

void ConsoleWindow::tellFailure(const QString& title, const QString& sentence)
{
    QMessageBox box{QMessageBox::Warning, title, sentence, QMessageBox::Ok, this};
    // a sentence names files, and a file name may look like markup
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool ConsoleWindow::mayCloseWhileRunning()
{
    if (!m_stopping) {
        m_closing = true;
        stopScript();
        return false;
    }
    // some steps of the script language, such as the match of a pattern, hear of nothing until they are done
    QMessageBox box{QMessageBox::Question, tr("Script"), tr("The script does not stop. End the program at once?"),
                    QMessageBox::Cancel, this};
    const QAbstractButton* end = box.addButton(tr("&End the program"), QMessageBox::DestructiveRole);
    connect(&m_script, &ScriptThread::ended, &box, &QDialog::reject);
    box.exec();
    if (box.clickedButton() == end)
        std::_Exit(EXIT_FAILURE);
    return false;
}

void ConsoleWindow::closeEvent(QCloseEvent* event)
{
    event->setAccepted(m_script.isRunning() ? mayCloseWhileRunning() : mayDropChanges());
    if (!event->isAccepted())
        return;
    m_memory.setState(QStringLiteral("geometry"), saveGeometry());
    m_memory.setState(QStringLiteral("bars"), QMainWindow::saveState());
    m_memory.setState(QStringLiteral("columns"), m_columns->saveState());
    m_memory.setState(QStringLiteral("rows"), m_rows->saveState());
    m_memory.setState(QStringLiteral("functions"), m_functions->saveState());
}

void ConsoleWindow::restoreState()
{
    restoreGeometry(m_memory.state(QStringLiteral("geometry")));
    QMainWindow::restoreState(m_memory.state(QStringLiteral("bars")));
    m_columns->restoreState(m_memory.state(QStringLiteral("columns")));
    m_rows->restoreState(m_memory.state(QStringLiteral("rows")));
    m_functions->restoreState(m_memory.state(QStringLiteral("functions")));
}

void ConsoleWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!localFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void ConsoleWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // a question may come up, and whoever dropped the file waits for this event to end
    for (const QString& file : localFiles(*event->mimeData()))
        QMetaObject::invokeMethod(
            this, [this, file] { openFile(file); }, Qt::QueuedConnection);
}

bool ConsoleWindow::eventFilter(QObject*, QEvent* event)
{
    // the editor would take a file for text
    const bool isDrag = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove;
    if (!isDrag && event->type() != QEvent::Drop)
        return false;
    auto* drop = static_cast<QDropEvent*>(event);
    if (localFiles(*drop->mimeData()).isEmpty())
        return false;
    if (isDrag)
        drop->acceptProposedAction();
    else
        dropEvent(drop);
    return true;
}

} // namespace HostShell
