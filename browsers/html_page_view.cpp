#include "browsers/html_page_view.h"

#include "browsers/text_page_view.h"

#ifdef HOLLERWICK_HAVE_WEBKIT

#include "browsers/pages_module.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>

#include <dlfcn.h>

namespace {

/// Of the plug-in, or of the program that this code was linked into.
QDir ownDirectory()
{
    Dl_info own{};
    (void)::dladdr(reinterpret_cast<const void*>(&newHtmlPageView), &own);
    return QFileInfo{QFile::decodeName(own.dli_fname)}.absoluteDir();
}

PagesModule::NewPage findWebKit()
{
    const QDir own = ownDirectory();
    for (const QString& place : {QStringLiteral("."), QStringLiteral("../lib/hollerwick")}) {
        QLibrary module{own.filePath(place + QStringLiteral("/hollerwick-pages.so"))};
        // WebKit does not survive being taken out of memory
        module.setLoadHints(QLibrary::PreventUnloadHint);
        if (const auto function = module.resolve(PagesModule::newPageName))
            return reinterpret_cast<PagesModule::NewPage>(function);
    }
    return nullptr;
}

} // namespace

// WebKit takes longer to load than all the rest together, and most callers never see a page.
HtmlPageView& newHtmlPageView()
{
    if (const auto newPage = findWebKit())
        return *newPage();
    return *new TextPageView;
}

#else

HtmlPageView& newHtmlPageView()
{
    return *new TextPageView;
}

#endif
