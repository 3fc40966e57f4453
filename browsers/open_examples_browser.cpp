#include "browsers/open_examples_browser.h"

#include "authoring/bundle_texts.h"
#include "browsers/examples_browser.h"
#include "kelvaris/system/application.h"
#include "kelvaris/system/qt/path_bridge.h"

#include <QtWidgets/QFileDialog>

#include <memory>

using namespace Kelvaris::System;
using IO::Bundle::BarrelOfExamplesBundle;

namespace {

/// Room for usual titles beside a page.
constexpr QSize windowSize{960, 640};

FilePath2 askForBarrel()
{
    return toFilePath2(QFileDialog::getOpenFileName(nullptr, QStringLiteral("Select examples bundle"), QString{},
                                                    QLatin1String{BundleTexts::barrelFilter}));
}

} // namespace

void openExamplesBrowser(const std::optional<FilePath2>& path)
{
    const FilePath2 barrelPath = path ? *path : askForBarrel();
    if (!path && *barrelPath.c_str() == L'\0')
        return;

    auto browser = std::make_unique<ExamplesBrowser>();
    browser->resize(windowSize);
    browser->setAttribute(Qt::WA_DeleteOnClose);
    auto barrel = BarrelOfExamplesBundle::open(barrelPath);
    if (barrel)
        browser->setBundle(*std::move(barrel));
    else
        Application::instance()->logger().error("ui", barrel.error());
    browser.release()->show();
}
