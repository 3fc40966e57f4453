#pragma once

#include "browsers/html_page_view.h"

#include <QtWidgets/QTextBrowser>

/// Where there is no WebKit.
class TextPageView final : public QTextBrowser, public HtmlPageView
{
public:
    explicit TextPageView(QWidget* parent = nullptr);

    QWidget& widget() override { return *this; }
    void setContent(const QByteArray& page) override;

protected:
    QVariant loadResource(int type, const QUrl& name) override;
};
