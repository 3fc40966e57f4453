#pragma once

#include "host/shell/console_history.h"
#include "host/shell/console_memory.h"
#include "host/shell/file_opening.h"
#include "host/shell/line_feed.h"
#include "host/shell/log_output.h"
#include "host/shell/script_thread.h"

#include <QtWidgets/QMainWindow>

#include <memory>

class QPlainTextEdit;
class QSplitter;

namespace HostShell {

class FunctionPane;
class LineInput;
class ScriptEditor;

/// The window for writing and running scripts: an editor, panes for the output and the log, a field for single lines,
/// the functions with their documentation, and a menu that opens the plug-in's windows.
///
/// A script runs beside the window, which stays usable and can stop it. What is run stands in the history before it
/// runs.
class ConsoleWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit ConsoleWindow(const ConsolePlaces& places = {});
    ~ConsoleWindow() override;

    bool isRunning() const { return m_script.isRunning(); }

    /// Runs what stands in the editor, saved or not.
    void runScript();

    /// Shows a script in the editor, after asking what becomes of an unsaved one, and a bundle in the window that fits.
    /// What cannot be opened is told in a message box, and the editor stays as it is.
    /// @return  whether it was opened
    bool openFile(const QString& path);

Q_SIGNALS:
    /// A script or line has come to its end.
    void ended();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    void buildPanes();
    QWidget* buildLineInput();
    void buildMenus();
    void buildFileMenu();
    void buildEditMenu();
    void buildRunMenu();
    void buildViewMenu();
    void buildHelpMenu();
    void buildToolBar();
    void restoreState();

    void runLine(const QString& line);
    void endRun(const ScriptEnd& end);
    void stopScript();
    void showRunning();
    void remember(const QString& text);

    void openWindow(const WindowCall& call);
    bool openScript(const QString& path);
    void newScript();
    void chooseAndOpen();
    bool save();
    bool saveAs();
    bool writeFile(const QString& path);
    bool mayDropChanges();
    bool mayCloseWhileRunning();
    void setFile(const QString& path);
    void fillRecentMenu();
    void fillHistoryMenu();
    void goToPane(int step);
    void showHelpAtCursor();
    void tellFailure(const QString& title, const QString& sentence);

    ConsoleMemory m_memory;
    ConsoleHistory m_history;
    ScriptEditor* m_editor = nullptr; // this and what follows are children
    QPlainTextEdit* m_output = nullptr;
    QPlainTextEdit* m_log = nullptr;
    LineInput* m_line = nullptr;
    FunctionPane* m_functions = nullptr;
    QSplitter* m_columns = nullptr;
    QSplitter* m_rows = nullptr;
    QMenu* m_recentMenu = nullptr;
    QMenu* m_historyMenu = nullptr;
    QAction* m_runAction = nullptr;
    QAction* m_stopAction = nullptr;
    QAction* m_clearAction = nullptr;
    QAction* m_newAction = nullptr;
    QAction* m_openAction = nullptr;
    QAction* m_saveAction = nullptr;
    QString m_path;            ///< empty for a script that was never saved
    bool m_runsEditor = false; ///< what runs is the script of the editor, and not a line
    bool m_stopping = false;
    bool m_closing = false; ///< the window closes when the script has ended

    LineFeed m_outputFeed;
    LineFeed m_logFeed;
    ScriptThread m_script;
    LogTap m_tap;
};

} // namespace HostShell
