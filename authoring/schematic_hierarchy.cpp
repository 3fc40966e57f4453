#include "authoring/schematic_hierarchy.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Authoring {

namespace {

/// The hierarchical name, then the schematic's path.
using DescendantRecord = std::pair<QString, QString>;

DescendantRecord toRecord(const QString& text)
{
    const QStringList pieces = text.split(QLatin1Char{';'});
    if (pieces.size() < 2)
        return {QString{}, pieces.first()};
    return {pieces[1], pieces[0]};
}

QString parentName(const QString& name)
{
    QStringList components = name.split(QLatin1Char{'.'});
    components.removeFirst();
    return components.join(QLatin1Char{'.'});
}

std::vector<DescendantRecord> sortedRecords(const QString& root, const QStringList& texts)
{
    std::vector<DescendantRecord> records;
    records.reserve(static_cast<std::size_t>(texts.size()) + 1);
    records.emplace_back(QString{}, root);
    for (const QString& text : texts)
        records.push_back(toRecord(text));
    // A name is longer than its parent's. Stable, so that the root stays ahead of other records without a name.
    std::ranges::stable_sort(records, {}, [](const DescendantRecord& record) { return record.first.size(); });
    return records;
}

} // namespace

QStringList identifyDescendants(const QString& root, const QStringList& records)
{
    const std::vector<DescendantRecord> sorted = sortedRecords(root, records);
    QStringList answers;
    for (const auto& [name, path] : sorted) {
        if (name.isEmpty())
            continue;
        const auto parent = std::ranges::find(sorted, parentName(name), &DescendantRecord::first);
        if (parent != sorted.end())
            answers.append(path + QLatin1Char{';'} + parent->second);
    }
    return answers;
}

} // namespace Authoring
