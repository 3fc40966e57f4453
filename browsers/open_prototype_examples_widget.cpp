#include "browsers/open_prototype_examples_widget.h"

#include "browsers/prototype_examples_filter_proxy_model.h"
#include "browsers/prototype_examples_model.h"
#include "browsers/prototype_examples_widget.h"
#include "kelvaris/system/qt/path_bridge.h"

#include <QtWidgets/QFileDialog>

#include <memory>

using namespace Kelvaris::System;

namespace {

/// Room for three columns of usual texts.
constexpr QSize windowSize{960, 640};

FilePath2 askForDirectory()
{
    return toFilePath2(QFileDialog::getExistingDirectory(nullptr, QStringLiteral("Select examples directory"),
                                                         QString{}, QFileDialog::ShowDirsOnly));
}

} // namespace

void openPrototypeExamplesWidget(const std::optional<FilePath2>& directory)
{
    const FilePath2 path = directory ? *directory : askForDirectory();
    if (!directory && *path.c_str() == L'\0')
        return;

    auto widget = std::make_unique<PrototypeExamplesWidget>();
    widget->proxyModel().setSourceModel(new PrototypeExamplesModel{path, widget.get()});
    widget->resize(windowSize);
    widget->setAttribute(Qt::WA_DeleteOnClose);
    widget.release()->show();
}
