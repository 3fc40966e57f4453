#include "tests/editors/window_fixture.h"

#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"

#include <QtTest/QTest>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;

WindowFixture::~WindowFixture()
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        widget->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

FilePath2 pathOf(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.data(), text.size()};
}

QString textOf(const std::filesystem::path& path)
{
    return QString::fromStdString(path.string());
}

std::filesystem::path writeExample(const TemporaryFolder& folder, const std::string& name,
                                   const std::vector<std::string>& files, const std::string& primary)
{
    auto bundle = Bundle::ExampleBundle::create().value();
    for (const std::string& file : files) {
        const auto source = folder.write("sources/" + file, "bytes of " + file);
        const OpcPackaging::OpcPackagePartUri uri{QString::fromStdString("content/" + file).toStdWString().c_str()};
        (void)bundle.addFile(pathOf(source), uri, OpcPackaging::OpcPackageCompressionType::normal).value();
        if (file == primary)
            bundle.setPrimaryFile(uri).value();
    }
    const auto path = folder / name;
    bundle.writeToFile(pathOf(path)).value();
    return path;
}

std::vector<std::string> contextMenuOf(QTreeView& view, const QModelIndex& index)
{
    std::vector<std::string> entries;
    ModalDriver driver;
    driver.when<QMenu>([&](QMenu& menu) {
        for (const QAction* action : menu.actions()) {
            entries.push_back(action->text().toStdString());
            EXPECT_TRUE(action->shortcut().isEmpty());
        }
        QTest::keyClick(&menu, Qt::Key_Escape);
    });
    rightClick(*view.viewport(), view.visualRect(index).center());
    return entries;
}

void chooseFromContextMenu(QTreeView& view, const QModelIndex& index, const QString& entry,
                           const std::function<void(ModalDriver&)>& prepare)
{
    ModalDriver driver;
    driver.when<QMenu>([entry](QMenu& menu) { chooseEntry(menu, entry); });
    if (prepare)
        prepare(driver);
    rightClick(*view.viewport(), view.visualRect(index).center());
    EXPECT_TRUE(driver.isDone());
}

void answerFile(ModalDriver& driver, const std::filesystem::path& path)
{
    driver.when<QFileDialog>([path](QFileDialog& dialog) { chooseFile(dialog, textOf(path)); });
}

void answerDirectoryName(ModalDriver& driver, const QString& name)
{
    driver.when<QInputDialog>([name](QInputDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Add Directory"));
        EXPECT_EQ(dialog.labelText(), QStringLiteral("Directory name:"));
        QTest::keyClicks(dialog.findChild<QLineEdit*>(), name);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
}

void cancelDialog(ModalDriver& driver)
{
    driver.when<QDialog>([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
}

void cancelDialogForFileToAdd(ModalDriver& driver, const QWidget& window)
{
    driver.when<QFileDialog>([&window](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Add File"));
        EXPECT_EQ(dialog.nameFilters(),
                  QStringList{QStringLiteral("Kelvaris Files (*.kvsch *.kvscr *.testplan *.va)")});
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
        EXPECT_EQ(dialog.parentWidget(), &window);
        dialog.reject();
    });
}

void saveAs(QWidget& window, const std::filesystem::path& path)
{
    ModalDriver driver;
    answerFile(driver, path);
    if (std::filesystem::exists(path))
        driver.when<QMessageBox>([](QMessageBox& box) { clickButton(box, QStringLiteral("Yes")); });
    QTest::mouseClick(saveButton(window), Qt::LeftButton);
    EXPECT_TRUE(driver.isDone());
}

std::pair<QString, QString> failToSaveAs(QWidget& window, const std::filesystem::path& path)
{
    std::pair<QString, QString> shown;
    ModalDriver driver;
    answerFile(driver, path);
    driver.when<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        shown = {box.windowTitle(), box.text()};
        clickButton(box, QStringLiteral("OK"));
    });
    QTest::mouseClick(saveButton(window), Qt::LeftButton);
    EXPECT_TRUE(driver.isDone());
    return shown;
}

QPushButton* saveButton(QWidget& window)
{
    return window.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save);
}
