#include "tests/hostile/answering_machine.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <utility>

AnsweringMachine::AnsweringMachine(Answer answer) : m_answer{std::move(answer)}
{
    poll();
}

void AnsweringMachine::poll()
{
    // a timer of its own for each look: the one that is at work does not fire inside of the windows that it opens
    QTimer::singleShot(0, this, [this] { poll(); });
    QWidget* const popup = QApplication::activePopupWidget();
    QWidget* const front = popup != nullptr ? popup : QApplication::activeModalWidget();
    if (front != nullptr)
        m_answer(*front);
}
