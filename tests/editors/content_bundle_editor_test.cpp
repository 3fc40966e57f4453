#include "editors/content_bundle_editor.h"

#include "tests/editors/window_fixture.h"
#include "tests/support/model_dump.h"

#include <QtWidgets/QListView>
#include <QtWidgets/QTableView>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;

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

std::unique_ptr<ContentBundle> openBundle(const std::filesystem::path& path)
{
    return std::make_unique<ContentBundle>(ContentBundle::open(pathOf(path)).value());
}

} // namespace

TEST_F(ContentBundleEditorTest, SaveIsDisabledBeforeThereIsABundle)
{
    ContentBundleEditor editor;
    EXPECT_FALSE(saveButton(editor)->isEnabled());
    EXPECT_EQ(dump(*editor.findChild<QListView*>()->model()), "Bundle has content.\n");
}

TEST_F(ContentBundleEditorTest, ABundleWithContentEnablesSaveAsSoonAsItIsSet)
{
    ContentBundleEditor editor;
    editor.setBundle(openBundle(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"})));
    EXPECT_TRUE(saveButton(editor)->isEnabled());
    EXPECT_EQ(dump(*editor.findChild<QListView*>()->model(), {}, {{0}, {Qt::DecorationRole}}), "#00ff00\n");
}

TEST_F(ContentBundleEditorTest, ASecondBundleTakesTheFirstOnesPlaceInBothModels)
{
    ContentBundleEditor editor;
    editor.setBundle(openBundle(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"})));
    editor.setBundle(std::make_unique<ContentBundle>(ContentBundle::create().value()));
    EXPECT_EQ(dump(*editor.findChild<QTreeView*>()->model()), "content\n");
    EXPECT_EQ(editor.findChild<QTableView*>()->model()->rowCount(), 15);
    EXPECT_FALSE(saveButton(editor)->isEnabled());
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
