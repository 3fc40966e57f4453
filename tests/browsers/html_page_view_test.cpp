#include <QtCore/QBuffer>
#include <QtCore/QTemporaryDir>
#include <QtGui/QDesktopServices>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

#ifdef HOLLERWICK_HAVE_WEBKIT
#include "browsers/web_page_view.h"

#include <QtWebKit/QWebElement>
#include <QtWebKit/QWebHistory>
#include <QtWebKitWidgets/QWebFrame>
#else
#include "browsers/text_page_view.h"
#endif

namespace {

#ifdef HOLLERWICK_HAVE_WEBKIT
using PageView = WebPageView;
#else
using PageView = TextPageView;
#endif

QString textOf(const PageView& view)
{
#ifdef HOLLERWICK_HAVE_WEBKIT
    return view.page()->mainFrame()->toPlainText().trimmed();
#else
    return view.toPlainText().trimmed();
#endif
}

/// Whether anything is painted in `colour`.
bool shows(PageView& view, const QColor& colour)
{
    const QImage picture = view.grab().toImage();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == colour)
                return true;
        }
    }
    return false;
}

/// What a page might open in the world outside.
class OpenedUrls : public QObject
{
    Q_OBJECT

public:
    OpenedUrls() { QDesktopServices::setUrlHandler(QStringLiteral("http"), this, "open"); }
    ~OpenedUrls() override { QDesktopServices::unsetUrlHandler(QStringLiteral("http")); }

    Q_SLOT void open(const QUrl& url) { urls += url.toString(); }

    QStringList urls;
};

class HtmlPage : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
        view.resize(400, 300);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    }

    /// Shows a page in which "HOST" stands for the address of a server of this test.
    void show(QByteArray page)
    {
        view.setContent(page.replace("HOST", "127.0.0.1:" + QByteArray::number(server.serverPort())));
        QTest::qWait(100);
    }

    bool wasServerAsked() const { return server.hasPendingConnections(); }

    QTcpServer server;
    PageView view;
};

} // namespace

TEST_F(HtmlPage, ShowsThePageAsHtml)
{
    show("<html><body><h1>Title</h1><p>Some <b>bold</b> text</p></body></html>");
    EXPECT_TRUE(textOf(view).contains(QStringLiteral("Some bold text"))) << qPrintable(textOf(view));
}

TEST_F(HtmlPage, ShowsUtf8WithoutADeclaration)
{
    show("<p>Größe 電 µ</p>");
    EXPECT_EQ(textOf(view), QStringLiteral("Größe 電 µ"));
}

TEST_F(HtmlPage, ShowsAPlainTextOfUtf8)
{
    show("Größe 電 µ");
    EXPECT_EQ(textOf(view), QStringLiteral("Größe 電 µ"));
}

TEST_F(HtmlPage, HeedsTheEncodingThatAPageDeclares)
{
    show("<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=iso-8859-1\"></head>"
         "<body>Gr\xf6\xdf"
         "e</body></html>");
    EXPECT_EQ(textOf(view), QStringLiteral("Größe"));
}

TEST_F(HtmlPage, HeedsAByteOrderMark)
{
    show("\xef\xbb\xbf<p>Größe</p>");
    EXPECT_EQ(textOf(view).remove(QChar{0xfeff}), QStringLiteral("Größe"));
}

TEST(HtmlPageInADarkColourScheme, ShowsBlackTextOnWhitePaper)
{
    const QPalette light = QApplication::palette();
    QPalette dark{Qt::black};
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    PageView view;
    view.resize(400, 300);
    view.setContent("<h1>Title</h1>");
    QTest::qWait(50);
    EXPECT_TRUE(shows(view, Qt::black));
    EXPECT_EQ(view.grab().toImage().pixelColor(200, 250), QColor{Qt::white});
    QApplication::setPalette(light);
}

TEST_F(HtmlPage, ShowsNothingForNoBytes)
{
    show("<p>before</p>");
    show("");
    EXPECT_EQ(textOf(view), QString{});
}

TEST_F(HtmlPage, ShowsANewPageInThePlaceOfTheOneBefore)
{
    show("<p>before</p>");
    show("<p>after</p>");
    EXPECT_EQ(textOf(view), QStringLiteral("after"));
}

TEST_F(HtmlPage, SurvivesBytesThatAreNoText)
{
    show(QByteArray::fromHex("00ff80c0fe3c003e00"));
    show("<p>after</p>");
    EXPECT_EQ(textOf(view), QStringLiteral("after"));
}

TEST_F(HtmlPage, RunsNoScript)
{
    show("<p id='p'>calm</p><script>document.getElementById('p').innerHTML='ran';</script>"
         "<body onload=\"document.getElementById('p').innerHTML='ran'\">");
    EXPECT_TRUE(textOf(view).startsWith(QStringLiteral("calm"))) << qPrintable(textOf(view));
}

TEST_F(HtmlPage, AsksTheNetworkForNothing)
{
    show("<html><head><link rel='stylesheet' href='http://HOST/style.css'><link rel='prefetch' href='http://HOST/p'>"
         "<style>@import url('http://HOST/import.css'); body { background: url(http://HOST/b.png) }</style></head>"
         "<body>text<img src='http://HOST/i.png'><iframe src='http://HOST/frame'></iframe>"
         "<object data='http://HOST/o'></object><embed src='http://HOST/e'><video src='http://HOST/v.mp4' autoplay>"
         "</video><audio src='http://HOST/a.ogg' autoplay></audio><script src='http://HOST/s.js'></script></body>");
    QTest::qWait(300);
    EXPECT_FALSE(wasServerAsked());
    EXPECT_TRUE(textOf(view).startsWith(QStringLiteral("text")));
}

TEST_F(HtmlPage, IsNotLedAwayByARefresh)
{
    show("<html><head><meta http-equiv='refresh' content='0; url=http://HOST/away'></head><body>stays</body>");
    QTest::qWait(300);
    EXPECT_FALSE(wasServerAsked());
    EXPECT_EQ(textOf(view), QStringLiteral("stays"));
}

TEST_F(HtmlPage, IsNotLedAwayByAClickOnALink)
{
    OpenedUrls opened;
    show("<body style='margin:0'><a href='http://HOST/away' style='font-size:60px'>a link to the outside</a></body>");
    QWidget* const target = view.findChild<QWidget*>(QStringLiteral("qt_scrollarea_viewport"));
    QTest::mouseClick(target != nullptr ? target : &view, Qt::LeftButton, {}, QPoint{60, 45});
    QTest::qWait(300);
    EXPECT_FALSE(wasServerAsked());
    EXPECT_TRUE(opened.urls.isEmpty()) << qPrintable(opened.urls.join(QLatin1Char{' '}));
    EXPECT_EQ(textOf(view), QStringLiteral("a link to the outside"));
}

TEST_F(HtmlPage, SendsNoForm)
{
    show("<body style='margin:0'><form action='http://HOST/form'><input type='submit' value='send'"
         " style='width:200px;height:100px'></form></body>");
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint{50, 50});
    QTest::qWait(300);
    EXPECT_FALSE(wasServerAsked());
}

TEST_F(HtmlPage, ReadsNoFile)
{
    QTemporaryDir directory;
    QImage red{50, 50, QImage::Format_RGB32};
    red.fill(Qt::red);
    const QString picture = directory.filePath(QStringLiteral("red.png"));
    ASSERT_TRUE(red.save(picture));
    QFile frame{directory.filePath(QStringLiteral("frame.html"))};
    ASSERT_TRUE(frame.open(QIODevice::WriteOnly));
    frame.write("<body style='background:#ff0000'>secret</body>");
    frame.close();

    const QByteArray base = QUrl::fromLocalFile(directory.path()).toEncoded();
    show("<p>text</p><img src='" + base + "/red.png'><iframe src='" + base + "/frame.html'></iframe><img src='" +
         picture.toUtf8() + "'><object data='" + base + "/frame.html'></object><iframe src='file:///etc/hostname'>");
    EXPECT_FALSE(shows(view, Qt::red));
    EXPECT_FALSE(textOf(view).contains(QStringLiteral("secret")));
}

TEST_F(HtmlPage, ShowsAPictureThatStandsInThePage)
{
    QImage red{50, 50, QImage::Format_RGB32};
    red.fill(Qt::red);
    QByteArray png;
    QBuffer buffer{&png};
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
    ASSERT_TRUE(red.save(&buffer, "PNG"));
    show("<img src=\"data:image/png;base64," + png.toBase64() + "\">");
    EXPECT_TRUE(shows(view, Qt::red));
}

TEST_F(HtmlPage, TakesNothingThatIsDroppedOnIt)
{
#ifdef HOLLERWICK_HAVE_WEBKIT
    EXPECT_FALSE(view.acceptDrops());
#else
    EXPECT_TRUE(view.isReadOnly());
#endif
}

#ifdef HOLLERWICK_HAVE_WEBKIT

TEST_F(HtmlPage, SwitchesOffWhateverAPageCouldUse)
{
    for (const auto attribute :
         {QWebSettings::JavascriptEnabled, QWebSettings::JavaEnabled, QWebSettings::PluginsEnabled,
          QWebSettings::LocalStorageEnabled, QWebSettings::OfflineStorageDatabaseEnabled,
          QWebSettings::OfflineWebApplicationCacheEnabled, QWebSettings::LocalContentCanAccessFileUrls,
          QWebSettings::LocalContentCanAccessRemoteUrls, QWebSettings::DnsPrefetchEnabled})
        EXPECT_FALSE(view.settings()->testAttribute(attribute)) << attribute;
}

TEST_F(HtmlPage, KeepsNoPageToGoBackTo)
{
    show("<p>before</p>");
    show("<p>after</p>");
    EXPECT_FALSE(view.history()->canGoBack());
    EXPECT_EQ(QWebSettings::maximumPagesInCache(), 0);
}

#endif

#include "html_page_view_test.moc"
