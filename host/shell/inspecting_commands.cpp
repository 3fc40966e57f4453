#include "host/shell/inspecting_commands.h"

#include "host/core/bundle/bundle_inspection.h"
#include "host/core/errors/error_words.h"
#include "host/core/opc/package_inspection.h"
#include "host/core/text/text_view.h"
#include "host/shell/barrel_examples.h"
#include "host/shell/bundle_texts.h"
#include "host/shell/command_output.h"
#include "host/shell/exit_status.h"
#include "host/shell/log_output.h"
#include "host/shell/progress.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>

#include <algorithm>
#include <cstdio>

namespace HostShell {

using namespace Kelvaris::System;
using IO::Bundle::BarrelOfExamplesBundle;
using IO::Bundle::BundleDescription;
using IO::Bundle::CheckReport;
using IO::OpcPackaging::InspectedEntry;
using IO::OpcPackaging::InspectedRelationship;
using IO::OpcPackaging::OpcPackage;
using IO::OpcPackaging::OpcTargetMode;
using IO::OpcPackaging::PackageInspection;

namespace {

template <class Value>
using Result = Expected<Value, ErrorCode2>;

QString toQText(const std::string& text)
{
    return QString::fromStdString(text);
}

struct SourcedRelationship
{
    std::string source;
    InspectedRelationship relationship;
};

/// All that `info` tells.
struct PackageInfo
{
    BundleDescription bundle;
    BundleTexts texts;
    std::vector<InspectedEntry> entries;
    std::vector<SourcedRelationship> relationships;
};

Result<std::vector<SourcedRelationship>> allRelationships(const PackageInspection& inspection)
{
    const auto sources = inspection.sources();
    if (!sources)
        return sources.error();
    std::vector<SourcedRelationship> all;
    for (const std::string& source : *sources) {
        const auto relationships = inspection.relationships(source);
        if (!relationships)
            return relationships.error();
        for (const InspectedRelationship& relationship : *relationships)
            all.push_back({source, relationship});
    }
    return all;
}

Result<PackageInfo> infoOf(OpcPackage package)
{
    const PackageInspection inspection{package};
    const auto entries = inspection.entries();
    if (!entries)
        return entries.error();
    const auto relationships = allRelationships(inspection);
    if (!relationships)
        return relationships.error();
    const auto bundle = IO::Bundle::describeBundle(package);
    if (!bundle)
        return bundle.error();
    const auto texts = textsOf(package);
    if (!texts)
        return texts.error();
    return PackageInfo{*bundle, *texts, *entries, *relationships};
}

QJsonObject toJson(const InspectedEntry& entry)
{
    return {{QStringLiteral("entry"), toQText(Text::displayed(entry.name))},
            {QStringLiteral("part"), toQText(entry.partName)},
            {QStringLiteral("mediaType"), toQText(entry.mediaType)},
            {QStringLiteral("size"), static_cast<double>(entry.size)},
            {QStringLiteral("compressedSize"), static_cast<double>(entry.compressedSize)}};
}

QJsonObject toJson(const SourcedRelationship& sourced)
{
    const InspectedRelationship& relationship = sourced.relationship;
    return {{QStringLiteral("source"), toQText(sourced.source)},
            {QStringLiteral("id"), toQText(relationship.id)},
            {QStringLiteral("type"), toQText(relationship.type)},
            {QStringLiteral("target"), toQText(relationship.target)},
            {QStringLiteral("part"), toQText(relationship.partName)},
            {QStringLiteral("external"), relationship.mode == OpcTargetMode::external}};
}

template <class Row>
QJsonArray toJsonArray(const std::vector<Row>& rows)
{
    QJsonArray array;
    for (const Row& row : rows)
        array.append(toJson(row));
    return array;
}

void printInfoAsJson(const std::string& file, const PackageInfo& info)
{
    QJsonObject object = toJson(info.texts);
    object.insert(QStringLiteral("file"), toQText(file));
    object.insert(QStringLiteral("kind"), toQText(info.bundle.kind));
    object.insert(QStringLiteral("manufacturer"), toQText(info.bundle.manufacturer));
    object.insert(QStringLiteral("primaryFile"), toQText(info.bundle.primaryFile));
    object.insert(QStringLiteral("entries"), toJsonArray(info.entries));
    object.insert(QStringLiteral("relationships"), toJsonArray(info.relationships));
    printJson(ExitStatus::done, object);
}

std::string padded(std::string text, std::size_t width)
{
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string rightAligned(const std::string& text, std::size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

void printProperty(const char* name, const std::string& value)
{
    constexpr std::size_t width = 14;
    if (!value.empty())
        printLine(padded(name, width) + Text::displayed(value));
}

void printEntries(const std::vector<InspectedEntry>& entries)
{
    constexpr std::size_t sizeWidth = 12;
    printLine("parts");
    for (const InspectedEntry& entry : entries) {
        if (!entry.partName.empty())
            printLine(rightAligned(std::to_string(entry.size), sizeWidth) + "  " + entry.partName + "  " +
                      Text::displayed(entry.mediaType));
    }
    if (std::ranges::none_of(entries, [](const InspectedEntry& entry) { return entry.partName.empty(); }))
        return;
    printLine("other entries");
    for (const InspectedEntry& entry : entries) {
        if (entry.partName.empty())
            printLine(rightAligned(std::to_string(entry.size), sizeWidth) + "  " + Text::displayed(entry.name));
    }
}

void printInfo(const std::string& file, const PackageInfo& info)
{
    printLine(Text::displayed(file) + ": " + info.bundle.kindInWords);
    printProperty("title", info.texts.title);
    printProperty("description", info.texts.description);
    printProperty("manufacturer", info.bundle.manufacturer);
    printProperty("keywords", joined(info.texts.keywords));
    printProperty("primary file", info.bundle.primaryFile);
    printEntries(info.entries);
    printLine("relationships");
    for (const auto& [source, relationship] : info.relationships)
        printLine("  " + source + "  " + Text::displayed(relationship.type) + "  " +
                  Text::displayed(relationship.target) +
                  (relationship.mode == OpcTargetMode::external ? "  (external)" : ""));
}

struct ListedExample
{
    std::string part;
    std::string manufacturer;
    BundleTexts texts;
};

Result<ListedExample> listedExample(const NamedExample& example)
{
    auto bundle = example.part.bundle();
    if (!bundle)
        return bundle.error();
    const auto texts = textsOf(bundle->package());
    if (!texts)
        return texts.error();
    return ListedExample{example.name, toText(bundle->manufacturer().valueOr({})), *texts};
}

/// What could be listed of a barrel, and what could not.
struct ListedBarrel
{
    std::vector<ListedExample> examples;
    std::vector<ErrorCode2> errors;
};

ListedBarrel listedBarrel(const std::string& file)
{
    ListedBarrel listed;
    const auto barrel = BarrelOfExamplesBundle::open(toPath(file));
    const auto examples = barrel ? examplesOf(*barrel) : Result<std::vector<FoundExample>>{barrel.error()};
    if (!examples) {
        listed.errors.push_back(examples.error());
        return listed;
    }
    for (const FoundExample& found : *examples) {
        auto example = found ? listedExample(*found) : Result<ListedExample>{found.error()};
        if (example)
            listed.examples.push_back(std::move(*example));
        else
            listed.errors.push_back(example.error());
    }
    return listed;
}

QJsonObject toJson(const ListedExample& example)
{
    QJsonObject object = toJson(example.texts);
    object.insert(QStringLiteral("part"), toQText(example.part));
    object.insert(QStringLiteral("manufacturer"), toQText(example.manufacturer));
    return object;
}

QJsonObject toJson(const std::string& file, const ListedBarrel& listed)
{
    QJsonObject object{{QStringLiteral("file"), toQText(file)},
                       {QStringLiteral("examples"), toJsonArray(listed.examples)}};
    if (!listed.errors.empty()) {
        QJsonArray errors;
        for (const ErrorCode2& error : listed.errors)
            errors.append(HostShell::toJson(error));
        object.insert(QStringLiteral("errors"), errors);
    }
    return object;
}

void printExamples(const ListedBarrel& listed)
{
    for (const ListedExample& example : listed.examples) {
        const std::string keywords = joined(example.texts.keywords);
        printLine(Text::displayed(example.part + "  " + example.texts.title) +
                  (keywords.empty() ? "" : "  [" + Text::displayed(keywords) + "]"));
    }
}

int statusOf(const CheckReport& report)
{
    return report.faults.empty() ? ExitStatus::done : ExitStatus::faultsFound;
}

QJsonObject toJson(const std::string& file, const CheckReport& report)
{
    QJsonArray faults;
    for (const ErrorCode2& fault : report.faults)
        faults.append(HostShell::toJson(fault));
    QJsonArray remarks;
    for (const std::string& remark : report.remarks)
        remarks.append(toQText(remark));
    return {{QStringLiteral("file"), toQText(file)},
            {QStringLiteral("faults"), faults},
            {QStringLiteral("remarks"), remarks}};
}

std::string counted(std::size_t count, const std::string& what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void printFault(const ErrorCode2& fault)
{
    const Errors::ErrorWords words = Errors::wordsOf(fault);
    printLine("fault   " + (words.where.empty() ? "" : words.where + ": ") + words.what +
              (words.why.empty() ? "" : ": " + words.why));
    if (!words.mend.empty())
        printLine("  mend  " + words.mend);
}

void printReport(const std::string& file, const CheckReport& report)
{
    for (const ErrorCode2& fault : report.faults)
        printFault(fault);
    for (const std::string& remark : report.remarks)
        printLine("remark  " + remark);
    const std::string verdict = report.faults.empty() ? "no faults" : counted(report.faults.size(), "fault");
    printLine(Text::displayed(file) + ": " + verdict +
              (report.remarks.empty() ? "" : ", " + counted(report.remarks.size(), "remark")));
}

std::uint64_t sizeOf(const std::vector<std::string>& files)
{
    std::uint64_t size = 0;
    for (const std::string& file : files)
        size += static_cast<std::uint64_t>(QFileInfo{toQText(file)}.size());
    return size;
}

} // namespace

int showInfo(const CommandLine& line)
{
    const std::string& file = line.arguments.front();
    const auto info = IO::OpcPackaging::open_package(toPath(file)).andThen(infoOf);
    if (!info)
        return refuse(line, ExitStatus::badInput, info.error());
    if (line.json)
        printInfoAsJson(file, *info);
    else
        printInfo(file, *info);
    return ExitStatus::done;
}

int listExamples(const CommandLine& line)
{
    int status = ExitStatus::done;
    QJsonArray barrels;
    for (const std::string& file : line.arguments) {
        const ListedBarrel listed = listedBarrel(file);
        if (!listed.errors.empty())
            status = ExitStatus::badInput;
        if (line.json)
            barrels.append(toJson(file, listed));
        else if (line.arguments.size() > 1)
            printLine(Text::displayed(file) + ":");
        if (!line.json)
            printExamples(listed);
        for (const ErrorCode2& error : listed.errors)
            complain(toText(error.message()));
    }
    if (line.json)
        printJson(status, {{QStringLiteral("barrels"), barrels}});
    return status;
}

int checkFiles(const CommandLine& line)
{
    int status = ExitStatus::done;
    QJsonArray files;
    Progress progress{"checking", sizeOf(line.arguments), Progress::Counted::read};
    for (const std::string& file : line.arguments) {
        const auto report = IO::Bundle::checkBundle(toPath(file));
        progress.hide();
        if (!report) {
            status = ExitStatus::badInput;
            complain(toText(report.error().message()));
            files.append(QJsonObject{{QStringLiteral("file"), toQText(file)},
                                     {QStringLiteral("error"), HostShell::toJson(report.error())}});
            continue;
        }
        if (status == ExitStatus::done)
            status = statusOf(*report);
        files.append(toJson(file, *report));
        if (!line.json)
            printReport(file, *report);
    }
    if (line.json)
        printJson(status, {{QStringLiteral("files"), files}});
    return status;
}

} // namespace HostShell
