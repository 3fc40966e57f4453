#pragma once

#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "tests/support/log_capture.h"
#include "tests/support/modal_driver.h"
#include "tests/support/temporary_folder.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// A folder, the log, and what windows a test left open, which are closed behind it.
class WindowFixture : public testing::Test
{
protected:
    ~WindowFixture() override;

    TemporaryFolder folder;
    LogCapture log;
};

Kelvaris::System::FilePath2 pathOf(const std::filesystem::path& path);
QString textOf(const std::filesystem::path& path);

/// The only top-level window of that class that is visible; null when there is none.
template <class Window>
Window* shownWindow()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* const window = dynamic_cast<Window*>(widget);
        if (window != nullptr && window->isVisible())
            return window;
    }
    return nullptr;
}

/// Writes an example bundle of the files, whose paths in the bundle are "content/" and what `folder` is left off.
/// @param primary  the file to be primary; none when empty
std::filesystem::path writeExample(const TemporaryFolder& folder, const std::string& name,
                                   const std::vector<std::string>& files, const std::string& primary = {});

/// The texts of the entries of the context menu of a row.
std::vector<std::string> contextMenuOf(QTreeView& view, const QModelIndex& index);

/// Opens the context menu of a row and takes an entry. `prepare` may tell the driver what to do with the dialogs that
/// follow.
void chooseFromContextMenu(QTreeView& view, const QModelIndex& index, const QString& entry,
                           const std::function<void(ModalDriver&)>& prepare = {});

/// Answers the next dialogs: a file name, a directory name, Cancel. The empty text is Cancel for a file, and OK on an
/// empty field for a directory.
void answerFile(ModalDriver& driver, const std::filesystem::path& path);
void answerDirectoryName(ModalDriver& driver, const QString& name);
void cancelDialog(ModalDriver& driver);

/// Cancels the dialog of "Add File", after a look at what it asks for and whose it is.
void cancelDialogForFileToAdd(ModalDriver& driver, const QWidget& window);

/// Clicks Save and gives the file dialog `path`.
void saveAs(QWidget& window, const std::filesystem::path& path);

/// The same for a save that fails: gives title and text of the warning, which has one button, OK.
std::pair<QString, QString> failToSaveAs(QWidget& window, const std::filesystem::path& path);

QPushButton* saveButton(QWidget& window);
