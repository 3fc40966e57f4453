#include "browsers/pages_module.h"

#include "browsers/web_page_view.h"

#include <QtCore/QtGlobal>

#include <type_traits>

extern "C" Q_DECL_EXPORT HtmlPageView* hollerwickNewPage()
{
    return new WebPageView;
}

static_assert(std::is_same_v<decltype(&hollerwickNewPage), PagesModule::NewPage>);
