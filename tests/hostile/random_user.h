#pragma once

#include <QtCore/QString>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

class QAbstractItemView;
class QDialog;
class QFileDialog;
class QLineEdit;
class QMenu;
class QWidget;

/// Calls functions and uses windows at random: the same seed does the same.
///
/// Modal windows and menus that come up meanwhile go to `answer`, by an `AnsweringMachine`.
class RandomUser
{
public:
    /// @param directory  where the user's files are and all is written; it holds the working directory from now on
    RandomUser(unsigned seed, std::filesystem::path directory);

    ~RandomUser();

    RandomUser(const RandomUser&) = delete;
    RandomUser& operator=(const RandomUser&) = delete;

    /// One call, or one action in a window.
    void act();

    void answer(QWidget& window);

    /// Closes all windows, drops all bundles and removes what was written.
    void settle();

private:
    std::size_t below(std::size_t count);
    bool chance(int percent);
    std::string text();
    std::string file();
    std::string output(const std::string& extension);
    std::string identifier();

    void callSomething();
    void useSomething(QWidget& window);
    void useView(QAbstractItemView& view);
    void editCell(QAbstractItemView& view);
    void typeInto(QLineEdit& box);
    void answerMenu(QMenu& menu);
    void answerFileDialog(QFileDialog& dialog);
    void useDialog(QDialog& dialog);

    std::mt19937 m_generator;
    std::filesystem::path m_directory;
    std::filesystem::path m_outputs;
    std::vector<std::string> m_files;
    std::vector<std::string> m_identifiers;
    std::string m_lastPart;
    int m_answers = 0; ///< since the action began
};
