#include "tests/host/core/bundle/bundle_making.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

void addText(ExampleBundle& example, const TemporaryFolder& folder, std::string_view path, std::string_view bytes)
{
    const FilePath2 source = toFilePath2(folder.write("sources/text", bytes));
    const OpcPackagePartUri uri{toString2("content\\" + std::string{path})};
    example.addFile(source, uri, OpcPackageCompressionType::normal).value();
}

std::filesystem::path writeExample(const TemporaryFolder& folder, std::string_view fileName, std::string_view title)
{
    auto example = ExampleBundle::create().value();
    addText(example, folder, "amp.kvsch", "schematic of " + std::string{title});
    addText(example, folder, "sub/amp.txt", std::string(2000, 'x'));
    example.setPrimaryFile(OpcPackagePartUri{L"/content/amp.kvsch"}).value();
    example.setTitle(toString2(title)).value();
    const std::filesystem::path path = folder / fileName;
    std::filesystem::create_directories(path.parent_path());
    example.writeToFile(toFilePath2(path)).value();
    return path;
}

std::vector<std::string> filesBelow(const std::filesystem::path& directory)
{
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{directory}) {
        if (!entry.is_directory())
            files.push_back(entry.path().lexically_relative(directory).generic_string());
    }
    std::ranges::sort(files);
    return files;
}

void expectVerified(const std::filesystem::path& path)
{
    const auto package = OpcPackage::open(toFilePath2(path), OpcPackageOpenFlag::verify);
    EXPECT_TRUE(package.hasValue()) << toStdString(package.error().message());
}
