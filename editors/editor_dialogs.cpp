#include "editors/editor_dialogs.h"

#include "authoring/bundle_texts.h"
#include "kelvaris/system/qt/text_bridge.h"

#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMessageBox>

namespace EditorDialogs {

QString askForDirectoryName(QWidget* parent)
{
    return QInputDialog::getText(parent, QStringLiteral("Add Directory"), QStringLiteral("Directory name:"));
}

QString askForFileToAdd(QWidget* parent)
{
    return QFileDialog::getOpenFileName(parent, QStringLiteral("Add File"), {},
                                        QString::fromLatin1(BundleTexts::addableFilesFilter));
}

void warnOfFailedSave(QWidget* parent, const Kelvaris::System::ErrorCode2& error)
{
    const QString message = Kelvaris::System::utf8ToQString(error.message()).value();
    QMessageBox box{QMessageBox::Warning, QStringLiteral("Save bundle failed"), message, QMessageBox::Ok, parent};
    // the message shows names from files: no markup in them takes effect
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace EditorDialogs
