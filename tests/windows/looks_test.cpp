#include "host/shell/colour_scheme.h"
#include "host/shell/shell_icons.h"
#include "host/shell/shell_resource.h"
#include "tests/windows/all_windows.h"
#include "tests/windows/faults.h"

#include <QtCore/QLibraryInfo>
#include <QtCore/QTranslator>
#include <QtWidgets/QApplication>

using Faults::Lines;

namespace {

struct Surroundings
{
    const char* language;
    const char* colours;
};

void PrintTo(const Surroundings& surroundings, std::ostream* out)
{
    *out << surroundings.language << " " << surroundings.colours;
}

using Parameter = std::tuple<WindowCase, Surroundings>;

class Looks : public testing::TestWithParam<Parameter>
{
protected:
    static void SetUpTestSuite() { samples = std::make_unique<Samples>(); }
    static void TearDownTestSuite() { samples.reset(); }

    void SetUp() override
    {
        const Surroundings& surroundings = std::get<1>(GetParam());
        qputenv(HostShell::colourSchemeVariable, surroundings.colours);
        HostShell::applyColourScheme(*qApp);
        if (surroundings.language == std::string{"de"})
            speakGerman();
    }

    void TearDown() override
    {
        QCoreApplication::removeTranslator(&m_ofQt);
        QCoreApplication::removeTranslator(&m_own);
        qunsetenv(HostShell::colourSchemeVariable);
    }

    static inline std::unique_ptr<Samples> samples;

private:
    void speakGerman()
    {
        ASSERT_TRUE(m_own.load(QStringLiteral("hollerwick_de"), QStringLiteral(HOLLERWICK_TRANSLATIONS)));
        ASSERT_TRUE(m_ofQt.load(QStringLiteral("qtbase_de"), QLibraryInfo::location(QLibraryInfo::TranslationsPath)));
        QCoreApplication::installTranslator(&m_ofQt);
        QCoreApplication::installTranslator(&m_own);
    }

    QTranslator m_ofQt;
    QTranslator m_own;
};

std::string nameOf(const testing::TestParamInfo<Parameter>& info)
{
    const auto& [window, surroundings] = info.param;
    return std::string{window.name} + "_" + surroundings.language + "_" + surroundings.colours;
}

} // namespace

TEST_P(Looks, NothingIsCutOffOrOverlapsAndEverythingCanBeRead)
{
    std::get<0>(GetParam()).withWindow(*samples, [](QWidget& window) {
        EXPECT_EQ(Faults::cutOffTexts(window), Lines{});
        EXPECT_EQ(Faults::overlaps(window), Lines{});
        EXPECT_EQ(Faults::faintTexts(window), Lines{});
        EXPECT_EQ(Faults::sharedMnemonics(window), Lines{});
    });
}

TEST(LooksOfIcons, AreSharpAtTheScaleOfTheScreen)
{
    HostShell::loadShellResource();
    for (const char* name : {"document-new", "document-open", "document-save", "edit-clear", "media-playback-start",
                             "media-playback-stop", "dialog-error"}) {
        const QIcon icon{QStringLiteral(":/hollerwick/host/icons/%1.svg").arg(QString::fromLatin1(name))};
        const QPixmap picture = icon.pixmap(QSize{16, 16});
        EXPECT_GE(picture.width(), qRound(16 * qApp->devicePixelRatio())) << name;
        EXPECT_FALSE(HostShell::shellIcon(QString::fromLatin1(name)).isNull()) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Looks,
                         testing::Combine(testing::ValuesIn(allWindows()),
                                          testing::Values(Surroundings{"en", "light"}, Surroundings{"en", "dark"},
                                                          Surroundings{"de", "light"}, Surroundings{"de", "dark"})),
                         nameOf);
