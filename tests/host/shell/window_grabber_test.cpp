#include "host/shell/window_grabber.h"

#include "host/shell/host_application.h"
#include "tests/support/temporary_folder.h"

#include <QtCore/QTimer>
#include <QtGui/QCloseEvent>
#include <QtGui/QImage>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace HostShell;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class WindowGrabberTest : public testing::Test
{
protected:
    std::unique_ptr<WindowGrabber> grabber(const char* keys = "")
    {
        return std::make_unique<WindowGrabber>(directory(), parseKeys(QString::fromUtf8(keys)).value());
    }

    QString directory() const { return QString::fromStdString(m_folder.path().string()); }

    std::vector<std::string> pictures() const
    {
        std::vector<std::string> names;
        for (const QString& name : QDir{directory()}.entryList(QDir::Files, QDir::Name))
            names.push_back(name.toStdString());
        return names;
    }

    static void runUntilWindowsAreClosed()
    {
        static_cast<HostApplication*>(QCoreApplication::instance())->runUntilWindowsAreClosed();
    }

private:
    TemporaryFolder m_folder;
};

/// Two fields and a button that asks a question.
class TwoFields : public QDialog
{
public:
    TwoFields()
    {
        setObjectName(QStringLiteral("TwoFields"));
        auto* layout = new QVBoxLayout{this};
        layout->addWidget(&first);
        layout->addWidget(&second);
        layout->addWidget(&button);
        button.setAutoDefault(true);
        connect(&button, &QPushButton::clicked, this,
                [this] { QMessageBox::warning(this, QStringLiteral("t"), QStringLiteral("x")); });
    }

    QLineEdit first;
    QLineEdit second;
    QPushButton button{QStringLiteral("&Ask")};
};

/// Refuses to be closed.
class Stubborn : public QWidget
{
public:
    Stubborn() { setObjectName(QStringLiteral("Stubborn")); }

protected:
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

} // namespace

TEST_F(WindowGrabberTest, TakesAPictureOfEachWindowInTheSizeOfTheWindowAndClosesIt)
{
    const auto grab = grabber();
    QWidget one;
    one.setObjectName(QStringLiteral("One"));
    one.resize(120, 80);
    QWidget two;
    two.show();
    one.show();
    runUntilWindowsAreClosed();
    EXPECT_FALSE(one.isVisible());
    EXPECT_FALSE(two.isVisible());
    EXPECT_EQ(pictures().size(), 2U);
    EXPECT_THAT(pictures(), testing::Contains(testing::MatchesRegex("0[12]-One.png")));
    EXPECT_THAT(pictures(), testing::Contains(testing::MatchesRegex("0[12]-QWidget.png")));
    const QStringList ofOne = QDir{directory()}.entryList({QStringLiteral("*-One.png")});
    ASSERT_EQ(ofOne.size(), 1);
    EXPECT_EQ(QImage{QDir{directory()}.filePath(ofOne.front())}.size(), QSize(120, 80));
    EXPECT_EQ(grab->failure(), QString{});
}

TEST_F(WindowGrabberTest, ServesAModalDialogInsideItsExec)
{
    const auto grab = grabber();
    TwoFields dialog;
    EXPECT_EQ(dialog.exec(), QDialog::Rejected);
    EXPECT_THAT(pictures(), ElementsAre("01-TwoFields.png"));
}

TEST_F(WindowGrabberTest, TypesKeysIntoTheFocusedFieldWithAPictureAfterEach)
{
    const auto grab = grabber("'aB ä' Tab x");
    TwoFields dialog;
    dialog.exec();
    EXPECT_EQ(dialog.first.text(), QStringLiteral("aB ä"));
    EXPECT_EQ(dialog.second.text(), QStringLiteral("x"));
    EXPECT_THAT(pictures(), ElementsAre("01-TwoFields.png", "02-TwoFields-key-aB-ä.png", "03-TwoFields-key-Tab.png",
                                        "04-TwoFields-key-x.png"));
}

TEST_F(WindowGrabberTest, ShowsWhatAKeyHasChanged)
{
    const auto grab = grabber("'text'");
    TwoFields dialog;
    dialog.exec();
    const QImage before{directory() + QStringLiteral("/01-TwoFields.png")};
    const QImage after{directory() + QStringLiteral("/02-TwoFields-key-text.png")};
    EXPECT_FALSE(before.isNull());
    EXPECT_NE(before, after);
}

TEST_F(WindowGrabberTest, GivesKeysToAWindowThatAKeyHasOpened)
{
    const auto grab = grabber("Tab Tab Return Return Shift+Tab x");
    TwoFields dialog;
    dialog.exec();
    EXPECT_EQ(dialog.second.text(), QStringLiteral("x"));
    EXPECT_THAT(pictures(), ElementsAre("01-TwoFields.png", "02-TwoFields-key-Tab.png", "03-TwoFields-key-Tab.png",
                                        "04-QMessageBox-key-Return.png", "05-TwoFields-key-Return.png",
                                        "06-TwoFields-key-Shift+Tab.png", "07-TwoFields-key-x.png"));
}

TEST_F(WindowGrabberTest, TriggersShortcuts)
{
    const auto grab = grabber("Alt+A");
    TwoFields dialog;
    dialog.exec();
    EXPECT_THAT(pictures(), ElementsAre("01-TwoFields.png", "02-QMessageBox-key-Alt+A.png"));
}

TEST_F(WindowGrabberTest, EndsWithAWindowThatRefusesToClose)
{
    const auto grab = grabber();
    Stubborn window;
    window.show();
    runUntilWindowsAreClosed();
    EXPECT_FALSE(window.isVisible());
    EXPECT_THAT(pictures(), ElementsAre("01-Stubborn.png"));
}

TEST_F(WindowGrabberTest, TakesNoPictureWhenAKeyHasClosedTheLastWindow)
{
    const auto grab = grabber("Esc Tab");
    TwoFields dialog;
    dialog.exec();
    EXPECT_THAT(pictures(), ElementsAre("01-TwoFields.png"));
}

TEST_F(WindowGrabberTest, TakesAPictureOfAWindowThatNeverComesToRest)
{
    WindowGrabber grab{directory(), {}, std::chrono::milliseconds{50}};
    QDialog dialog;
    QTimer restless;
    restless.callOnTimeout(&dialog, [&] { dialog.update(); });
    restless.start(0);
    dialog.exec();
    EXPECT_THAT(pictures(), ElementsAre("01-QDialog.png"));
}

TEST_F(WindowGrabberTest, SaysWhichPictureItCouldNotSave)
{
    const auto grab = grabber();
    QDir{directory()}.removeRecursively();
    QDialog dialog;
    dialog.exec();
    EXPECT_EQ(grab->failure(),
              QStringLiteral("cannot save the picture ") + directory() + QStringLiteral("/01-QDialog.png"));
    EXPECT_THAT(pictures(), IsEmpty());
}
