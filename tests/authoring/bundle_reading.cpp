#include "tests/authoring/bundle_reading.h"

#include <algorithm>
#include <cstddef>

using namespace Kelvaris::System;

std::string text(const String2& text)
{
    return {reinterpret_cast<const char*>(text.data()), text.length()};
}

std::vector<std::string> texts(const StringVector2& texts)
{
    std::vector<std::string> result;
    for (std::size_t index = 0; index < texts.size(); ++index)
        result.push_back(text(texts.data()[index]));
    return result;
}

std::vector<std::string> partNames(const IO::OpcPackaging::OpcPackage& package, const std::string& folder)
{
    std::vector<std::string> names;
    const auto parts = package.parts().value();
    for (auto part = parts.begin(); part != IO::OpcPackaging::OpcPackagePartCollectionIterator::Sentinel{}; ++part) {
        std::string name = text((*part).uri().value().toString().value());
        if (name.starts_with(folder))
            names.push_back(std::move(name));
    }
    return names;
}

std::vector<std::string> filesBelow(const std::filesystem::path& directory)
{
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{directory}) {
        if (entry.is_regular_file())
            files.push_back(entry.path().lexically_relative(directory).string());
    }
    std::ranges::sort(files);
    return files;
}
