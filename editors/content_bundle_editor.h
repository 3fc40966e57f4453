#pragma once

#include "editors/requirement_list.h"
#include "kelvaris/system/io/bundle/content_bundle.h"
#include "models/bundle_properties_model.h"
#include "models/content_bundle_content_model.h"

#include <QtCore/QModelIndex>
#include <QtWidgets/QWidget>

#include <memory>

class QDialogButtonBox;
class QListView;
class QMenu;
class QSortFilterProxyModel;
class QTableView;
class QTreeView;

namespace Kelvaris::System::IO::Bundle {

/// The window in which a user fills a content bundle: its properties beside its content, the list of what it still
/// lacks, and a Save button that is enabled when it lacks nothing.
///
/// Edits go into the bundle in memory at once; its file changes with Save alone, and nothing asks about unsaved work. A
/// subclass brings its own models and menu entries through the virtual operations.
class ContentBundleEditor : public QWidget
{
public:
    explicit ContentBundleEditor(QWidget* parent = nullptr);
    ~ContentBundleEditor() override;

    /// Shows `bundle`, which the editor and its models own from now on, in the place of the one before.
    void setBundle(std::unique_ptr<ContentBundle> bundle);

    void addRequirement(int id, const QString& text, bool fulfilled);
    void setRequirementFulfilled(int id, bool fulfilled);

protected:
    /// Null until the first `setBundle`.
    virtual ContentBundleContentModel* contentModel() const;

    /// The models are made on the first `setBundle`: the constructor of a base class cannot reach a subclass's factory.
    virtual ContentBundleContentModel* createContentModel(QObject* parent) const;
    virtual BundlePropertiesModel* createPropertiesModel(QObject* parent) const;

    /// Asks for a file name and writes the bundle there; a failure is shown and changes nothing.
    virtual void saveBundle();

    /// Fills `menu` for `index`, a valid index of the view's proxy.
    virtual void populateContextMenu(QMenu& menu, const QModelIndex& index);

    /// The index of the content model behind an index of the view.
    QModelIndex toContentIndex(const QModelIndex& viewIndex) const;

private:
    void setUpViews();
    void layOutWidgets();
    void connectWidgets();
    void createModels();
    void showContextMenu(const QPoint& position);
    void addDirectory(const QModelIndex& index);
    void addFile(const QModelIndex& index);

    std::shared_ptr<ContentBundle> m_bundle;
    QTreeView* m_contentView;
    QTableView* m_propertiesView;
    ContentBundleContentModel* m_contentModel = nullptr; // a child, as all below
    QSortFilterProxyModel* m_contentProxy;
    QSortFilterProxyModel* m_propertiesProxy;
    BundlePropertiesModel* m_propertiesModel = nullptr;
    detail::RequirementList* m_requirementList;
    QListView* m_requirementsView;
    QDialogButtonBox* m_buttonBox;
};

} // namespace Kelvaris::System::IO::Bundle
