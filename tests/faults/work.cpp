#include "tests/faults/work.h"

#include "host/core/opc/package_inspection.h"
#include "host/core/text/memory_guard.h"
#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/io/bundle/schematic_bundle.h"
#include "kelvaris/system/io/bundle/scriptable_bundle.h"
#include "tests/host/core/opc/package_file.h"
#include "tests/support/noise.h"

#include <fstream>
#include <memory>
#include <optional>
#include <ostream>

namespace fs = std::filesystem;
using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

using Done = Expected<void, ErrorCode2>;
using Steps = std::vector<Work::Step>;

constexpr auto normal = OpcPackageCompressionType::normal;

template <class T>
Done done(const Expected<T, ErrorCode2>& result)
{
    return result ? Done{} : Done{result.error()};
}

/// The one bundle that is made by its constructor.
Done createSchematicBundle(std::unique_ptr<SchematicBundle>& place)
{
    try {
        place = std::make_unique<SchematicBundle>();
        return {};
    } catch (const bad_expected_access<ErrorCode2>& failure) {
        return failure.error();
    }
}

/// Keeps what an operation gave for the steps behind it.
template <class T>
Done keep(std::optional<T>& place, Expected<T, ErrorCode2> result)
{
    if (!result)
        return result.error();
    place.emplace(std::move(*result));
    return {};
}

void write(const fs::path& path, const std::string& bytes)
{
    fs::create_directories(path.parent_path());
    std::ofstream{path, std::ios::binary} << bytes;
}

std::string text(std::size_t size)
{
    std::string bytes;
    for (int line = 0; bytes.size() < size; ++line)
        bytes += "line " + std::to_string(line) + " of a netlist\n";
    return bytes;
}

void prepareDesign(const fs::path& directory)
{
    write(directory / "design/top.kvsch", text(3'000));
    write(directory / "design/noise.bin", noise(2'000));
    write(directory / "design/documentation.html", "<p>page</p>");
    write(directory / "out.kvbdl.zip", "what stood here before");
}

void writeExample(const fs::path& directory, const fs::path& target)
{
    auto bundle = ExampleBundle::create().value();
    const OpcPackagePartUri top{L"/content/top.kvsch"};
    bundle.addFile(toFilePath2(directory / "design/top.kvsch"), top, normal).value();
    bundle.addFile(toFilePath2(directory / "design/noise.bin"), OpcPackagePartUri{L"/content/sub/noise.bin"}, normal)
        .value();
    bundle.setPrimaryFile(top).value();
    bundle.setTitle(toString2("T")).value();
    bundle.writeToFile(toFilePath2(target)).value();
}

void prepareExample(const fs::path& directory)
{
    prepareDesign(directory);
    writeExample(directory, directory / "out.kvbdl.zip");
}

/// What the steps of one work share. Arguments are made beforehand, so that only the operations themselves can fail.
struct Shared
{
    explicit Shared(const fs::path& directory)
        : top{toFilePath2(directory / "design/top.kvsch")}, noise{toFilePath2(directory / "design/noise.bin")},
          page{toFilePath2(directory / "design/documentation.html")}, target{toFilePath2(directory / "out.kvbdl.zip")},
          barrelFile{toFilePath2(directory / "out.kvexs")}, unpacked{toFilePath2(directory / "unpacked/here")}
    {
        keywords.push_back(toString2("filter")).value();
        keywords.push_back(toString2("passive")).value();
    }

    FilePath2 top;
    FilePath2 noise;
    FilePath2 page;
    FilePath2 target;
    FilePath2 barrelFile;
    FilePath2 unpacked;
    OpcPackagePartUri topUri{L"/content/top.kvsch"};
    OpcPackagePartUri noiseUri{L"/content/deep/er/noise.bin"};
    OpcPackagePartUri pageUri{L"/content/page.html"};
    OpcPackagePartUri firstUri{L"/examples/first.kvbdl.zip"};
    OpcPackagePartUri secondUri{L"/examples/second.kvbdl.zip"};
    String2 title = toString2("A title that is too long to stand inside of a text object");
    String2 script = toString2(text(90'000));
    StringVector2 keywords;
    std::optional<ExampleBundle> example;
    std::optional<BarrelOfExamplesBundle> barrel;
    std::optional<ScriptableBundle> scriptable;
    std::optional<OpcPackageRelationshipCollection> relationships;
    std::optional<OpcPackage> package;
    std::optional<PackageInspection> inspection;
    std::unique_ptr<SchematicBundle> schematics;
    std::optional<OpcPackagePart> root;
};

Steps createAndSave(const fs::path& directory)
{
    const auto s = std::make_shared<Shared>(directory);
    return {
        [s] { return keep(s->example, ExampleBundle::create()); },
        [s] { return done(s->example->addFile(s->top, s->topUri, normal)); },
        [s] { return done(s->example->addFile(s->noise, s->noiseUri, OpcPackageCompressionType::none)); },
        [s] { return done(s->example->addFile(s->page, s->pageUri, OpcPackageCompressionType::maximum)); },
        [s] { return s->example->setTitle(s->title); },
        [s] { return s->example->setKeywords(s->keywords); },
        [s] { return s->example->setPrimaryFile(s->topUri); },
        [s] { return s->example->setManufacturer(s->title); },
        [s] { return s->example->setDocumentationHTML(s->pageUri); },
        [s] { return s->example->writeToFile(s->target); },
    };
}

Steps saveOverTheOpenFile(const fs::path& directory)
{
    const auto s = std::make_shared<Shared>(directory);
    return {
        [s] { return keep(s->example, ExampleBundle::open(s->target)); },
        [s] { return s->example->setTitle(s->title); },
        [s] { return s->example->setPrimaryFile(s->topUri); },
        [s] { return done(s->example->addFile(s->page, s->pageUri, normal)); },
        [s] { return s->example->setPrimaryFile(s->pageUri); },
        [s] { return s->example->writeToFile(s->target); },
        [s] { return s->example->setManufacturer(s->title); },
        [s] { return s->example->writeToFile(s->target); },
    };
}

Steps openAndWalk(const fs::path& directory)
{
    const auto s = std::make_shared<Shared>(directory);
    return {
        [s] { return keep(s->package, OpcPackage::open(s->target, OpcPackageOpenFlag::verify)); },
        [s] { return done(s->package->parts()); },
        [s] { return done(s->package->relationships()); },
        [s] { return done(s->package->part(s->topUri)); },
        [s] { return done(s->package->packageProperties().title()); },
        [s] { return keep(s->example, ExampleBundle::open(s->target)); },
        [s] { return done(s->example->contentRelationships()); },
        [s] { return done(s->example->primaryFileRelationship()); },
        [s] { return keep(s->inspection, PackageInspection::open(s->target)); },
        [s] { return done(s->inspection->entries()); },
        [s] { return done(s->inspection->sources()); },
        [s] { return done(s->inspection->verify()); },
    };
}

Steps unpack(const fs::path& directory)
{
    const auto s = std::make_shared<Shared>(directory);
    return {
        [s] { return keep(s->example, ExampleBundle::open(s->target)); },
        [s] { return s->example->unpack(s->unpacked); },
    };
}

Steps makeABarrelAndLookIntoIt(const fs::path& directory)
{
    const auto s = std::make_shared<Shared>(directory);
    return {
        [s] { return keep(s->barrel, BarrelOfExamplesBundle::create()); },
        [s] { return done(s->barrel->addExample(s->target, s->firstUri)); },
        [s] { return done(s->barrel->addExample(s->target, s->secondUri)); },
        [s] { return s->barrel->writeToFile(s->barrelFile); },
        [s] { return keep(s->barrel, BarrelOfExamplesBundle::open(s->barrelFile)); },
        [s] { return keep(s->relationships, s->barrel->exampleRelationships()); },
        [s] {
            auto part = s->barrel->example(s->secondUri);
            return part ? keep(s->example, part->bundle()) : Done{part.error()};
        },
        [s] { return done(s->example->title()); },
        [s] { return s->example->unpack(s->unpacked); },
    };
}

Steps saveAHierarchy(const fs::path& directory)
{
    const auto s = std::make_shared<Shared>(directory);
    return {
        [s] { return Text::withinMemory([s] { return createSchematicBundle(s->schematics); }); },
        [s] { return keep(s->root, s->schematics->setRootSchematic(s->top)); },
        [s] { return done(s->schematics->addDescendantSchematic(s->noise, s->top, *s->root)); },
        [s] { return keep(s->root, s->schematics->setRootSchematic(s->page)); },
        [s] { return done(s->schematics->addDescendantSchematic(s->top, s->page, *s->root)); },
        [s] { return s->schematics->writeToFile(s->target); },
    };
}

Steps saveAScript(const fs::path& directory)
{
    const auto s = std::make_shared<Shared>(directory);
    return {
        [s] { return keep(s->scriptable, ScriptableBundle::create()); },
        [s] { return done(s->scriptable->setScript(s->title)); },
        [s] { return done(s->scriptable->setScript(s->script)); },
        [s] { return s->scriptable->setDescription(s->title); },
        [s] { return s->scriptable->writeToFile(s->target); },
    };
}

void prepareLargeFile(const fs::path& directory)
{
    prepareDesign(directory);
    write(directory / "design/top.kvsch", text(4'500'000));
}

Steps packAndUnpackALargeFile(const fs::path& directory)
{
    const auto s = std::make_shared<Shared>(directory);
    return {
        [s] { return keep(s->example, ExampleBundle::create()); },
        [s] { return done(s->example->addFile(s->top, s->topUri, OpcPackageCompressionType::fast)); },
        [s] { return s->example->writeToFile(s->target); },
        [s] { return keep(s->example, ExampleBundle::open(s->target)); },
        [s] { return s->example->writeToFile(s->target); },
        [s] { return s->example->unpack(s->unpacked); },
    };
}

} // namespace

std::ostream& operator<<(std::ostream& out, const Work& work)
{
    return out << work.name;
}

const std::vector<Work>& smallWorks()
{
    static const std::vector<Work> works{
        {"CreateAndSave", prepareDesign, createAndSave},
        {"SaveOverTheOpenFile", prepareExample, saveOverTheOpenFile},
        {"OpenAndWalk", prepareExample, openAndWalk},
        {"Unpack", prepareExample, unpack},
        {"MakeABarrelAndLookIntoIt", prepareExample, makeABarrelAndLookIntoIt},
        {"SaveAHierarchy", prepareDesign, saveAHierarchy},
        {"SaveAScript", prepareDesign, saveAScript},
    };
    return works;
}

const std::vector<Work>& largeWorks()
{
    static const std::vector<Work> works{{"PackAndUnpackALargeFile", prepareLargeFile, packAndUnpackALargeFile}};
    return works;
}

void restore(const Snapshot& snapshot, const fs::path& directory)
{
    for (const auto& [name, bytes] : snapshot) {
        if (name.ends_with('/'))
            fs::create_directories(directory / name);
        else
            write(directory / name, bytes);
    }
}

Snapshot snapshotOf(const fs::path& directory)
{
    Snapshot snapshot;
    for (const auto& entry : fs::recursive_directory_iterator{directory}) {
        const std::string name = entry.path().lexically_relative(directory).generic_string();
        if (entry.is_directory())
            snapshot.emplace(name + '/', "");
        else
            snapshot.emplace(name, readFile(entry.path()));
    }
    return snapshot;
}
