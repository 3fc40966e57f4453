#pragma once

#include "host/shell/log_output.h"
#include "host/shell/script_runner.h"

#include <QtWidgets/QMainWindow>

class QListWidget;
class QPlainTextEdit;

namespace HostShell {

/// The window for writing and running scripts: an editor, the output with the log's lines among it, and the functions
/// that the plug-in has registered.
class ConsoleWindow : public QMainWindow
{
    Q_OBJECT

public:
    ConsoleWindow();
    ~ConsoleWindow() override;

    /// Runs what stands in the editor, saved or not.
    void runScript();

    /// Shows the file in the editor; one that cannot be read is told in a message box, and the editor stays as it is.
    /// @return  whether it was read
    bool openFile(const QString& path);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildPanes();
    void buildFileMenu();
    void buildScriptMenu();
    void fillFunctionList();
    void insertFunction(const QString& name);

    void newScript();
    void chooseAndOpen();
    bool save();
    bool saveAs();
    bool writeFile(const QString& path);
    bool mayDropChanges();
    void setFile(const QString& path);
    void appendOutput(const QString& line);
    void markErrorLine(const QString& error);

    QPlainTextEdit* m_editor = nullptr;
    QPlainTextEdit* m_output = nullptr;
    QListWidget* m_functions = nullptr;
    QString m_path; ///< empty for a script that was never saved
    ScriptRunner m_runner;
    bool m_running = false;
    LogTap m_log;
};

} // namespace HostShell
