#include "browsers/text_page_view.h"

#include "browsers/page_paper.h"

#include <QtCore/QTextCodec>
#include <QtCore/QUrl>
#include <QtGui/QImage>

TextPageView::TextPageView(QWidget* parent) : QTextBrowser{parent}
{
    setOpenLinks(false);
    setPalette(paper(palette()));
    setUndoRedoEnabled(false);
}

void TextPageView::setContent(const QByteArray& page)
{
    const QTextCodec* const codec = QTextCodec::codecForHtml(page, QTextCodec::codecForName("UTF-8"));
    setHtml(codec->toUnicode(page));
}

QVariant TextPageView::loadResource(int type, const QUrl& name)
{
    // The document decodes "data:" itself when it gets nothing here. For any other picture that it does not get it
    // would read the file of that name.
    if (type != QTextDocument::ImageResource || name.scheme() == QLatin1String{"data"})
        return {};
    QImage nothing{1, 1, QImage::Format_ARGB32_Premultiplied};
    nothing.fill(Qt::transparent);
    return nothing;
}
