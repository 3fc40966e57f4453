#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/io/bundle/scriptable_bundle.h"
#include "tests/hostile/answering_machine.h"
#include "tests/hostile/hostile_windows.h"
#include "tests/hostile/random_user.h"
#include "tests/script/loaded_module.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>

#include <gtest/gtest.h>

// Names, titles and patterns that nobody would choose, in every window.

namespace fs = std::filesystem;
using namespace Kelvaris;
using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

FilePath2 pathOf(const fs::path& path)
{
    const std::u8string text = path.u8string();
    return {text.data(), text.size()};
}

/// Names of 10,000 characters, directories 1,000 deep, writing from right to left, and characters of many marks.
std::vector<std::u8string> hostileNames()
{
    std::u8string deep;
    for (int level = 0; level < 1'000; ++level)
        deep += u8"d/";
    std::u8string marks = u8"e";
    for (int mark = 0; mark < 300; ++mark)
        marks += u8"\u0301";
    return {std::u8string(10'000, u8'n') + u8".txt",
            deep + u8"deep.txt",
            u8"مضخم/العمليات.txt",
            u8"\u202Etxt.exe",
            marks + u8".txt",
            u8"😀/👩‍👩‍👧‍👦.txt"};
}

String2 textOf(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    String2 copy;
    copy.assign(reinterpret_cast<const char8_t*>(bytes.data()), static_cast<std::size_t>(bytes.size()));
    return copy;
}

class HostileTexts : public testing::Test
{
protected:
    HostileTexts()
    {
        const auto source = pathOf(folder.write("source.txt", "bytes"));
        auto barrel = Bundle::BarrelOfExamplesBundle::create().value();
        for (std::size_t number = 0; number < hostileTexts().size(); ++number) {
            auto bundle = Bundle::ExampleBundle::create().value();
            for (const std::u8string& name : hostileNames()) {
                const OpcPackagePartUri uri{FilePath2{(u8"content/" + name).data(), name.size() + 8}};
                (void)bundle.addFile(source, uri, OpcPackageCompressionType::normal).value();
            }
            // what XML cannot hold is refused, and the bundle goes without it
            (void)bundle.setTitle(textOf(hostileTexts()[number]));
            (void)bundle.setDescription(textOf(hostileTexts()[number]));
            (void)bundle.setManufacturer(textOf(hostileTexts()[number]));
            const fs::path file = examples / (std::to_string(number) + ".kvbdl.zip");
            fs::create_directories(examples);
            bundle.writeToFile(pathOf(file)).value();
            const OpcPackagePartUri uri{
                FilePath2{(u8"examples/" + file.filename().u8string()).data(), file.filename().u8string().size() + 9}};
            (void)barrel.addExample(pathOf(file), uri).value();
        }
        barrel.writeToFile(pathOf(barrelFile)).value();
        writeScriptable();
    }

    ~HostileTexts() override { closeAllWindows(); }

    void writeScriptable() const
    {
        auto bundle = Bundle::ScriptableBundle::create().value();
        (void)bundle.setScript(textOf(QString{100'000, QLatin1Char{'s'}})).value();
        for (const std::u8string& name : hostileNames()) {
            const OpcPackagePartUri uri{FilePath2{name.data(), name.size()}};
            (void)bundle.package().createPart(uri, MIMEType{FileType::script}, OpcPackageCompressionType::none).value();
        }
        bundle.writeToFile(pathOf(scriptableFile)).value();
    }

    std::string fileFor(const std::string& function) const
    {
        if (function == "_proto_example_browser")
            return examples;
        if (function == "_create_examples_bundle_editor" || function == "_proto_examples_browser2")
            return barrelFile;
        if (function == "_proto_scriptable_bundle_editor")
            return scriptableFile;
        return examples / "2.kvbdl.zip";
    }

    /// Types every text into every box and every cell that takes one.
    static void typeEverywhere(QWidget& window)
    {
        for (const QString& text : hostileTexts()) {
            for (auto* box : window.findChildren<QLineEdit*>()) {
                box->selectAll();
                box->insert(text);
                QCoreApplication::processEvents();
            }
            for (auto* view : window.findChildren<QAbstractItemView*>())
                typeIntoCells(*view, text);
        }
    }

    static void typeIntoCells(QAbstractItemView& view, const QString& text)
    {
        for (const QPersistentModelIndex row : rowsOf(view)) {
            for (int column = 0; row.isValid() && column < view.model()->columnCount(row.parent()); ++column) {
                const QModelIndex cell = row.sibling(row.row(), column);
                if ((view.model()->flags(cell) & Qt::ItemIsEditable) == 0)
                    continue;
                view.edit(cell);
                if (auto* editor = view.viewport()->findChild<QLineEdit*>()) {
                    editor->setText(text);
                    QTest::keyClick(editor, Qt::Key_Return);
                }
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            }
        }
    }

    LoadedModule module;
    TemporaryFolder folder;
    fs::path examples = folder / "examples";
    fs::path barrelFile = folder / "barrel.kvexs";
    fs::path scriptableFile = folder / "script.kvsbd.zip";
};

std::string nameOf(const testing::TestParamInfo<std::string>& info)
{
    return info.param.substr(1);
}

class HostileTextsInWindow : public HostileTexts, public testing::WithParamInterface<std::string>
{
};

} // namespace

TEST_P(HostileTextsInWindow, AreShownAndTakenByItsWindow)
{
    ASSERT_EQ(call(GetParam(), {{fileFor(GetParam())}}).status, FUNC_OK);
    ASSERT_EQ(visibleWindows().size(), 1U);
    QWidget& window = *visibleWindows().front();
    lookAtEverything(window);
    typeEverywhere(window);
    lookAtEverything(window);
    EXPECT_TRUE(window.isVisible());
}

/// The window goes on reading from its file, which somebody else has cut short: whatever a slot throws ends in the log.
TEST_P(HostileTextsInWindow, AFileThatIsCutShortBehindItsWindowEndsNothing)
{
    const LogCapture log;
    RandomUser user{5, folder / "home"};
    const AnsweringMachine answers{[&](QWidget& window) { user.answer(window); }};
    ASSERT_EQ(call(GetParam(), {{fileFor(GetParam())}}).status, FUNC_OK);
    for (const auto& entry : fs::recursive_directory_iterator{folder.path()}) {
        if (entry.is_regular_file())
            fs::resize_file(entry.path(), entry.file_size() / 2);
    }
    for (QWidget* window : visibleWindows())
        lookAtEverything(*window);
    for (int action = 0; action < 200; ++action)
        user.act();
    user.settle();
}

INSTANTIATE_TEST_SUITE_P(Windows, HostileTextsInWindow, testing::ValuesIn(openingFunctions()), nameOf);

TEST_F(HostileTexts, AreShownAndTakenByTheDialogThatStartsADesign)
{
    int looks = 0;
    const AnsweringMachine answers{[&](QWidget& window) {
        if (++looks == 1) {
            lookAtEverything(window);
            typeEverywhere(window);
        }
        window.close();
    }};
    EXPECT_EQ(call("_example_browser_2", {{barrelFile}, {folder / "designs"}}).status, FUNC_OK);
    EXPECT_GE(looks, 1);
}
