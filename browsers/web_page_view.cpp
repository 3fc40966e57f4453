#include "browsers/web_page_view.h"

#include "browsers/page_paper.h"

#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>
#include <QtWebKit/QWebHistory>
#include <QtWebKit/QWebSettings>
#include <QtWebKitWidgets/QWebFrame>
#include <QtWebKitWidgets/QWebPage>

namespace {

/// Answers no request but for what stands in its URL.
class NoNetwork : public QNetworkAccessManager
{
public:
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply* createRequest(Operation operation, const QNetworkRequest& request, QIODevice* body) override
    {
        if (request.url().scheme() == QLatin1String{"data"})
            return QNetworkAccessManager::createRequest(operation, request, body);
        // a request without an address fails with an error, and nobody is asked
        return QNetworkAccessManager::createRequest(GetOperation, QNetworkRequest{}, nullptr);
    }
};

/// A page that cannot be left: no link, form, frame or refresh leads to another address.
class FixedPage : public QWebPage
{
public:
    using QWebPage::QWebPage;

protected:
    bool acceptNavigationRequest(QWebFrame*, const QNetworkRequest&, NavigationType) override { return false; }
    QWebPage* createWindow(WebWindowType) override { return nullptr; }
    QString chooseFile(QWebFrame*, const QString&) override { return {}; }
    bool supportsExtension(Extension) const override { return false; }
};

void switchEverythingOff(QWebSettings& settings)
{
    for (const auto attribute : {QWebSettings::JavascriptEnabled,
                                 QWebSettings::JavaEnabled,
                                 QWebSettings::PluginsEnabled,
                                 QWebSettings::JavascriptCanOpenWindows,
                                 QWebSettings::JavascriptCanAccessClipboard,
                                 QWebSettings::DeveloperExtrasEnabled,
                                 QWebSettings::OfflineStorageDatabaseEnabled,
                                 QWebSettings::OfflineWebApplicationCacheEnabled,
                                 QWebSettings::LocalStorageEnabled,
                                 QWebSettings::LocalContentCanAccessRemoteUrls,
                                 QWebSettings::LocalContentCanAccessFileUrls,
                                 QWebSettings::DnsPrefetchEnabled,
                                 QWebSettings::WebGLEnabled,
                                 QWebSettings::HyperlinkAuditingEnabled,
                                 QWebSettings::NotificationsEnabled,
                                 QWebSettings::WebAudioEnabled,
                                 QWebSettings::MediaSourceEnabled,
                                 QWebSettings::MediaEnabled,
                                 QWebSettings::FullScreenSupportEnabled,
                                 QWebSettings::ErrorPageEnabled})
        settings.setAttribute(attribute, false);
    settings.setAttribute(QWebSettings::PrivateBrowsingEnabled, true);
    settings.setDefaultTextEncoding(QStringLiteral("utf-8"));
}

} // namespace

WebPageView::WebPageView(QWidget* parent) : QWebView{parent}
{
    auto* const page = new FixedPage{this};
    page->setNetworkAccessManager(new NoNetwork{page});
    page->setLinkDelegationPolicy(QWebPage::DelegateAllLinks);
    page->history()->setMaximumItemCount(0);
    switchEverythingOff(*page->settings());
    setPalette(paper(palette()));
    setPage(page);

    // what is dropped on a page, and most of the page's own menu, would open another
    setAcceptDrops(false);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    addActions({pageAction(QWebPage::Copy), pageAction(QWebPage::SelectAll)});
}

void WebPageView::setContent(const QByteArray& page)
{
    QWebView::setContent(page, QString{}, QUrl{});
}
