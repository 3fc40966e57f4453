#include "browsers/html_page_view.h"
#include "tests/support/temporary_folder.h"

#include <QtCore/QMetaObject>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <memory>
#include <string>

TEST(HtmlPageViewLoading, APageIsShownByWebKitWhereThatIsInstalled)
{
#ifdef HOLLERWICK_HAVE_WEBKIT
    const char* const wanted = "QWebView";
#else
    const char* const wanted = "QTextBrowser";
#endif
    HtmlPageView& page = newHtmlPageView();
    const std::unique_ptr<QWidget> widget{&page.widget()};
    EXPECT_TRUE(widget->inherits(wanted)) << widget->metaObject()->className();
    EXPECT_EQ(widget->parent(), nullptr);
    page.setContent("<p>text</p>");
}
