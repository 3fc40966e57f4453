#include "browsers/open_prototype_examples_widget.h"

#include "browsers/prototype_examples_filter_proxy_model.h"
#include "browsers/prototype_examples_widget.h"
#include "tests/browsers/sample_barrels.h"
#include "tests/support/modal_driver.h"
#include "tests/support/model_dump.h"

#include <QtCore/QPointer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

std::vector<PrototypeExamplesWidget*> openWidgets()
{
    std::vector<PrototypeExamplesWidget*> found;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* const table = dynamic_cast<PrototypeExamplesWidget*>(widget))
            found.push_back(table);
    }
    return found;
}

class OpenPrototypeExamplesWidget : public testing::Test
{
protected:
    void TearDown() override
    {
        for (PrototypeExamplesWidget* widget : openWidgets())
            delete widget;
    }

    std::filesystem::path directory()
    {
        writeExample(folder, "examples/sub/a.kvbdl.zip", {QStringLiteral("Buck")});
        return folder / "examples";
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(OpenPrototypeExamplesWidget, ShowsTheBundlesBelowTheDirectory)
{
    openPrototypeExamplesWidget(toFilePath(directory()));
    ASSERT_EQ(openWidgets().size(), 1U);
    EXPECT_TRUE(openWidgets()[0]->isVisible());
    EXPECT_EQ(dump(openWidgets()[0]->proxyModel()), "Buck\n");
}

TEST_F(OpenPrototypeExamplesWidget, DeletesWindowProxyAndModelWhenItIsClosed)
{
    openPrototypeExamplesWidget(toFilePath(directory()));
    PrototypeExamplesWidget* const widget = openWidgets().at(0);
    const QPointer<QObject> proxy = &widget->proxyModel();
    const QPointer<QObject> model = widget->proxyModel().sourceModel();
    widget->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(openWidgets().empty());
    EXPECT_TRUE(proxy.isNull());
    EXPECT_TRUE(model.isNull());
}

TEST_F(OpenPrototypeExamplesWidget, RaisesForADirectoryThatCannotBeReadAndShowsNoWindow)
{
    EXPECT_THROW(openPrototypeExamplesWidget(toFilePath(folder / "missing")), std::filesystem::filesystem_error);
    EXPECT_TRUE(openWidgets().empty());
}

TEST_F(OpenPrototypeExamplesWidget, AsksForTheDirectoryWithoutOne)
{
    const QString path = QString::fromStdString(directory().string());
    ModalDriver driver;
    driver.when<QFileDialog>([&](QFileDialog& files) {
        EXPECT_EQ(files.windowTitle(), QStringLiteral("Select examples directory"));
        EXPECT_TRUE(files.testOption(QFileDialog::ShowDirsOnly));
        chooseFile(files, path);
    });
    openPrototypeExamplesWidget({});
    ASSERT_EQ(openWidgets().size(), 1U);
    EXPECT_EQ(dump(openWidgets()[0]->proxyModel()), "Buck\n");
}

TEST_F(OpenPrototypeExamplesWidget, OpensNothingWhenTheQuestionIsCancelled)
{
    ModalDriver driver;
    driver.when<QFileDialog>([](QFileDialog& files) { QTest::keyClick(&files, Qt::Key_Escape); });
    openPrototypeExamplesWidget({});
    EXPECT_TRUE(openWidgets().empty());
}
