// bench_data DIRECTORY: makes the files that the benchmarks work on. The same files each time.

#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "kelvaris/system/io/mime_type.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace {

namespace fs = std::filesystem;

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

constexpr std::size_t mebibyte = std::size_t{1} << 20;

constexpr int smallFiles = 2'000;
constexpr std::size_t smallFileSize = 20'000;
constexpr int largeFiles = 8;
constexpr std::size_t largeFileSize = 64 * mebibyte;
constexpr int examples = 10'000;
constexpr int barrelSizes[] = {200, 10'000, 50'000};
constexpr int packageSizes[] = {15'000, 60'000};
constexpr int gigabyteParts = 16;

/// SplitMix64: the same numbers on every machine.
class Numbers
{
public:
    explicit Numbers(std::uint64_t seed) noexcept : m_state{seed} {}

    std::uint64_t next() noexcept
    {
        m_state += 0x9e3779b97f4a7c15U;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
        return mixed ^ (mixed >> 31U);
    }

    std::uint64_t below(std::uint64_t limit) noexcept { return next() % limit; }

private:
    std::uint64_t m_state;
};

constexpr std::array<std::string_view, 48> words{
    "amplifier", "filter",  "the",        "of",        "a",        "stage",   "gain",      "noise",
    "bandwidth", "current", "voltage",    "source",    "mirror",   "with",    "and",       "load",
    "switching", "buck",    "converter",  "regulator", "feedback", "loop",    "stability", "phase",
    "margin",    "input",   "output",     "offset",    "drift",    "bridge",  "sensor",    "thermal",
    "model",     "corner",  "sweep",      "transient", "response", "ripple",  "inductor",  "capacitor",
    "resistor",  "diode",   "transistor", "is",        "for",      "example", "shows",     "how"};

std::string prose(Numbers& numbers, std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        // the lesser of two, so that some words come more often than others
        const auto word = std::min(numbers.below(words.size()), numbers.below(words.size()));
        text.append(i == 0 ? "" : " ").append(words[word]);
    }
    return text;
}

void addNetlistLine(std::string& text, Numbers& numbers)
{
    constexpr std::string_view kinds = "RCLDMQV";
    text += kinds[numbers.below(kinds.size())];
    text += std::to_string(numbers.below(5'000)) + " net" + std::to_string(numbers.below(900)) + " net" +
            std::to_string(numbers.below(900)) + " value=" + std::to_string(numbers.below(1'000)) + "." +
            std::to_string(numbers.below(100)) + "k x=" + std::to_string(numbers.below(400) * 5) +
            " y=" + std::to_string(numbers.below(400) * 5) + "\n";
}

void addTableLine(std::string& text, Numbers& numbers)
{
    std::array<char, 96> line{};
    const auto step = static_cast<double>(text.size() / 40);
    const int size = std::snprintf(line.data(), line.size(), "%.6e,%.5f,%.5f\n", step * 1e-9,
                                   static_cast<double>(numbers.below(1'000'000)) * 5e-6,
                                   static_cast<double>(numbers.below(100'000)) * 1e-5);
    text.append(line.data(), static_cast<std::size_t>(size));
}

void addPageLine(std::string& text, Numbers& numbers)
{
    text += "<p class=\"note\">" + prose(numbers, 12) + "</p>\n";
}

void addNoise(std::string& text, Numbers& numbers)
{
    const std::uint64_t number = numbers.next();
    text.append(reinterpret_cast<const char*>(&number), sizeof number);
}

enum class Kind { netlist, table, page, noise };

std::string content(Kind kind, std::size_t size, std::uint64_t seed)
{
    constexpr std::array add{addNetlistLine, addTableLine, addPageLine, addNoise};
    Numbers numbers{seed};
    std::string text;
    text.reserve(size + 200);
    while (text.size() < size)
        add[static_cast<std::size_t>(kind)](text, numbers);
    text.resize(size);
    return text;
}

void write(const fs::path& path, std::string_view bytes)
{
    fs::create_directories(path.parent_path());
    std::ofstream file{path, std::ios::binary};
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

String2 text(const std::string& utf8)
{
    String2 result;
    result.assign(reinterpret_cast<const char8_t*>(utf8.data()), utf8.size());
    return result;
}

FilePath2 filePath(const fs::path& path)
{
    return FilePath2{text(path.string())};
}

OpcPackagePartUri partUri(const std::string& path)
{
    return OpcPackagePartUri{filePath(path)};
}

std::string padded(int number, int width)
{
    std::string digits = std::to_string(number);
    return digits.insert(0, static_cast<std::size_t>(std::max(0, width - static_cast<int>(digits.size()))), '0');
}

/// A design's usual mix, half of it netlists; one file in twenty is a picture, which does not shrink.
void makeSmallFiles(const fs::path& directory)
{
    for (int i = 0; i < smallFiles; ++i) {
        const Kind kind = i % 20 == 19 ? Kind::noise
                          : i % 2 == 0 ? Kind::netlist
                          : i % 4 == 1 ? Kind::table
                                       : Kind::page;
        const std::size_t size = smallFileSize / 2 + static_cast<std::size_t>(i * 7919 % 20'001);
        const std::string folder = i == 0 ? "" : "d" + padded(i % 40, 2);
        write(directory / folder / padded(i, 4), content(kind, size, static_cast<std::uint64_t>(i)));
    }
}

/// Half of the bytes do not shrink: three files, and half of each of two others.
void makeLargeFiles(const fs::path& directory)
{
    for (int i = 0; i < largeFiles; ++i) {
        const auto seed = static_cast<std::uint64_t>(1'000'000 + i);
        std::string bytes;
        if (i < 3)
            bytes = content(i == 1 ? Kind::table : Kind::netlist, largeFileSize, seed);
        else if (i < 5)
            bytes = content(Kind::page, largeFileSize / 2, seed) + content(Kind::noise, largeFileSize / 2, seed);
        else
            bytes = content(Kind::noise, largeFileSize, seed);
        write(directory / ("large" + std::to_string(i)), bytes);
    }
}

/// @param design  the name of its design
void makeExample(const fs::path& file, const fs::path& scratch, int number, const std::string& design)
{
    constexpr std::array makers{"Acme Semiconductors", "Northwind Devices", "Contoso Power", "Fabrikam"};
    const auto seed = static_cast<std::uint64_t>(2'000'000 + number);
    Numbers numbers{seed};
    write(scratch / design, content(Kind::netlist, 4'000, seed));
    write(scratch / "documentation.html", content(Kind::page, 1'500, seed));
    ExampleBundle bundle = ExampleBundle::create().value();
    for (const std::string& name : {design, std::string{"documentation.html"}}) {
        const auto uri = partUri("content/" + name);
        (void)bundle.addFile(filePath(scratch / name), uri, OpcPackageCompressionType::normal).value();
    }
    bundle.setPrimaryFile(partUri("content/" + design)).value();
    bundle.setTitle(text(prose(numbers, 4) + " " + std::to_string(number))).value();
    bundle.setDescription(text(prose(numbers, 16))).value();
    bundle.setManufacturer(text(makers[numbers.below(makers.size())])).value();
    StringVector2 keywords;
    for (int i = 0; i < 3; ++i)
        keywords.push_back(text(prose(numbers, 1))).value();
    bundle.setKeywords(keywords).value();
    bundle.writeToFile(filePath(file)).value();
}

enum class Naming { alike, each };

void makeExamples(const fs::path& directory, Naming naming)
{
    const fs::path scratch = directory.parent_path() / "scratch";
    fs::create_directories(directory);
    for (int i = 0; i < examples; ++i) {
        const std::string design = naming == Naming::alike ? "design.kvsch" : "design-" + padded(i, 4) + ".kvsch";
        makeExample(directory / padded(i, 4), scratch, i, design);
    }
    fs::remove_all(scratch);
}

void makeBarrel(const fs::path& file, const fs::path& from, int size)
{
    BarrelOfExamplesBundle barrel = BarrelOfExamplesBundle::create().value();
    for (int i = 0; i < size; ++i) {
        const auto uri = partUri("examples/" + padded(i, 5) + ".kvbdl.zip");
        (void)barrel.addExample(filePath(from / padded(i % examples, 4)), uri).value();
    }
    barrel.writeToFile(filePath(file)).value();
}

void makeManyParts(const fs::path& directory, int size)
{
    const fs::path file = directory / "part";
    write(file, "a part");
    ContentBundle bundle = ContentBundle::create().value();
    const MIMEType type{text("text/plain")};
    for (int i = 0; i < size; ++i) {
        const auto uri = partUri("content/d" + padded(i % 300, 3) + "/" + padded(i, 5) + ".txt");
        (void)bundle.createContentPartFromFile(filePath(file), uri, type, OpcPackageCompressionType::none).value();
    }
    bundle.writeToFile(filePath(directory / ("parts-" + std::to_string(size) + ".zip"))).value();
    fs::remove(file);
}

void makeGigabyte(const fs::path& directory)
{
    ContentBundle bundle = ContentBundle::create().value();
    bundle.setTitle(text("before")).value();
    const MIMEType type{text("application/octet-stream")};
    for (int i = 0; i < gigabyteParts; ++i) {
        const auto uri = partUri("content/" + std::to_string(i) + ".bin");
        const fs::path file = directory / "large" / ("large" + std::to_string(5 + i % 3));
        (void)bundle.createContentPartFromFile(filePath(file), uri, type, OpcPackageCompressionType::none).value();
    }
    bundle.writeToFile(filePath(directory / "gigabyte.zip")).value();
}

void makeAll(const fs::path& directory)
{
    makeSmallFiles(directory / "small");
    makeLargeFiles(directory / "large");
    makeExamples(directory / "e", Naming::alike);
    for (const int size : barrelSizes)
        makeBarrel(directory / ("barrel-" + std::to_string(size) + ".kvexs"), directory / "e", size);
    makeExamples(directory / "n", Naming::each);
    makeBarrel(directory / "barrel-of-names.kvexs", directory / "n", examples);
    for (const int size : packageSizes)
        makeManyParts(directory, size);
    makeGigabyte(directory);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    try {
        makeAll(argv[1]);
        return 0;
    } catch (const bad_expected_access<ErrorCode2>& failure) {
        const auto message = failure.error().message();
        std::fprintf(stderr, "%.*s\n", static_cast<int>(message.length()),
                     reinterpret_cast<const char*>(message.data()));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
    }
    return 1;
}
