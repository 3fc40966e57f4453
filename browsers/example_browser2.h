#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "ui_example_browser_dialog.h"

#include <QtCore/QString>
#include <QtWidgets/QDialog>

#include <optional>
#include <vector>

class ExampleBrowser2ExampleModel;
class ExampleBrowser2ExampleSortFilterModel;
class ExampleBrowser2FiltersModel;

/// The dialog in which a user picks an example from barrels of examples and has it unpacked as a new design.
///
/// Two pages: one to find the example, by a search pattern and check boxes for manufacturers, and one to say where the
/// design goes. The dialog is accepted after an unpack; closing it or Escape rejects it.
class ExampleBrowser2 : public QDialog
{
public:
    explicit ExampleBrowser2(QWidget* parent = nullptr);
    ~ExampleBrowser2() override;

    /// The directory under which a place is proposed; set it before the dialog runs.
    void setTargetDirectory(const Kelvaris::System::FilePath2& directory) { m_targetDirectory = directory; }

    /// @throws what ExampleBrowser2ExampleModel::addBarrels throws
    void addBarrels(const std::vector<Kelvaris::System::FilePath2>& files);

    /// The primary file of the unpacked example.
    /// @throws std::bad_optional_access  nothing has been unpacked; never behind an accepted dialog
    const Kelvaris::System::FilePath2& createdExampleFile() const { return m_createdExampleFile.value(); }

    /// Brings the buttons in line with the page and, on the second one, proposes a place anew.
    /// @throws std::filesystem::filesystem_error  as proposeLocation
    void updatePage();

    /// Shows the mark beside the box when the place in `text` holds something. It is advice and stops nothing.
    /// @throws std::filesystem::filesystem_error  as holdsEntries; the mark is as it was then
    void updateLocationWarning(const QString& text);

private:
    void setUpViews();
    void connectBrowsePage();
    void connectConfigurePage();
    void letReturnPressButtons();
    void deselectRowsThatGo();
    void showBrowsePage();
    void showConfigurePage();
    void chooseTargetDirectory();
    void createExample();
    void warnCreateFailed(const Kelvaris::System::ErrorCode2& error);

    Ui_ExampleBrowserDialog m_form;
    ExampleBrowser2ExampleModel* const m_exampleModel; // a child of the dialog, as the next two
    ExampleBrowser2ExampleSortFilterModel* const m_sortFilterModel;
    ExampleBrowser2FiltersModel* const m_filtersModel;
    std::optional<Kelvaris::System::FilePath2> m_createdExampleFile;
    Kelvaris::System::FilePath2 m_targetDirectory;
};

/// Runs the dialog on the examples of `files`, which are all opened before it is shown.
///
/// @param targetDirectory  where new designs go; it need not exist
/// @param title            taken and not shown: the window's title is that of the form
/// @return  the path of the new design's primary file, or core 1 when the user closed the dialog
/// @throws what ExampleBrowser2ExampleModel::addBarrels throws; nothing is shown then
Kelvaris::System::Expected<Kelvaris::System::FilePath2, Kelvaris::System::ErrorCode2>
runExampleBrowser2(const std::vector<Kelvaris::System::FilePath2>& files,
                   const Kelvaris::System::FilePath2& targetDirectory, const std::optional<QString>& title,
                   QWidget* parent);
