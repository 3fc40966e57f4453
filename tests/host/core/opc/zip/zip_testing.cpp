#include "tests/host/core/opc/zip/zip_testing.h"

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;

Expected<Zip::ArchivePtr, ErrorCode2> openBytes(std::string_view bytes)
{
    const auto view = bytesOf(bytes);
    return Zip::Archive::open(Zip::memorySource({view.begin(), view.end()}, "test.zip"));
}

Zip::ArchivePtr openFile(const std::filesystem::path& path)
{
    return Zip::Archive::open(Zip::openFileSource(filePath(path)).value()).value();
}

Expected<std::string, ErrorCode2> streamed(const Zip::Archive& archive, std::size_t index)
{
    std::string text;
    auto result = archive.stream(index, [&](std::span<const std::byte> bytes) {
        text += textOf(bytes);
        return Expected<void, ErrorCode2>{};
    });
    if (!result)
        return result.error();
    return text;
}

std::string verdict(std::string_view bytes)
{
    const auto archive = openBytes(bytes);
    if (!archive)
        return outcome(archive);
    for (std::size_t i = 0; i < (*archive)->entries().size(); ++i) {
        const auto read = (*archive)->read(i);
        const auto stream = streamed(*openBytes(bytes).value(), i);
        EXPECT_EQ(outcome(read), outcome(stream));
        if (!read)
            return outcome(read);
        EXPECT_TRUE(textOf(*read) == *stream);
    }
    return "ok";
}

std::vector<std::string> contents(const Zip::Archive& archive)
{
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < archive.entries().size(); ++i)
        texts.push_back(std::string{archive.entries()[i].name} + "=" + textOf(archive.read(i).value()));
    return texts;
}
