#include "tests/hostile/random_user.h"

#include "tests/hostile/hostile_windows.h"
#include "tests/script/loaded_module.h"
#include "tests/support/temporary_folder.h"

#include <QtGui/QContextMenuEvent>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTreeView>

#include <algorithm>
#include <fstream>

namespace fs = std::filesystem;

namespace {

/// Nobody keeps more windows open than that.
constexpr std::size_t enoughWindows = 6;

/// After so many answers to what one action brings up, the user gives up on it.
constexpr int patience = 12;

constexpr const char* contentType = "http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content";

void write(const fs::path& path, const std::string& bytes)
{
    fs::create_directories(path.parent_path());
    std::ofstream{path, std::ios::binary} << bytes;
}

} // namespace

RandomUser::RandomUser(unsigned seed, fs::path directory)
    : m_generator{seed}, m_directory{std::move(directory)}, m_outputs{m_directory / "out"}
{
    fs::create_directories(m_outputs);
    // what is typed as a path is mostly relative, and some of it leads two directories up
    fs::create_directories(m_directory / "current/working/directory");
    fs::current_path(m_directory / "current/working/directory");
    const fs::path design = m_directory / "design";
    write(design / "top.kvsch", std::string(20'000, 't'));
    write(design / "sub/stage.kvsch", "stage");
    write(design / "documentation.html", "<h1>Page</h1><script>alert(1)</script>");
    m_files = {design / "top.kvsch", design / "sub/stage.kvsch", design / "documentation.html"};
    const std::string example = design / "example.kvbdl.zip";
    (void)call("_create_example", {m_files, {example}, {"An example"}, {"What it shows"}, {"Maker"}, {"a", "b"}});
    (void)call("_create_examples", {{example}, {design / "barrel.kvexs"}});
    for (int copy = 0; copy < 20; ++copy) {
        m_files.push_back(example);
        m_files.push_back(design / "barrel.kvexs");
    }
    m_files.push_back(design / "missing.kvbdl.zip");
    m_files.push_back(design);
    m_files.emplace_back();
    for (const auto& entry : fs::directory_iterator{HOLLERWICK_BROKEN_PACKAGES})
        m_files.push_back(entry.path());
    std::sort(m_files.begin() + 3, m_files.end());
}

std::size_t RandomUser::below(std::size_t count)
{
    return m_generator() % count;
}

bool RandomUser::chance(int percent)
{
    return below(100) < static_cast<std::size_t>(percent);
}

std::string RandomUser::text()
{
    const QString& chosen = hostileTexts()[below(hostileTexts().size())];
    const std::string bytes = chosen.toStdString();
    return bytes.substr(0, bytes.find('\0')); // no argument of a call holds one
}

std::string RandomUser::file()
{
    return m_files[below(m_files.size())];
}

std::string RandomUser::output(const std::string& extension)
{
    return m_outputs / ("file" + std::to_string(below(5)) + extension);
}

std::string RandomUser::identifier()
{
    return m_identifiers.empty() || chance(10) ? text() : m_identifiers[below(m_identifiers.size())];
}

RandomUser::~RandomUser()
{
    fs::current_path("/");
}

void RandomUser::act()
{
    m_answers = 0;
    const auto windows = visibleWindows();
    if (windows.size() > enoughWindows)
        closeAllWindows();
    else if (windows.empty() || chance(25))
        callSomething();
    else
        useSomething(*windows[below(windows.size())]);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void RandomUser::settle()
{
    closeAllWindows();
    (void)call("_schematic_bundle_clear_all", {});
    m_identifiers.clear();
    m_lastPart.clear();
    fs::remove_all(m_outputs);
    fs::create_directories(m_outputs);
    QCoreApplication::processEvents();
}

void RandomUser::callSomething()
{
    switch (below(17)) {
    case 0:
        (void)call("_create_example",
                   {{file(), file()}, {output(".kvbdl.zip")}, {text()}, {text()}, {text()}, {text()}});
        break;
    case 1:
        (void)call("_create_example", {{m_files[0]}, {output(".kvbdl.zip")}, {text()}});
        break;
    case 2:
        (void)call("_create_examples", {{file()}, {output(".kvexs")}});
        break;
    case 3:
        (void)call("_unpack_content_bundle", {{file()}, {output("-unpacked")}});
        break;
    case 4:
        (void)call("_content_bundle_targets", {{contentType}, {file()}});
        break;
    case 5:
        (void)call(chance(50) ? "_filename" : "_parent_path", {{text()}});
        break;
    case 6:
        for (const std::string& directory : call("_create_temporary_directory", {}).results)
            fs::remove(directory);
        break;
    case 7: {
        const auto created = call("_schematic_bundle_create", {}).results;
        m_identifiers.insert(m_identifiers.end(), created.begin(), created.end());
        if (m_identifiers.size() > 5)
            (void)call("_schematic_bundle_clear_all", {});
        if (m_identifiers.size() > 5)
            m_identifiers.clear();
        break;
    }
    case 8: {
        const auto part = call("_schematic_bundle_set_root", {{file()}, {identifier()}}).results;
        m_lastPart = part.empty() ? m_lastPart : part.front();
        break;
    }
    case 9:
        (void)call("_schematic_bundle_add_descendant", {{file()}, {file()}, {m_lastPart}, {identifier()}});
        break;
    case 10:
        (void)call("_schematic_bundle_write", {{output(".zip")}, {identifier()}});
        break;
    case 11:
        (void)call("_schematic_bundle_close", {{identifier()}});
        break;
    case 12:
        (void)call("_schematic_bundle_helper_identify_descedants", {{text()}, {text() + ";" + text(), text()}});
        break;
    case 13:
        (void)call("_example_browser_2", {{file(), file()}, {m_outputs}});
        break;
    case 14:
        (void)call("_proto_example_browser", {{m_directory / "design"}});
        break;
    default:
        (void)call(openingFunctions()[below(openingFunctions().size())], {{file()}});
        break;
    }
}

void RandomUser::useSomething(QWidget& window)
{
    if (chance(8)) {
        window.close();
        return;
    }
    std::vector<QWidget*> widgets;
    for (auto* widget : window.findChildren<QWidget*>()) {
        const bool isOfUse =
            qobject_cast<QAbstractItemView*>(widget) != nullptr || qobject_cast<QLineEdit*>(widget) != nullptr ||
            qobject_cast<QAbstractButton*>(widget) != nullptr || qobject_cast<QTabWidget*>(widget) != nullptr;
        if (isOfUse && widget->isVisible() && widget->isEnabled())
            widgets.push_back(widget);
    }
    if (widgets.empty()) {
        window.close();
        return;
    }
    QWidget* const chosen = widgets[below(widgets.size())];
    if (auto* view = qobject_cast<QAbstractItemView*>(chosen))
        useView(*view);
    else if (auto* box = qobject_cast<QLineEdit*>(chosen))
        typeInto(*box);
    else if (auto* button = qobject_cast<QAbstractButton*>(chosen))
        button->click();
    else if (auto* tabs = qobject_cast<QTabWidget*>(chosen); tabs->count() > 0)
        tabs->setCurrentIndex(static_cast<int>(below(static_cast<std::size_t>(tabs->count()))));
}

void RandomUser::useView(QAbstractItemView& view)
{
    const auto rows = rowsOf(view);
    if (!rows.empty())
        view.setCurrentIndex(rows[below(rows.size())]);
    const QPoint place = view.visualRect(view.currentIndex()).center();
    switch (below(6)) {
    case 0:
        if (auto* tree = qobject_cast<QTreeView*>(&view))
            chance(50) ? tree->expandAll() : tree->collapseAll();
        break;
    case 1:
        editCell(view);
        break;
    case 2:
        QTest::keyClick(&view, chance(50) ? Qt::Key_Return : Qt::Key_Space);
        break;
    case 3:
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
        break;
    default: {
        QContextMenuEvent event{QContextMenuEvent::Mouse, place, view.viewport()->mapToGlobal(place)};
        QApplication::sendEvent(view.viewport(), &event);
        break;
    }
    }
}

void RandomUser::editCell(QAbstractItemView& view)
{
    const QModelIndex current = view.currentIndex();
    if (!current.isValid() || view.model() == nullptr)
        return;
    const int columns = view.model()->columnCount(current.parent());
    const QModelIndex cell = current.sibling(current.row(), static_cast<int>(below(static_cast<std::size_t>(columns))));
    if ((view.model()->flags(cell) & Qt::ItemIsEditable) == 0)
        return;
    view.edit(cell);
    if (auto* editor = view.viewport()->findChild<QLineEdit*>()) {
        typeInto(*editor);
        QTest::keyClick(editor, chance(80) ? Qt::Key_Return : Qt::Key_Escape);
    }
}

void RandomUser::typeInto(QLineEdit& box)
{
    box.selectAll();
    box.insert(hostileTexts()[below(hostileTexts().size())]);
}

void RandomUser::answer(QWidget& window)
{
    if (++m_answers > patience) {
        window.close();
        return;
    }
    if (auto* menu = qobject_cast<QMenu*>(&window))
        answerMenu(*menu);
    else if (auto* fileDialog = qobject_cast<QFileDialog*>(&window))
        answerFileDialog(*fileDialog);
    else if (auto* dialog = qobject_cast<QDialog*>(&window))
        useDialog(*dialog);
    else
        window.close();
}

void RandomUser::answerMenu(QMenu& menu)
{
    QList<QAction*> actions = menu.actions();
    if (actions.isEmpty() || chance(20)) {
        menu.close();
        return;
    }
    menu.setActiveAction(actions[static_cast<int>(below(static_cast<std::size_t>(actions.size())))]);
    QTest::keyClick(&menu, Qt::Key_Return);
}

void RandomUser::answerFileDialog(QFileDialog& dialog)
{
    if (chance(20)) {
        dialog.reject();
        return;
    }
    const bool isOpening = dialog.acceptMode() == QFileDialog::AcceptOpen;
    const bool isDirectory = dialog.fileMode() == QFileDialog::Directory;
    const std::string path = isDirectory ? m_outputs.string() : isOpening ? file() : output(".kvbdl.zip");
    dialog.selectFile(QString::fromStdString(path));
    QMetaObject::invokeMethod(&dialog, "accept");
}

void RandomUser::useDialog(QDialog& dialog)
{
    if (auto* box = qobject_cast<QMessageBox*>(&dialog)) {
        box->buttons().first()->click();
    } else if (auto* input = qobject_cast<QInputDialog*>(&dialog)) {
        input->setTextValue(hostileTexts()[below(hostileTexts().size())]);
        input->accept();
    } else {
        useSomething(dialog);
    }
}
