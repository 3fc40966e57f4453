#pragma once

#include <QtCore/QObject>

#include <functional>

class QWidget;

/// Answers modal windows and menus as long as it lives, so that nothing waits for a user: each one that comes up is
/// handed to `answer`, again and again until it is gone. An answer may bring up the next window.
class AnsweringMachine : public QObject
{
public:
    using Answer = std::function<void(QWidget&)>;

    explicit AnsweringMachine(Answer answer);

private:
    void poll();

    Answer m_answer;
};
