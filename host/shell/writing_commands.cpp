#include "host/shell/writing_commands.h"

#include "host/core/bundle/bundle_inspection.h"
#include "host/core/text/text_view.h"
#include "host/shell/barrel_examples.h"
#include "host/shell/command_output.h"
#include "host/shell/exit_status.h"
#include "host/shell/function_call.h"
#include "host/shell/interruption.h"
#include "host/shell/log_output.h"
#include "host/shell/packing_plan.h"
#include "host/shell/progress.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include <QtCore/QJsonArray>

#include <memory>
#include <numeric>

namespace HostShell {

using namespace Kelvaris::System;
using IO::Bundle::BarrelOfExamplesBundle;
using IO::Bundle::ContentBundle;
using IO::Bundle::PlannedFile;
using IO::OpcPackaging::opc_error_category;

namespace {

/// For an error while something is written: the input may be broken, the output may be there, or the disk fails.
int writingStatusOf(const ErrorCode2& error)
{
    return &error.category() == &opc_error_category() ? statusOf(error) : ExitStatus::failed;
}

constexpr const char* interruptedSentence = "interrupted; nothing was written";

// extract

/// What is going to be unpacked: a bundle, or an example inside a barrel.
struct Source
{
    std::unique_ptr<ContentBundle> bundle;
    std::string stem; ///< for the name of the directory
};

using FoundSource = Expected<Source, Refusal>;

/// Whether `wanted` means that example: by its title, its part's name or the end of that.
bool isMeant(const NamedExample& example, const std::string& wanted)
{
    if (example.name == wanted || example.name.ends_with("/" + wanted))
        return true;
    const auto bundle = example.part.bundle();
    return bundle && toText(bundle->title().valueOr({})) == wanted;
}

Expected<std::vector<NamedExample>, ErrorCode2> meantExamples(const BarrelOfExamplesBundle& barrel,
                                                              const std::string& wanted)
{
    const auto examples = examplesOf(barrel);
    if (!examples)
        return examples.error();
    std::vector<NamedExample> meant;
    for (const FoundExample& example : *examples) {
        // one that cannot be found is not the one that is meant, and check tells of it
        if (example && isMeant(*example, wanted))
            meant.push_back(*example);
    }
    return meant;
}

FoundSource sourceInBarrel(const CommandLine& line)
{
    const std::string& file = line.arguments.front();
    const auto barrel = BarrelOfExamplesBundle::open(toPath(file));
    if (!barrel)
        return badInput(barrel.error());
    auto meant = meantExamples(*barrel, line.example);
    if (!meant)
        return badInput(meant.error());
    const std::string asked = Text::displayed(file) + ": " + (meant->empty() ? "no example" : "more than one example") +
                              " is called \"" + Text::displayed(line.example) +
                              "\"; \"hollerwick-host list\" shows their names";
    if (meant->size() != 1)
        return Refusal{ExitStatus::badInput, asked};
    auto bundle = meant->front().part.bundle();
    if (!bundle)
        return badInput(bundle.error());
    return Source{std::make_unique<IO::Bundle::ExampleBundle>(std::move(*bundle)), stemOf(meant->front().name)};
}

bool isBarrel(const std::string& file)
{
    return BarrelOfExamplesBundle::open(toPath(file)).hasValue();
}

FoundSource sourceOf(const CommandLine& line)
{
    const std::string& file = line.arguments.front();
    if (!line.example.empty())
        return sourceInBarrel(line);
    auto bundle = ContentBundle::open(toPath(file));
    if (bundle)
        return Source{std::make_unique<ContentBundle>(std::move(*bundle)), stemOf(file)};
    if (isBarrel(file))
        return Refusal{ExitStatus::usage, Text::displayed(file) +
                                              ": is a barrel of examples: choose one with --example; "
                                              "\"hollerwick-host list\" shows their names"};
    return badInput(bundle.error());
}

std::uint64_t sizeOf(const std::vector<PlannedFile>& files)
{
    return std::accumulate(files.begin(), files.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const PlannedFile& file) { return sum + file.size; });
}

void printExtracted(const CommandLine& line, const std::string& directory, const std::vector<PlannedFile>& files)
{
    if (!line.json) {
        for (const PlannedFile& file : files)
            printLine(directory + "/" + file.path);
        return;
    }
    QJsonArray written;
    for (const PlannedFile& file : files)
        written.append(QJsonObject{{QStringLiteral("path"), QString::fromStdString(file.path)},
                                   {QStringLiteral("size"), static_cast<double>(file.size)}});
    printJson(ExitStatus::done, {{QStringLiteral("output"), QString::fromStdString(directory)},
                                 {QStringLiteral("dryRun"), line.dryRun},
                                 {QStringLiteral("files"), written}});
}

int unpackInto(const CommandLine& line, ContentBundle& bundle, const std::string& directory,
               const std::vector<PlannedFile>& files)
{
    const Interruption interruption;
    const auto unpacked = [&] {
        const Progress progress{"extracting", sizeOf(files), Progress::Counted::written};
        return bundle.unpack(toPath(directory));
    }();
    if (!unpacked && Interruption::hasHappened())
        Interruption::end(interruptedSentence);
    if (!unpacked)
        return refuse(line, writingStatusOf(unpacked.error()), unpacked.error());
    printExtracted(line, directory, files);
    return ExitStatus::done;
}

// pack, barrel

void printPacked(const CommandLine& line, const PackingPlan& plan)
{
    if (!line.json) {
        for (const PlannedPart& part : plan.parts) {
            if (line.dryRun)
                printLine(part.part + "  " + part.file);
        }
        return printLine(plan.output);
    }
    QJsonArray parts;
    for (const PlannedPart& part : plan.parts)
        parts.append(QJsonObject{{QStringLiteral("part"), QString::fromStdString(part.part)},
                                 {QStringLiteral("file"), QString::fromStdString(part.file)},
                                 {QStringLiteral("size"), static_cast<double>(part.size)}});
    printJson(ExitStatus::done, {{QStringLiteral("output"), QString::fromStdString(plan.output)},
                                 {QStringLiteral("dryRun"), line.dryRun},
                                 {QStringLiteral("parts"), parts}});
}

std::vector<std::string> filesOf(const PackingPlan& plan)
{
    std::vector<std::string> files;
    for (const PlannedPart& part : plan.parts)
        files.push_back(part.file);
    return files;
}

/// What a function that packs answers when it has not: its result, or what it has written to the log.
std::string reasonOf(const CallOutcome& outcome)
{
    constexpr std::string_view failed = "FAILED: ";
    if (outcome.result.results.empty())
        return outcome.failure;
    const std::string& result = outcome.result.results.front();
    return result.starts_with(failed) ? result.substr(failed.size()) : result;
}

/// Lets the script function do it, so that there is one way to make a bundle.
int callPacker(const CommandLine& line, const PackingPlan& plan, const std::string& function,
               const std::vector<std::vector<std::string>>& arguments)
{
    if (line.dryRun) {
        printPacked(line, plan);
        return ExitStatus::done;
    }
    if (const auto refusal = refusalOf(function, arguments.size()))
        return refuse(line, ExitStatus::usage, *refusal);
    const Interruption interruption;
    const CallOutcome outcome = [&] {
        const Progress progress{"packing", plan.size(), Progress::Counted::read};
        return callByName(function, arguments);
    }();
    if (outcome.result.results == std::vector<std::string>{"OK"}) {
        printPacked(line, plan);
        return ExitStatus::done;
    }
    if (Interruption::hasHappened())
        Interruption::end(interruptedSentence);
    return refuse(line, ExitStatus::failed, reasonOf(outcome));
}

} // namespace

int extractBundle(const CommandLine& line)
{
    const auto source = sourceOf(line);
    if (!source)
        return refuse(line, source.error());
    const std::string directory = line.output.empty() ? source->stem : line.output;
    const auto files = IO::Bundle::plannedFiles(source->bundle->package(), toPath(directory));
    if (!files)
        return refuse(line, writingStatusOf(files.error()), files.error());
    if (files->empty())
        return refuse(line, Refusal{ExitStatus::badInput, Text::displayed(line.arguments.front()) +
                                                              ": has no content to extract; "
                                                              "\"hollerwick-host info\" shows what is in it"});
    if (!line.dryRun)
        return unpackInto(line, *source->bundle, directory, *files);
    printExtracted(line, directory, *files);
    return ExitStatus::done;
}

int packExample(const CommandLine& line)
{
    const auto plan = planExample(line);
    if (!plan)
        return refuse(line, plan.error());
    const std::vector<std::string> files = filesOf(*plan);
    const std::string title = line.title.empty() ? stemOf(files.front()) : line.title;
    return callPacker(line, *plan, "_create_example",
                      {files, {plan->output}, {title}, {line.description}, {line.manufacturer}, line.keywords});
}

int packBarrel(const CommandLine& line)
{
    const auto plan = planBarrel(line);
    if (!plan)
        return refuse(line, plan.error());
    return callPacker(line, *plan, "_create_examples", {filesOf(*plan), {plan->output}});
}

} // namespace HostShell
