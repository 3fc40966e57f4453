#include "editors/examples_bundle_editor.h"

#include "tests/editors/window_fixture.h"
#include "tests/support/model_dump.h"

#include <QtTest/QTest>
#include <QtWidgets/QListView>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;

namespace {

class ExamplesBundleEditorTest : public WindowFixture
{
protected:
    std::filesystem::path writeBarrel(const std::vector<std::string>& titles)
    {
        auto barrel = BarrelOfExamplesBundle::create().value();
        for (const std::string& title : titles) {
            const auto example = writeExample(folder, title + ".kvbdl.zip", {title + ".kvsch", "sub/" + title + ".va"});
            auto bundle = ExampleBundle::open(pathOf(example)).value();
            bundle.setTitle(reinterpret_cast<const char8_t*>(title.c_str())).value();
            bundle.writeToFile(pathOf(example)).value();
            const OpcPackaging::OpcPackagePartUri uri{
                QString::fromStdString("examples/" + title + ".kvbdl.zip").toStdWString().c_str()};
            (void)barrel.addExample(pathOf(example), uri).value();
        }
        const auto path = folder / "barrel.kvexs";
        barrel.writeToFile(pathOf(path)).value();
        return path;
    }

    ExamplesBundleEditor& open(const std::optional<std::filesystem::path>& path)
    {
        openExamplesBundleEditor(path ? std::optional{pathOf(*path)} : std::nullopt);
        editor = shownWindow<ExamplesBundleEditor>();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(editor));
        return *editor;
    }

    template <class Widget>
    Widget* child(const char* name) const
    {
        return editor->findChild<Widget*>(QString::fromLatin1(name));
    }

    ExamplesBundleEditor* editor = nullptr;
};

} // namespace

TEST_F(ExamplesBundleEditorTest, WithoutAnArgumentOpensOnAnEmptyBarrel)
{
    open(std::nullopt);
    const auto* list = child<QListView>("examplesList");
    EXPECT_EQ(list->model()->rowCount(list->rootIndex()), 0);
    EXPECT_EQ(child<QTreeView>("exampleContentView")->model(), nullptr);
    EXPECT_EQ(child<QTableView>("examplePropertyTable")->model(), nullptr);
}

TEST_F(ExamplesBundleEditorTest, NothingIsSelectedAtTheStart)
{
    open(writeBarrel({"one", "two"}));
    const auto* list = child<QListView>("examplesList");
    EXPECT_EQ(list->model()->rowCount(list->rootIndex()), 2);
    EXPECT_TRUE(list->selectionModel()->selection().isEmpty());
    EXPECT_EQ(child<QTreeView>("exampleContentView")->model(), nullptr);
}

TEST_F(ExamplesBundleEditorTest, MovingTheCurrentRowSwitchesBothPanesToThatExample)
{
    open(writeBarrel({"one", "two"}));
    auto* list = child<QListView>("examplesList");
    auto* files = child<QTreeView>("exampleContentView");
    auto* properties = child<QTableView>("examplePropertyTable");
    const auto first = list->model()->index(0, 0, list->rootIndex());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(first).center());
    EXPECT_EQ(dump(*files->model(), files->rootIndex()), "one.kvsch\nsub\n  one.va\n");
    EXPECT_EQ(dump(*properties->model(), properties->rootIndex(), {{0, 1}, {Qt::DisplayRole}}), "Title | one\n");
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(dump(*files->model(), files->rootIndex()), "two.kvsch\nsub\n  two.va\n");
    EXPECT_EQ(dump(*properties->model(), properties->rootIndex(), {{0, 1}, {Qt::DisplayRole}}), "Title | two\n");
}

TEST_F(ExamplesBundleEditorTest, LosingTheCurrentRowEmptiesBothPanes)
{
    open(writeBarrel({"one"}));
    auto* list = child<QListView>("examplesList");
    list->setCurrentIndex(list->model()->index(0, 0, list->rootIndex()));
    list->setCurrentIndex({});
    EXPECT_EQ(child<QTreeView>("exampleContentView")->model(), nullptr);
    EXPECT_EQ(child<QTableView>("examplePropertyTable")->model(), nullptr);
}

TEST_F(ExamplesBundleEditorTest, SaveAndCancelOnlyCloseAndLeaveTheFileAsItWas)
{
    const auto path = writeBarrel({"one"});
    const std::string before = readFile(path);
    for (const char* button : {"Save", "Cancel"}) {
        const QPointer<QWidget> window{&open(path)};
        clickButton(*editor, QString::fromLatin1(button));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(window.isNull()) << button;
        EXPECT_EQ(readFile(path), before) << button;
    }
}

TEST_F(ExamplesBundleEditorTest, RequirementsAndExamplesPropertiesStayEmpty)
{
    open(writeBarrel({"one"}));
    EXPECT_EQ(child<QListView>("requirementsView")->model(), nullptr);
    const auto* properties = child<QTableView>("examplesPropertyTable");
    EXPECT_EQ(properties->model()->rowCount(properties->rootIndex()), 0);
}

TEST_F(ExamplesBundleEditorTest, AFileThatIsNoBarrelFailsTheCallAndShowsNoWindow)
{
    const FilePath2 example = pathOf(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}));
    EXPECT_THROW(openExamplesBundleEditor(example), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(shownWindow<ExamplesBundleEditor>(), nullptr);
}

TEST_F(ExamplesBundleEditorTest, TheFormHasItsTabsSizesAndPolicies)
{
    open(std::nullopt);
    EXPECT_EQ(editor->objectName(), QStringLiteral("ExamplesBundleEditor"));
    EXPECT_EQ(editor->windowTitle(), QStringLiteral("Dialog"));
    EXPECT_EQ(editor->size(), (QSize{1003, 604}));
    const std::vector<std::pair<const char*, QStringList>> tabs = {
        {"tabWidget", {QStringLiteral("Examples List"), QStringLiteral("Examples Properties")}},
        {"tabWidget_2", {QStringLiteral("Example Properties")}},
        {"tabWidget_3", {QStringLiteral("Example Content")}},
        {"tabWidget_4", {QStringLiteral("Build Requirements")}}};
    for (const auto& [name, titles] : tabs) {
        const auto* widget = child<QTabWidget>(name);
        QStringList shown;
        for (int i = 0; i < widget->count(); ++i)
            shown.append(widget->tabText(i));
        EXPECT_EQ(shown, titles) << name;
        EXPECT_EQ(widget->currentIndex(), 0) << name;
    }
    EXPECT_EQ(child<QSplitter>("splitter_2")->orientation(), Qt::Vertical);
    EXPECT_EQ(child<QSplitter>("splitter")->orientation(), Qt::Horizontal);
    EXPECT_EQ(child<QWidget>("requirementsView")->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    EXPECT_EQ(child<QWidget>("requirementsView")->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    EXPECT_TRUE(child<QTreeView>("exampleContentView")->isHeaderHidden());
}
