#include "editors/content_bundle_editor.h"

#include "tests/editors/window_fixture.h"
#include "tests/support/model_dump.h"

#include <QtTest/QTest>
#include <QtWidgets/QListView>
#include <QtWidgets/QTableView>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;
using IO::OpcPackaging::OpcPackage;
using IO::OpcPackaging::OpcPackageOpenFlag;

namespace {

using ContentBundleEditorTest = WindowFixture;

/// A subclass with a way to save of its own.
class CountingEditor : public ContentBundleEditor
{
public:
    int saves = 0;

protected:
    void saveBundle() override { ++saves; }
};

/// A bundle of a package of which nothing was read yet, not even what it leads to.
class UnreadBundle : public ContentBundle
{
public:
    explicit UnreadBundle(const std::filesystem::path& path)
        : ContentBundle{OpcPackage::open(pathOf(path), OpcPackageOpenFlag::readOnDemand).value()}
    {
    }
};

std::unique_ptr<ContentBundle> openBundle(const std::filesystem::path& path)
{
    return std::make_unique<ContentBundle>(ContentBundle::open(pathOf(path)).value());
}

std::unique_ptr<ContentBundle> newBundle()
{
    return std::make_unique<ContentBundle>(ContentBundle::create().value());
}

/// The requirements with their colours.
std::string requirementsOf(const QWidget& editor)
{
    return dump(*editor.findChild<QListView*>()->model(), {}, {{0}, {Qt::DisplayRole, Qt::DecorationRole}});
}

} // namespace

TEST_F(ContentBundleEditorTest, SaveIsDisabledBeforeThereIsABundle)
{
    ContentBundleEditor editor;
    EXPECT_FALSE(saveButton(editor)->isEnabled());
    EXPECT_EQ(dump(*editor.findChild<QListView*>()->model()), "Bundle has content.\n");
}

TEST_F(ContentBundleEditorTest, ANewBundleShowsOneRedRowAndADisabledSave)
{
    ContentBundleEditor editor;
    editor.setBundle(newBundle());
    EXPECT_EQ(requirementsOf(editor), "Bundle has content. | #ff0000\n");
    EXPECT_FALSE(saveButton(editor)->isEnabled());
}

TEST_F(ContentBundleEditorTest, ABundleWithContentEnablesSaveAsSoonAsItIsSet)
{
    ContentBundleEditor editor;
    editor.setBundle(openBundle(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"})));
    EXPECT_TRUE(saveButton(editor)->isEnabled());
    EXPECT_EQ(requirementsOf(editor), "Bundle has content. | #00ff00\n");
}

TEST_F(ContentBundleEditorTest, ASecondBundleTakesTheFirstOnesPlaceInBothModels)
{
    ContentBundleEditor editor;
    editor.setBundle(openBundle(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"})));
    editor.setBundle(newBundle());
    EXPECT_EQ(dump(*editor.findChild<QTreeView*>()->model()), "content\n");
    EXPECT_EQ(editor.findChild<QTableView*>()->model()->rowCount(), 15);
    EXPECT_FALSE(saveButton(editor)->isEnabled());
}

TEST_F(ContentBundleEditorTest, ABundleWhoseContentCannotBeReadLeavesTheRequirementAsItWasAndSaysNothing)
{
    const auto path = writeExample(folder, "x.kvbdl.zip", {"a.kvsch"});
    for (const bool isGreenBefore : {false, true}) {
        ContentBundleEditor editor;
        editor.setBundle(isGreenBefore ? openBundle(path) : newBundle());
        const std::string before = requirementsOf(editor);
        auto broken = std::make_unique<UnreadBundle>(writeExample(folder, "broken.kvbdl.zip", {"b.kvsch"}));
        std::filesystem::resize_file(folder / "broken.kvbdl.zip", 0);
        editor.setBundle(std::move(broken));
        EXPECT_EQ(requirementsOf(editor), before);
        EXPECT_EQ(saveButton(editor)->isEnabled(), isGreenBefore);
        EXPECT_EQ(dump(*editor.findChild<QTreeView*>()->model()), "") << "not the content of the bundle before";
    }
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ContentBundleEditorTest, TheMenuOfAPartOffersAddFileAloneAndThatOfADirectoryAddDirectoryAheadOfIt)
{
    ContentBundleEditor editor;
    editor.setBundle(openBundle(writeExample(folder, "x.kvbdl.zip", {"sub/a.kvsch"})));
    editor.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
    auto& content = *editor.findChild<QTreeView*>();
    content.expandAll();
    const auto menuOf = [&](const char* name) {
        return contextMenuOf(content, rowNamed(*content.model(), QString::fromUtf8(name)));
    };
    EXPECT_EQ(menuOf("a.kvsch"), std::vector<std::string>{"Add File"});
    EXPECT_EQ(menuOf("sub"), (std::vector<std::string>{"Add Directory", "Add File"}));
}

TEST_F(ContentBundleEditorTest, SaveReachesTheWayToSaveOfASubclass)
{
    CountingEditor editor;
    editor.setBundle(openBundle(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"})));
    saveButton(editor)->click();
    EXPECT_EQ(editor.saves, 1);
}

TEST_F(ContentBundleEditorTest, AFurtherRequirementTakesTheSaveButtonAway)
{
    ContentBundleEditor editor;
    editor.setBundle(openBundle(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"})));
    editor.addRequirement(7, QStringLiteral("Bundle was looked at."), false);
    EXPECT_FALSE(saveButton(editor)->isEnabled());
    editor.setRequirementFulfilled(7, true);
    EXPECT_TRUE(saveButton(editor)->isEnabled());
}
