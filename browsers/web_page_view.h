#pragma once

#include "browsers/html_page_view.h"

#include <QtWebKitWidgets/QWebView>

class WebPageView final : public QWebView, public HtmlPageView
{
public:
    explicit WebPageView(QWidget* parent = nullptr);

    QWidget& widget() override { return *this; }
    void setContent(const QByteArray& page) override;
};
