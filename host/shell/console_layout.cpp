// How the console is laid out: its panes, menus and tool bar.

#include "host/shell/call_completion.h"
#include "host/shell/console_window.h"
#include "host/shell/fixed_font.h"
#include "host/shell/function_pane.h"
#include "host/shell/line_input.h"
#include "host/shell/script_editor.h"
#include "host/shell/shell_icons.h"
#include "host/shell/window_menu.h"
#include "host/shell/with_label.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolBar>

namespace HostShell {

namespace {

/// A pane keeps this many lines, which is more than anybody reads there.
constexpr int mostLines = 10000;

QPlainTextEdit* makeReadOnlyPane(const QString& objectName)
{
    auto* pane = new QPlainTextEdit;
    pane->setObjectName(objectName);
    pane->setFont(fixedFont());
    pane->setLineWrapMode(QPlainTextEdit::NoWrap);
    pane->setReadOnly(true);
    // a read-only pane has no cursor to move otherwise
    pane->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    pane->setTabChangesFocus(true);
    pane->setMaximumBlockCount(mostLines);
    return pane;
}

QSplitter* makeSplitter(Qt::Orientation orientation, const QString& objectName)
{
    auto* splitter = new QSplitter{orientation};
    splitter->setObjectName(objectName);
    splitter->setChildrenCollapsible(false);
    return splitter;
}

} // namespace

void ConsoleWindow::buildPanes()
{
    m_editor = new ScriptEditor;
    m_editor->setObjectName(QStringLiteral("scriptEdit"));
    m_editor->setPlaceholderText(
        tr("Write a script, or drop a file here. Tab completes the name of a function, F5 runs the script."));
    m_output = makeReadOnlyPane(QStringLiteral("outputPane"));
    m_log = makeReadOnlyPane(QStringLiteral("logPane"));
    m_functions = new FunctionPane;

    auto* outputs = makeSplitter(Qt::Horizontal, QStringLiteral("outputs"));
    outputs->addWidget(withLabel(tr("&Output"), m_output));
    outputs->addWidget(withLabel(tr("&Log"), m_log));
    m_rows = makeSplitter(Qt::Vertical, QStringLiteral("rows"));
    m_rows->addWidget(withLabel(tr("&Script"), m_editor));
    m_rows->addWidget(outputs);
    m_rows->setStretchFactor(0, 2);
    m_rows->setStretchFactor(1, 1);

    auto* left = new QWidget;
    auto* column = new QVBoxLayout{left};
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_rows);
    column->addWidget(buildLineInput());
    m_columns = makeSplitter(Qt::Horizontal, QStringLiteral("columns"));
    m_columns->addWidget(left);
    m_columns->addWidget(m_functions);
    m_columns->setStretchFactor(0, 1);
    m_columns->setSizes({740, 440});

    auto* all = new QWidget;
    auto* margins = new QVBoxLayout{all};
    margins->addWidget(m_columns);
    setCentralWidget(all);

    connect(m_functions, &FunctionPane::chosen, &m_editor->completion(), &CallCompletion::insertCall);
    connect(&m_editor->completion(), &CallCompletion::inserted, this,
            [this](const QString& signature) { statusBar()->showMessage(signature); });
}

QWidget* ConsoleWindow::buildLineInput()
{
    auto* box = new QWidget;
    auto* layout = new QHBoxLayout{box};
    layout->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel{tr("L&ine")};
    m_line = new LineInput{m_history};
    m_line->setObjectName(QStringLiteral("lineInput"));
    m_line->setAccessibleName(tr("Line"));
    m_line->setFont(fixedFont());
    m_line->setPlaceholderText(tr("One line to run at once; Up and Down bring back earlier ones"));
    label->setBuddy(m_line);
    layout->addWidget(label);
    layout->addWidget(m_line);
    connect(m_line, &LineInput::entered, this, &ConsoleWindow::runLine);
    return box;
}

void ConsoleWindow::buildMenus()
{
    buildFileMenu();
    buildEditMenu();
    buildRunMenu();
    auto* windows = new WindowMenu{m_memory, this};
    menuBar()->addMenu(windows);
    connect(windows, &WindowMenu::chosen, this, &ConsoleWindow::openWindow);
    buildViewMenu();
    buildHelpMenu();
}

void ConsoleWindow::buildFileMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    m_newAction = menu->addAction(shellIcon(QStringLiteral("document-new")), tr("&New script"), this,
                                  &ConsoleWindow::newScript, QKeySequence::New);
    m_openAction = menu->addAction(shellIcon(QStringLiteral("document-open")), tr("&Open…"), this,
                                   &ConsoleWindow::chooseAndOpen, QKeySequence::Open);
    m_recentMenu = menu->addMenu(tr("Open &recent"));
    connect(menu, &QMenu::aboutToShow, this, &ConsoleWindow::fillRecentMenu);
    m_saveAction = menu->addAction(shellIcon(QStringLiteral("document-save")), tr("&Save"), this, &ConsoleWindow::save,
                                   QKeySequence::Save);
    menu->addAction(tr("Save &as…"), this, &ConsoleWindow::saveAs, QKeySequence::SaveAs);
    menu->addSeparator();
    menu->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
}

void ConsoleWindow::fillRecentMenu()
{
    m_recentMenu->clear();
    for (const QString& path : m_memory.recentFiles()) {
        // an ampersand in a name is no mnemonic
        QString text = path;
        m_recentMenu->addAction(text.replace(QLatin1Char{'&'}, QStringLiteral("&&")), this,
                                [this, path] { openFile(path); });
    }
    m_recentMenu->setEnabled(!m_recentMenu->isEmpty());
}

void ConsoleWindow::buildEditMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Edit"));
    menu->addAction(tr("&Undo"), m_editor, &QPlainTextEdit::undo);
    menu->addAction(tr("&Redo"), m_editor, &QPlainTextEdit::redo);
    menu->addSeparator();
    menu->addAction(tr("&Complete"), &m_editor->completion(), &CallCompletion::complete,
                    QKeySequence{QStringLiteral("Ctrl+Space")});
    menu->addAction(tr("&Indent"), m_editor, &ScriptEditor::indent, QKeySequence{QStringLiteral("Ctrl+]")});
    menu->addAction(tr("Unin&dent"), m_editor, &ScriptEditor::unindent, QKeySequence{QStringLiteral("Ctrl+[")});
}

void ConsoleWindow::buildRunMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Run"));
    m_runAction = menu->addAction(shellIcon(QStringLiteral("media-playback-start")), tr("&Run script"), this,
                                  &ConsoleWindow::runScript, Qt::Key_F5);
    m_stopAction = menu->addAction(shellIcon(QStringLiteral("media-playback-stop")), tr("&Stop"), this,
                                   &ConsoleWindow::stopScript, QKeySequence{QStringLiteral("Shift+F5")});
    menu->addSeparator();
    m_clearAction = menu->addAction(
        shellIcon(QStringLiteral("edit-clear")), tr("&Clear output and log"), this,
        [this] {
            m_output->clear();
            m_log->clear();
        },
        QKeySequence{QStringLiteral("Ctrl+L")});
    m_historyMenu = menu->addMenu(tr("&History"));
    connect(menu, &QMenu::aboutToShow, this, &ConsoleWindow::fillHistoryMenu);
}

void ConsoleWindow::fillHistoryMenu()
{
    constexpr int mostEntries = 15;
    constexpr int longestEntry = 60;
    m_historyMenu->clear();
    const QStringList& texts = m_history.texts();
    for (int i = texts.size() - 1; i >= 0 && i >= texts.size() - mostEntries; --i) {
        QString text = texts.at(i).simplified();
        if (text.size() > longestEntry)
            text = text.left(longestEntry) + QStringLiteral("…");
        m_historyMenu->addAction(text.replace(QLatin1Char{'&'}, QStringLiteral("&&")), this,
                                 [this, script = texts.at(i)] {
                                     if (!mayDropChanges())
                                         return;
                                     setFile({});
                                     m_editor->setPlainText(script);
                                     m_editor->document()->setModified(true);
                                 });
    }
    m_historyMenu->setEnabled(!m_historyMenu->isEmpty());
}

void ConsoleWindow::buildViewMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&View"));
    menu->addAction(
        tr("&Next pane"), this, [this] { goToPane(1); }, Qt::Key_F6);
    menu->addAction(
        tr("&Previous pane"), this, [this] { goToPane(-1); }, QKeySequence{QStringLiteral("Shift+F6")});
}

void ConsoleWindow::buildHelpMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Help"));
    menu->addAction(tr("&Function at the cursor"), this, &ConsoleWindow::showHelpAtCursor, QKeySequence::HelpContents);
    menu->addAction(tr("&About Hollerwick"), this, [this] {
        QMessageBox::about(this, tr("About Hollerwick"),
                           tr("Hollerwick %1\n\nBundles for the designs of a circuit simulator: examples, barrels of "
                              "examples, schematics and scripts.")
                               .arg(QStringLiteral(HOLLERWICK_VERSION)));
    });
}

void ConsoleWindow::buildToolBar()
{
    QToolBar* bar = addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("toolBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addActions({m_newAction, m_openAction, m_saveAction});
    bar->addSeparator();
    bar->addActions({m_runAction, m_stopAction, m_clearAction});
}

} // namespace HostShell
