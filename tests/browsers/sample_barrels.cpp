#include "tests/browsers/sample_barrels.h"

#include "kelvaris/system/io/bundle/example_bundle.h"
#include "kelvaris/system/io/mime_type.h"
#include "kelvaris/system/qt/path_bridge.h"
#include "kelvaris/system/qt/text_bridge.h"

#include <fstream>
#include <string_view>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

constexpr const char8_t* exampleRelationshipType =
    u8"http://schemas.kelvaris.example/package/2025/relationships/barrel-of-examples/example";

void addContent(ExampleBundle& bundle, const std::filesystem::path& file, const std::string& name)
{
    const OpcPackagePartUri uri{toFilePath("content/" + name)};
    (void)bundle.addFile(toFilePath(file), uri, OpcPackageCompressionType::normal).value();
}

void setTexts(ExampleBundle& bundle, const SampleExample& example)
{
    if (!example.title.isEmpty())
        bundle.setTitle(toString2(example.title)).value();
    if (!example.description.isEmpty())
        bundle.setDescription(toString2(example.description)).value();
    if (!example.manufacturer.isEmpty())
        bundle.setManufacturer(toString2(example.manufacturer)).value();
    if (example.keywords.isEmpty())
        return;
    StringVector2 keywords;
    for (const QString& keyword : example.keywords)
        keywords.push_back(toString2(keyword)).value();
    bundle.setKeywords(keywords).value();
}

void addFiles(ExampleBundle& bundle, const TemporaryFolder& folder, const SampleExample& example)
{
    addContent(bundle, folder.write("sources/primary file", example.bytes), example.file);
    if (example.hasPrimaryFile)
        bundle.setPrimaryFile(OpcPackagePartUri{toFilePath("content/" + example.file)}).value();
    if (!example.page.empty() || example.hasEmptyPage)
        addContent(bundle, folder.write("sources/page.html", example.page), "documentation.html");
}

/// Turns a bit of the first byte that an entry of an archive holds.
void damageEntry(const std::filesystem::path& archive, const std::string& entry)
{
    std::string bytes = readFile(archive);
    const std::size_t name = bytes.find(entry); // the entry's own header; the directory stands at the end
    const auto extraFields = static_cast<unsigned char>(bytes.at(name - 2));
    bytes.at(name + entry.size() + extraFields) ^= 1;
    std::ofstream{archive, std::ios::binary} << bytes;
}

/// A change that adds an example under the name of its file.
BarrelChange addExampleFile(const std::filesystem::path& file)
{
    return [file](BarrelOfExamplesBundle& barrel) {
        const OpcPackagePartUri uri{toFilePath("examples" / file.filename())};
        (void)barrel.addExample(toFilePath(file), uri).value();
    };
}

BarrelChange addDamagedExample(const TemporaryFolder& folder, const SampleExample& example, const std::string& entry)
{
    const std::filesystem::path file = writeExample(folder, "sources/damaged.kvbdl.zip", example);
    damageEntry(file, entry);
    return addExampleFile(file);
}

} // namespace

String2 toString2(const QString& text)
{
    return qStringToUTF8(text).value();
}

FilePath2 toFilePath(const std::filesystem::path& path)
{
    return toFilePath2(QString::fromStdString(path.string()));
}

std::filesystem::path writeExample(const TemporaryFolder& folder, const std::string& name, const SampleExample& example)
{
    ExampleBundle bundle = ExampleBundle::create().value();
    setTexts(bundle, example);
    addFiles(bundle, folder, example);
    const std::filesystem::path path = folder / name;
    std::filesystem::create_directories(path.parent_path());
    bundle.writeToFile(toFilePath(path)).value();
    return path;
}

std::filesystem::path writeBarrel(const TemporaryFolder& folder, const std::string& name,
                                  const std::vector<SampleExample>& examples, const BarrelChange& change)
{
    BarrelOfExamplesBundle barrel = BarrelOfExamplesBundle::create().value();
    for (std::size_t i = 0; i < examples.size(); ++i) {
        const std::string file = "example" + std::to_string(i) + ".kvbdl.zip";
        const auto example = writeExample(folder, "sources/" + file, examples[i]);
        (void)barrel.addExample(toFilePath(example), OpcPackagePartUri{toFilePath("examples/" + file)}).value();
    }
    if (change)
        change(barrel);
    const std::filesystem::path path = folder / name;
    barrel.writeToFile(toFilePath(path)).value();
    return path;
}

BarrelChange addLostExample()
{
    return [](BarrelOfExamplesBundle& barrel) {
        const OpcPackagePartUri nowhere{L"/examples/lost.kvbdl.zip"};
        (void)barrel.package().createRelationship(nowhere, OpcTargetMode::internal, exampleRelationshipType).value();
    };
}

BarrelChange addUnreadableExample(const TemporaryFolder& folder)
{
    const std::filesystem::path file = folder.write("sources/garbage", "these bytes are no package");
    return [file](BarrelOfExamplesBundle& barrel) {
        const OpcPackagePartUri uri{L"/examples/garbage.kvbdl.zip"};
        auto part = barrel.package()
                        .createPart(uri, MIMEType{FileType::contentBundle}, OpcPackageCompressionType::none)
                        .value();
        part.writeContentFromFile(toFilePath(file), OpcPackagePartWriteContentMode::replace).value();
        (void)barrel.package().createRelationship(uri, OpcTargetMode::internal, exampleRelationshipType).value();
    };
}

BarrelChange addExampleWithDamagedPage(const TemporaryFolder& folder, const SampleExample& example)
{
    return addDamagedExample(folder, example, "content/documentation.html");
}

BarrelChange addExampleWithDamagedTexts(const TemporaryFolder& folder, const SampleExample& example)
{
    return addDamagedExample(folder, example, "docProps/core.xml");
}

BarrelChange addExampleWithNamelessPrimaryFile(const TemporaryFolder& folder)
{
    const std::filesystem::path file = folder / "sources/nameless.kvbdl.zip";
    const OpcPackagePartUri uri{L"/primary/%FF.kvsch"}; // a byte that is no character
    ExampleBundle bundle = ExampleBundle::create().value();
    (void)bundle.package().createPart(uri, MIMEType{FileType::unknown}, OpcPackageCompressionType::none).value();
    bundle.setPrimaryFile(uri).value();
    std::filesystem::create_directories(file.parent_path());
    bundle.writeToFile(toFilePath(file)).value();
    return addExampleFile(file);
}

std::string rowsOf(const QAbstractItemModel& list)
{
    std::string rows;
    for (int row = 0; row < list.rowCount(); ++row)
        rows += list.index(row, 0).data().toString().toStdString() + "\n";
    return rows;
}

BarrelOfExamplesBundle openBarrel(const std::filesystem::path& path)
{
    return BarrelOfExamplesBundle::open(toFilePath(path)).value();
}
