#include "models/example_bundle_content_model.h"

#include "kelvaris/system/qt/path_bridge.h"
#include "kelvaris/system/qt/text_bridge.h"
#include "kelvaris/system/try_invoke.h"
#include "models/item_roles.h"

#include <QtGui/QPixmap>

#include <utility>

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::OpcPackageRelationship;

ExampleBundleContentModel::ExampleBundleContentModel(QObject* parent) : ContentBundleContentModel{parent}
{
    QPixmap square{100, 100};
    square.fill(Qt::red);
    m_primaryFileIcon = QIcon{square};
}

ExampleBundleContentModel::~ExampleBundleContentModel() = default;

QVariant ExampleBundleContentModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DecorationRole)
        return ContentBundleContentModel::data(index, role);
    // Paths alone are compared: a directory of that path has the mark too, and a target that the bundle spells in
    // another way has none.
    const bool isPrimary = m_primaryFile && data(index, ItemRoles::path) == QVariant{*m_primaryFile};
    return isPrimary ? QVariant{m_primaryFileIcon} : QVariant{};
}

void ExampleBundleContentModel::setBundle(std::shared_ptr<ExampleBundle> bundle)
{
    ContentBundleContentModel::setBundle(std::move(bundle));
}

std::shared_ptr<ExampleBundle> ExampleBundleContentModel::bundle() const
{
    return std::static_pointer_cast<ExampleBundle>(ContentBundleContentModel::bundle());
}

void ExampleBundleContentModel::setPrimaryFile(const QString& path)
{
    m_primaryFile = path;
    // A refusal shows when the bundle is opened again; the mark is what the user chose.
    (void)bundle()->setPrimaryFile(Url{qStringToUTF8(path).value()});
    if (rowCount() == 0)
        return;
    // The top level only: the tree is not searched for the rows that gain and lose the mark. Deeper rows show it when
    // they are painted next.
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::DecorationRole});
}

void ExampleBundleContentModel::bundleChanged()
{
    const std::shared_ptr<ExampleBundle> example = bundle();
    m_primaryFile.reset();
    // An example without a primary file, or with one that cannot be read, shows no mark: the user chooses one anew.
    (void)example->primaryFileRelationship()
        .andThen([](const OpcPackageRelationship& relationship) { return relationship.targetUri(); })
        .andThen([](const Url& url) { return url.toLocalFile(UrlLocalFileOptions::relativePath); })
        .andThen([this](const FilePath2& path) { return tryInvoke([&] { m_primaryFile = toQString(path); }); });
}

} // namespace Kelvaris::System::IO::Bundle
