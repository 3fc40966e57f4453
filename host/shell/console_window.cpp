#include "host/shell/console_window.h"

#include "host/shell/function_call.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QSaveFile>
#include <QtGui/QCloseEvent>
#include <QtGui/QFontDatabase>
#include <QtGui/QTextBlock>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QVBoxLayout>

namespace HostShell {

namespace {

using Kelvaris::FunctionRegistry;
using Kelvaris::RegisteredFunction;

QPlainTextEdit* makeTextPane(const QString& objectName, const QString& accessibleName)
{
    auto* pane = new QPlainTextEdit;
    pane->setObjectName(objectName);
    pane->setAccessibleName(accessibleName);
    pane->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    pane->setLineWrapMode(QPlainTextEdit::NoWrap);
    return pane;
}

QWidget* withHeading(const QString& heading, QWidget* pane)
{
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout{box};
    auto* label = new QLabel{heading};
    label->setBuddy(pane);
    layout->addWidget(label);
    layout->addWidget(pane);
    return box;
}

QString arityHint(const RegisteredFunction& function)
{
    const QString arity = QString::fromStdString(arityOf(function));
    return ConsoleWindow::tr("%1: number of arguments %2").arg(QString::fromStdString(function.name), arity);
}

QString scriptFilter()
{
    return ConsoleWindow::tr("Scripts (*.js);;All files (*)");
}

} // namespace

ConsoleWindow::ConsoleWindow()
    : m_runner{[this](const QString& line) { appendOutput(line); }},
      m_log{[this](const Kelvaris::System::Logging::LogLine& line) {
          appendOutput(QString::fromStdString(Kelvaris::System::Logging::toText(line)));
      }}
{
    setObjectName(QStringLiteral("ConsoleWindow"));
    resize(1100, 640);
    buildPanes();
    buildFileMenu();
    buildScriptMenu();
    fillFunctionList();
    setFile({});
    m_editor->setFocus();
}

ConsoleWindow::~ConsoleWindow() = default;

void ConsoleWindow::buildPanes()
{
    m_editor = makeTextPane(QStringLiteral("scriptEdit"), tr("Script"));
    m_editor->setPlaceholderText(tr("print(_filename(\"C:/designs/buck.kvsch\"))"));
    m_output = makeTextPane(QStringLiteral("outputPane"), tr("Output"));
    m_output->setReadOnly(true);
    m_functions = new QListWidget;
    m_functions->setObjectName(QStringLiteral("functionList"));
    m_functions->setAccessibleName(tr("Functions"));

    auto* texts = new QSplitter{Qt::Vertical};
    texts->addWidget(withHeading(tr("&Script"), m_editor));
    texts->addWidget(withHeading(tr("&Output"), m_output));
    texts->setStretchFactor(0, 2);
    texts->setStretchFactor(1, 1);
    auto* all = new QSplitter;
    all->addWidget(texts);
    all->addWidget(withHeading(tr("F&unctions"), m_functions));
    all->setStretchFactor(0, 1);
    all->setSizes({700, 400});
    setCentralWidget(all);

    connect(m_editor, &QPlainTextEdit::modificationChanged, this, &QWidget::setWindowModified);
    connect(m_functions, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* item) { insertFunction(item->text()); });
}

void ConsoleWindow::buildFileMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    menu->addAction(tr("&New"), this, &ConsoleWindow::newScript, QKeySequence::New);
    menu->addAction(tr("&Open…"), this, &ConsoleWindow::chooseAndOpen, QKeySequence::Open);
    menu->addAction(tr("&Save"), this, &ConsoleWindow::save, QKeySequence::Save);
    menu->addAction(tr("Save &As…"), this, &ConsoleWindow::saveAs, QKeySequence::SaveAs);
    menu->addSeparator();
    menu->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
}

void ConsoleWindow::buildScriptMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Run"));
    QAction* run = menu->addAction(tr("&Run script"), this, &ConsoleWindow::runScript, Qt::Key_F5);
    QAction* clear = menu->addAction(tr("&Clear output"), m_output, &QPlainTextEdit::clear);
    clear->setShortcut(QKeySequence{QStringLiteral("Ctrl+L")});
    QToolBar* bar = addToolBar(tr("Run"));
    bar->setObjectName(QStringLiteral("runBar"));
    bar->addAction(run);
    bar->addAction(clear);
}

void ConsoleWindow::fillFunctionList()
{
    for (const RegisteredFunction& function : FunctionRegistry::instance().functions()) {
        auto* item = new QListWidgetItem{QString::fromStdString(function.name), m_functions};
        item->setToolTip(arityHint(function));
    }
}

void ConsoleWindow::insertFunction(const QString& name)
{
    m_editor->insertPlainText(name + QStringLiteral("()"));
    m_editor->moveCursor(QTextCursor::Left);
    m_editor->setFocus();
}

void ConsoleWindow::runScript()
{
    // a script may open a modal dialog, whose event loop lets F5 through to this window's shortcut
    if (m_running)
        return;
    m_running = true;
    const QString fileName = m_path.isEmpty() ? QStringLiteral("script") : m_path;
    const ScriptEnd end = m_runner.run(m_editor->toPlainText(), fileName, {});
    m_running = false;
    if (end.error.isEmpty())
        return;
    appendOutput(end.error);
    markErrorLine(end.error.mid(fileName.size()));
}

void ConsoleWindow::markErrorLine(const QString& error)
{
    static const QRegularExpression place{QStringLiteral("^:(\\d+)")};
    const int line = place.match(error).captured(1).toInt();
    const QTextBlock block = m_editor->document()->findBlockByNumber(line - 1);
    if (!block.isValid())
        return;
    QTextCursor cursor{block};
    cursor.select(QTextCursor::LineUnderCursor);
    m_editor->setTextCursor(cursor);
}

void ConsoleWindow::appendOutput(const QString& line)
{
    m_output->appendPlainText(line);
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
    if (!mayDropChanges())
        return;
    const QString path = QFileDialog::getOpenFileName(this, tr("Open script"), m_path, scriptFilter());
    if (!path.isEmpty())
        openFile(path);
}

bool ConsoleWindow::openFile(const QString& path)
{
    QFile file{path};
    if (!file.open(QIODevice::ReadOnly)) {
        QMessageBox::warning(this, tr("Open script"), tr("Cannot read %1: %2").arg(path, file.errorString()));
        return false;
    }
    m_editor->setPlainText(QString::fromUtf8(file.readAll()));
    setFile(path);
    return true;
}

bool ConsoleWindow::save()
{
    return m_path.isEmpty() ? saveAs() : writeFile(m_path);
}

bool ConsoleWindow::saveAs()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Save script"), m_path, scriptFilter());
    return !path.isEmpty() && writeFile(path);
}

bool ConsoleWindow::writeFile(const QString& path)
{
    QSaveFile file{path};
    const QByteArray bytes = m_editor->toPlainText().toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        QMessageBox::warning(this, tr("Save script"), tr("Cannot write %1: %2").arg(path, file.errorString()));
        return false;
    }
    setFile(path);
    return true;
}

bool ConsoleWindow::mayDropChanges()
{
    if (!m_editor->document()->isModified())
        return true;
    const auto answer = QMessageBox::question(this, tr("Unsaved script"), tr("Save the changes of the script?"),
                                              QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    if (answer == QMessageBox::Save)
        return save();
    return answer == QMessageBox::Discard;
}

void ConsoleWindow::setFile(const QString& path)
{
    m_path = path;
    m_editor->document()->setModified(false);
    const QString name = path.isEmpty() ? tr("new script") : path.section(QLatin1Char{'/'}, -1);
    setWindowTitle(tr("%1[*] - Hollerwick").arg(name));
}

void ConsoleWindow::closeEvent(QCloseEvent* event)
{
    event->setAccepted(!m_running && mayDropChanges());
}

} // namespace HostShell
