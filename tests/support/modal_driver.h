#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

#include <chrono>
#include <functional>
#include <list>
#include <string>
#include <typeinfo>

class QFileDialog;
class QMenu;
class QMessageBox;
class QPoint;
class QWidget;

/// Drives modal windows and menus with real events, while the code under test sits in their exec():
///
///     ModalDriver driver;
///     driver.when<QMessageBox>([&](QMessageBox& box) { text = box.text(); clickButton(box, "OK"); });
///     QTest::mouseClick(saveButton, Qt::LeftButton);
///     EXPECT_TRUE(driver.isDone());
///
/// Steps run in their order, each as soon as a window of its class is the active modal one (or the open menu). A step
/// may itself open further modal windows, which the steps behind it drive. A step that finds no window in time fails
/// the test and closes what is open, so that no test hangs.
class ModalDriver : public QObject
{
public:
    explicit ModalDriver(std::chrono::milliseconds patience = std::chrono::seconds{10});

    /// Fails the test when a step has not run.
    ~ModalDriver() override;

    template <class Window>
    ModalDriver& when(std::function<void(Window&)> step)
    {
        return add({typeid(Window).name(), [step = std::move(step)](QWidget& candidate) {
                        auto* const window = dynamic_cast<Window*>(&candidate);
                        if (window != nullptr)
                            return std::function<void()>{[step, window] { step(*window); }};
                        return std::function<void()>{};
                    }});
    }

    bool isDone() const { return m_steps.empty(); }

private:
    struct Step
    {
        std::string name;
        std::function<std::function<void()>(QWidget&)> prepare;
    };

    ModalDriver& add(Step step);
    void waitForNext();
    void poll();
    void giveUp();

    std::chrono::milliseconds m_patience;
    std::chrono::steady_clock::time_point m_deadline;
    std::list<Step> m_steps;
};

/// Clicks the push button of a dialog that shows `text`, mnemonics apart; fails the test when there is none.
void clickButton(QWidget& dialog, const QString& text);

/// Types any text, key by key. (`QTest::keyClicks` knows ASCII letters only.)
void typeText(QWidget& widget, const QString& text);

/// Types `path` into the dialog's box for the name and clicks the button that accepts it.
void chooseFile(QFileDialog& dialog, const QString& path);

/// Walks down to the entry that shows `text` with the arrow keys and presses Return; fails the test when there is none.
void chooseEntry(QMenu& menu, const QString& text);

/// Clicks the right mouse button on a window that is shown, so that the context menu comes up as it does for a user.
void rightClick(QWidget& widget, const QPoint& position);
