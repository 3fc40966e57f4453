#pragma once

#include <QtCore/QByteArray>

class QWidget;

/// Shows an HTML page that came in a file from somebody else.
///
/// The page can do nothing but be read: no script, plug-in, Java or storage, no access to the network or to files, and
/// a click on a link leads nowhere. Pictures are shown when they stand in the page itself ("data:").
class HtmlPageView
{
public:
    HtmlPageView() = default;
    HtmlPageView(const HtmlPageView&) = delete;
    HtmlPageView& operator=(const HtmlPageView&) = delete;

    /// What shows the page. It holds this object, which goes when the widget goes.
    virtual QWidget& widget() = 0;

    /// Shows `page` in the place of the one before. It is taken for HTML, and for UTF-8 unless it says otherwise.
    virtual void setContent(const QByteArray& page) = 0;

protected:
    virtual ~HtmlPageView() = default;
};

/// By Qt's WebKit where that is installed, else by `QTextBrowser`.
/// @return  a new one, whose widget has no parent and belongs to the caller
HtmlPageView& newHtmlPageView();
