#include "browsers/example_browser2.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTranslator>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

namespace {

class German : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(translator.load(QStringLiteral("hollerwick_de"), QStringLiteral(HOLLERWICK_TRANSLATIONS)));
        ASSERT_TRUE(QCoreApplication::installTranslator(&translator));
    }

    void TearDown() override { QCoreApplication::removeTranslator(&translator); }

    QTranslator translator;
};

} // namespace

TEST_F(German, IsTheLanguageOfTheExampleBrowserOnceItIsLoaded)
{
    const ExampleBrowser2 dialog;
    EXPECT_EQ(dialog.findChild<QPushButton*>(QStringLiteral("nextButton"))->text(), QStringLiteral("Weiter"));
    EXPECT_EQ(dialog.findChild<QPushButton*>(QStringLiteral("backButton"))->text(), QStringLiteral("Zurück"));
    EXPECT_EQ(dialog.findChild<QPushButton*>(QStringLiteral("createButton"))->text(), QStringLiteral("Anlegen"));
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("label"))->text(), QStringLiteral("Speicherort"));
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("searchBox"))->placeholderText(), QStringLiteral("Suchen"));
}

TEST_F(German, HasATextForEveryTextOfTheForms)
{
    const ExampleBrowser2 dialog;
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        EXPECT_NE(label->text(), QString{}) << qPrintable(label->objectName());
    for (const char* text : {"Examples List", "Examples Properties", "Example Properties", "Example Content",
                             "Build Requirements", "Dialog"})
        EXPECT_NE(translator.translate("ExamplesBundleEditor", text), QString{}) << text;
}
