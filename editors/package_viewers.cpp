#include "editors/package_viewers.h"

#include "editors/expansion_limit.h"
#include "editors/show_window.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "kelvaris/system/qt/path_bridge.h"
#include "models/bundle_structure_model.h"
#include "models/opc_package_model.h"

#include <QtWidgets/QFileDialog>
#include <QtWidgets/QTreeView>

#include <memory>

using namespace Kelvaris::System;
using IO::OpcPackaging::OpcPackage;
using IO::OpcPackaging::OpcPackageModel;
using IO::OpcPackaging::OpcPackageOpenFlag;

namespace {

/// Wide enough for usual names, some levels deep.
constexpr QSize windowSize{640, 480};

std::unique_ptr<QTreeView> makeView()
{
    auto view = std::make_unique<QTreeView>();
    view->resize(windowSize);
    // the same heights throughout: 60,000 rows are laid out without asking each
    view->setUniformRowHeights(true);
    view->setAccessibleName(QStringLiteral("Package"));
    limitExpansion(view.get());
    return view;
}

std::optional<FilePath2> askForPackage()
{
    const QString path = QFileDialog::getOpenFileName(nullptr, QStringLiteral("Select OPC package"));
    if (path.isEmpty())
        return std::nullopt;
    return toFilePath2(path);
}

} // namespace

void openBundleViewer(const FilePath2& path)
{
    const OpcPackage package = IO::OpcPackaging::open_package(path).value();
    auto view = makeView();
    view->setModel(new BundleStructureModel{package, view.get()});
    showAndRelease(std::move(view));
}

void openPackageBrowser(std::optional<FilePath2> path)
{
    if (!path)
        path = askForPackage();
    if (!path)
        return;
    auto view = makeView();
    auto* const model = new OpcPackageModel{OpcPackage::open(*path, OpcPackageOpenFlag::readOnDemand), view.get()};
    view->setModel(model);
    // without a package each row has two rows below it, without end
    view->setItemsExpandable(model->package() != nullptr);
    showAndRelease(std::move(view));
}
