#include "tests/models/package_fixtures.h"

#include "kelvaris/system/io/mime_type.h"
#include "kelvaris/system/qt/text_bridge.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

FilePath2 toPath(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.data(), text.size()};
}

String2 utf8(const QString& text)
{
    return qStringToUTF8(text).value();
}

QString messageOf(const ErrorCode2& error)
{
    return utf8ToQString(error.message()).value();
}

void addContent(ContentBundle& bundle, const PartNames& names)
{
    const TemporaryFolder folder;
    const FilePath2 source = toPath(folder.write("source.txt", "some bytes"));
    for (const wchar_t* const name : names) {
        const auto part = bundle.createContentPartFromFile(source, OpcPackagePartUri{name}, MIMEType{FileType::text},
                                                           OpcPackageCompressionType::normal);
        EXPECT_TRUE(part) << messageOf(part.error()).toStdString();
    }
}

std::shared_ptr<ContentBundle> contentBundle(const PartNames& names)
{
    auto bundle = std::make_shared<ContentBundle>(ContentBundle::create().value());
    addContent(*bundle, names);
    return bundle;
}

std::shared_ptr<ExampleBundle> exampleBundle(const PartNames& names)
{
    auto bundle = std::make_shared<ExampleBundle>(ExampleBundle::create().value());
    addContent(*bundle, names);
    return bundle;
}

std::string compressibleText()
{
    std::string text;
    for (int number = 0; number < 2000; ++number)
        text += std::to_string(number * number) + ' ';
    return text;
}

InspectedEntry savedEntry(ContentBundle& bundle, const TemporaryFolder& folder, std::string_view partName)
{
    const FilePath2 path = toPath(folder / "saved.zip");
    bundle.writeToFile(path).value();
    const auto entries = PackageInspection::open(path)->entries();
    for (const InspectedEntry& entry : *entries) {
        if (entry.partName == partName)
            return entry;
    }
    ADD_FAILURE() << "no part " << partName << " was saved";
    return {};
}

FilePath2 writeExample(const TemporaryFolder& folder, const char* fileName, const QString& title,
                       const PartNames& names)
{
    const auto bundle = exampleBundle(names);
    bundle->setTitle(utf8(title)).value();
    const FilePath2 path = toPath(folder / fileName);
    bundle->writeToFile(path).value();
    return path;
}

std::unique_ptr<BarrelOfExamplesBundle> barrelOf(std::initializer_list<FilePath2> examples)
{
    auto barrel = std::make_unique<BarrelOfExamplesBundle>(BarrelOfExamplesBundle::create().value());
    int number = 0;
    for (const FilePath2& example : examples) {
        const std::wstring name = L"/examples/" + std::to_wstring(number++) + L".zip";
        (void)barrel->addExample(example, OpcPackagePartUri{name.c_str()}).value();
    }
    return barrel;
}
