#include "browsers/examples_model.h"

#include "browsers/bundle_text.h"

#include <QtCore/QByteArray>

#include <utility>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;

namespace {

const ExamplesEntry* entryOf(const QModelIndex& index)
{
    return static_cast<const ExamplesEntry*>(index.internalPointer());
}

/// @throws bad_expected_access<ErrorCode2>  the example cannot be opened
ExamplesEntry readEntry(ExamplePart part)
{
    const ExampleBundle bundle = part.bundle().value();
    return {textOrEmpty(bundle.title()), textOrEmpty(bundle.description()), textsOrEmpty(bundle.keywords()),
            std::move(part)};
}

QByteArray readDocumentation(const ExamplePart& part)
{
    const auto page = part.bundle()
                          .andThen([](const ExampleBundle& bundle) { return bundle.documentationHTML(); })
                          .andThen([](const HTMLPart& html) { return html.content(); });
    if (!page)
        return {}; // no failure: the description is shown in its place
    return {reinterpret_cast<const char*>(page->data()), static_cast<int>(page->length())};
}

} // namespace

ExamplesModel::ExamplesModel(QObject* parent)
    : QAbstractItemModel{parent}, m_bundle{BarrelOfExamplesBundle::create().value()}
{
}

void ExamplesModel::setBundle(BarrelOfExamplesBundle barrel)
{
    // views have to hear the end of the reset also when an example cannot be read
    struct Reset
    {
        explicit Reset(ExamplesModel& resetModel) : model{resetModel} { model.beginResetModel(); }
        ~Reset() { model.endResetModel(); }
        ExamplesModel& model;
    } reset{*this};

    m_bundle = std::move(barrel);
    m_entries.clear();
    m_entries = readEntries();
}

std::vector<ExamplesEntry> ExamplesModel::readEntries() const
{
    std::vector<ExamplesEntry> entries;
    const auto relationships = m_bundle.exampleRelationships().value();
    for (auto it = relationships.begin(); it != decltype(it)::Sentinel{}; ++it)
        entries.push_back(readEntry(m_bundle.example(*it).value()));
    return entries;
}

void ExamplesModel::unpack(const QModelIndex& index, const FilePath2& directory) const
{
    if (const ExamplesEntry* entry = entryOf(index))
        entry->part.bundle().value().unpack(directory).value();
}

QModelIndex ExamplesModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, const_cast<ExamplesEntry*>(&m_entries[static_cast<std::size_t>(row)]));
}

QModelIndex ExamplesModel::parent(const QModelIndex&) const
{
    return {};
}

int ExamplesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int ExamplesModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant ExamplesModel::data(const QModelIndex& index, int role) const
{
    const ExamplesEntry* const entry = entryOf(index);
    if (entry == nullptr)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return entry->title;
    case DescriptionRole:
        return entry->description;
    case DocumentationRole:
        return readDocumentation(entry->part);
    case KeywordsRole:
        return entry->keywords;
    default:
        return {};
    }
}
