#pragma once

#ifdef HOLLERWICK_HAVE_WEBKIT
#include <QtWebKitWidgets/QWebView>
using HtmlPageWidget = QWebView;
#else
#include <QtWidgets/QTextBrowser>
using HtmlPageWidget = QTextBrowser;
#endif

#include <QtCore/QByteArray>

/// Shows an HTML page that came in a file from somebody else.
///
/// The page can do nothing but be read: no script, plug-in, Java or storage, no access to the network or to files, and
/// a click on a link leads nowhere. Pictures are shown when they stand in the page itself ("data:").
class HtmlPageView : public HtmlPageWidget
{
public:
    explicit HtmlPageView(QWidget* parent = nullptr);

    /// Shows `page` in the place of the one before. It is taken for HTML, and for UTF-8 unless it says otherwise.
    void setContent(const QByteArray& page);

#ifndef HOLLERWICK_HAVE_WEBKIT
protected:
    QVariant loadResource(int type, const QUrl& name) override;
#endif
};
