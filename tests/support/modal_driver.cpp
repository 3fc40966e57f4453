#include "tests/support/modal_driver.h"

#include <QtCore/QTimer>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

#include <utility>

namespace {

constexpr std::chrono::milliseconds pollingInterval{5};

QWidget* frontWindow()
{
    QWidget* const popup = QApplication::activePopupWidget();
    return popup != nullptr ? popup : QApplication::activeModalWidget();
}

QString withoutMnemonic(QString text)
{
    return text.remove(QLatin1Char{'&'});
}

} // namespace

ModalDriver::ModalDriver(std::chrono::milliseconds patience) : m_patience{patience} {}

ModalDriver::~ModalDriver()
{
    for (const Step& step : m_steps)
        ADD_FAILURE() << "no window came up for the step on " << step.name;
}

ModalDriver& ModalDriver::add(Step step)
{
    m_steps.push_back(std::move(step));
    if (m_steps.size() == 1)
        waitForNext();
    return *this;
}

void ModalDriver::waitForNext()
{
    m_deadline = std::chrono::steady_clock::now() + m_patience;
    QTimer::singleShot(pollingInterval, this, [this] { poll(); });
}

void ModalDriver::poll()
{
    if (m_steps.empty())
        return;
    QWidget* const window = frontWindow();
    if (window != nullptr && window->isVisible()) {
        if (const auto run = m_steps.front().prepare(*window)) {
            m_steps.pop_front();
            // before the step runs: it may not return before the next one has
            waitForNext();
            run();
            return;
        }
    }
    if (std::chrono::steady_clock::now() > m_deadline)
        giveUp();
    else
        QTimer::singleShot(pollingInterval, this, [this] { poll(); });
}

void ModalDriver::giveUp()
{
    QWidget* window = frontWindow();
    ADD_FAILURE() << "waited in vain for " << m_steps.front().name << "; in front is "
                  << (window != nullptr ? window->metaObject()->className() : "nothing");
    m_steps.clear();
    while (window != nullptr) {
        window->close();
        QWidget* const next = frontWindow();
        window = next == window ? nullptr : next;
    }
}

void clickButton(QWidget& dialog, const QString& text)
{
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
        if (withoutMnemonic(button->text()) == text && button->isVisible()) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    ADD_FAILURE() << "no button " << qPrintable(text);
}

void typeText(QWidget& widget, const QString& text)
{
    for (const uint letter : text.toUcs4())
        QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString::fromUcs4(&letter, 1), Qt::NoModifier);
}

void chooseFile(QFileDialog& dialog, const QString& path)
{
    auto* const nameBox = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(nameBox, nullptr);
    nameBox->clear();
    typeText(*nameBox, path);
    // the list of proposals would take the click
    if (QWidget* const proposals = QApplication::activePopupWidget())
        proposals->close();
    const bool saves = dialog.acceptMode() == QFileDialog::AcceptSave;
    clickButton(dialog, withoutMnemonic(dialog.labelText(QFileDialog::Accept)));
    EXPECT_FALSE(saves && dialog.isVisible()) << "the dialog did not take " << qPrintable(path);
}

void chooseEntry(QMenu& menu, const QString& text)
{
    for (int steps = 0; steps < menu.actions().size(); ++steps) {
        QTest::keyClick(&menu, Qt::Key_Down);
        const QAction* const active = menu.activeAction();
        if (active != nullptr && withoutMnemonic(active->text()) == text) {
            QTest::keyClick(&menu, Qt::Key_Return);
            return;
        }
    }
    ADD_FAILURE() << "no entry " << qPrintable(text);
    menu.close();
}

void rightClick(QWidget& widget, const QPoint& position)
{
    QWidget* const top = widget.window();
    QTest::mouseClick(top->windowHandle(), Qt::RightButton, {}, widget.mapTo(top, position));
}
