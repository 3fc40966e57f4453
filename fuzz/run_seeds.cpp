// Runs a fuzz target once on every file that is named, or that lies in a directory that is named: the main function
// where there is no libFuzzer.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerInitialize(int* count, char*** words) __attribute__((weak));

namespace {

namespace fs = std::filesystem;

void add(std::vector<fs::path>& files, const fs::path& path)
{
    if (!fs::is_directory(path)) {
        files.push_back(path);
        return;
    }
    for (const auto& entry : fs::recursive_directory_iterator{path}) {
        if (entry.is_regular_file())
            files.push_back(entry.path());
    }
}

void run(const fs::path& path)
{
    std::ifstream file{path, std::ios::binary};
    if (!file)
        throw std::runtime_error{"cannot read " + path.string()};
    const std::string bytes{std::istreambuf_iterator<char>{file}, {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int count, char** words)
{
    try {
        if (LLVMFuzzerInitialize != nullptr)
            LLVMFuzzerInitialize(&count, &words);
        std::vector<fs::path> files;
        std::for_each(words + 1, words + count, [&files](const char* word) { add(files, word); });
        for (const fs::path& file : files)
            run(file);
        std::printf("%zu seeds\n", files.size());
        return files.empty() ? 1 : 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
