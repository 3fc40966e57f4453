#include "browsers/example_browser2_example_model.h"

#include "browsers/bundle_text.h"
#include "kelvaris/system/application.h"
#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/qt/path_bridge.h"

#include <iterator>
#include <optional>
#include <utility>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;

namespace {

struct OpenedBarrel
{
    QString path;
    BarrelOfExamplesBundle barrel;
};

std::vector<OpenedBarrel> openBarrels(const std::vector<FilePath2>& files)
{
    std::vector<OpenedBarrel> opened;
    opened.reserve(files.size());
    for (const FilePath2& file : files) {
        auto barrel = BarrelOfExamplesBundle::open(file);
        if (barrel)
            opened.push_back({toQString(file), *std::move(barrel)});
        else
            Application::instance()->logger().error(String2{u8"example browser"}, barrel.error());
    }
    return opened;
}

struct FoundExample
{
    const OpenedBarrel& barrel;
    ExamplePart part;
};

/// @throws bad_expected_access<ErrorCode2>  a relationship leads to no example
std::vector<FoundExample> findExamples(const std::vector<OpenedBarrel>& barrels)
{
    std::vector<FoundExample> examples;
    for (const OpenedBarrel& opened : barrels) {
        const auto relationships = opened.barrel.exampleRelationships().value();
        for (auto it = relationships.begin(); it != decltype(it)::Sentinel{}; ++it)
            examples.push_back({opened, opened.barrel.example(*it).value()});
    }
    return examples;
}

/// The texts of an example; none when its bundle cannot be opened.
std::optional<ExampleEntry> readEntry(const QString& barrelPath, const ExamplePart& part)
{
    auto bundle = part.bundle();
    if (!bundle)
        return {}; // one broken example must not hide the others, and the list has no place to say so
    return ExampleEntry{textOrEmpty(bundle->title()),
                        textOrEmpty(bundle->description()),
                        textOrEmpty(bundle->manufacturer()),
                        textsOrEmpty(bundle->keywords()),
                        barrelPath,
                        textOrEmpty(part.uri().value().toString())};
}

std::vector<ExampleEntry> readEntries(const std::vector<OpenedBarrel>& barrels)
{
    const std::vector<FoundExample> examples = findExamples(barrels);
    std::vector<ExampleEntry> entries;
    entries.reserve(examples.size());
    for (const FoundExample& example : examples) {
        if (auto entry = readEntry(example.barrel.path, example.part))
            entries.push_back(*std::move(entry));
    }
    return entries;
}

} // namespace

ExampleBrowser2ExampleModel::ExampleBrowser2ExampleModel(QObject* parent) : QAbstractItemModel{parent} {}

void ExampleBrowser2ExampleModel::addBarrels(const std::vector<FilePath2>& files)
{
    std::vector<ExampleEntry> entries = readEntries(openBarrels(files));

    // The announced range ends one past the last new row, also when there is no new row at all. Whoever listens counts
    // on that; the proxy keeps the row that is not there out of the view.
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(entries.size()));
    std::ranges::move(entries, std::back_inserter(m_entries));
    endInsertRows();
}

QModelIndex ExampleBrowser2ExampleModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, const_cast<ExampleEntry*>(&m_entries[static_cast<std::size_t>(row)]));
}

QModelIndex ExampleBrowser2ExampleModel::parent(const QModelIndex&) const
{
    return {};
}

int ExampleBrowser2ExampleModel::rowCount(const QModelIndex&) const
{
    return static_cast<int>(m_entries.size());
}

int ExampleBrowser2ExampleModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant ExampleBrowser2ExampleModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.internalPointer() == nullptr)
        return {};
    const auto& entry = *static_cast<const ExampleEntry*>(index.internalPointer());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case TitleRole:
        return entry.title;
    case DescriptionRole:
        return entry.description;
    case KeywordsRole:
        return entry.keywords;
    case ManufacturerRole:
        return entry.manufacturer;
    case BarrelPathRole:
        return entry.barrelPath;
    case PartUriRole:
        return entry.partUri;
    default:
        return {};
    }
}
