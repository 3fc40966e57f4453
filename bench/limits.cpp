// bench_limits TASK ARG...: the least that a task can cost, done by hand.
//
//   deflate THREADS FILE...   reads each file and compresses it in memory with libdeflate, level 6
//   stream THREADS FILE...    the same in pieces with isa-l, level 3
//   inflate THREADS ZIP DIR   inflates every entry and writes it below DIR; checks nothing

#include "bench/plain_zip.h"

#include <fcntl.h>
#include <isa-l.h>
#include <libdeflate.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t pieceSize = std::size_t{1} << 20;

std::atomic<std::uint64_t> made;

/// Calls `work` with every number below `count`, on several threads.
template <class MakeWorker>
void spread(unsigned threads, std::size_t count, MakeWorker makeWorker)
{
    std::atomic<std::size_t> next = 0;
    const auto run = [&] {
        auto worker = makeWorker();
        for (std::size_t index = next++; index < count; index = next++)
            worker(index);
    };
    std::vector<std::jthread> running;
    for (unsigned i = 1; i < threads; ++i)
        running.emplace_back(run);
    run();
}

class File
{
public:
    explicit File(const char* path) : m_file{::open(path, O_RDONLY | O_CLOEXEC)} {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { ::close(m_file); }

    /// @return  fewer bytes than there is room for only at the end
    std::size_t read(char* target, std::size_t room) const
    {
        std::size_t done = 0;
        for (ssize_t count = 1; count > 0 && done < room; done += static_cast<std::size_t>(count))
            count = ::read(m_file, target + done, room - done);
        return done;
    }

    std::size_t size() const { return static_cast<std::size_t>(::lseek(m_file, 0, SEEK_END)); }
    void rewind() const { ::lseek(m_file, 0, SEEK_SET); }

private:
    int m_file;
};

void deflateFiles(unsigned threads, char** files, std::size_t count)
{
    spread(threads, count, [=] {
        return [=, compressor = libdeflate_alloc_compressor(6), input = std::string{},
                output = std::string{}](std::size_t index) mutable {
            const File file{files[index]};
            input.resize(file.size());
            file.rewind();
            file.read(input.data(), input.size());
            output.resize(input.size());
            const std::size_t size =
                libdeflate_deflate_compress(compressor, input.data(), input.size(), output.data(), output.size());
            made += size == 0 ? input.size() : size;
        };
    });
}

void streamFile(const char* path, std::string& input, std::string& output, std::string& tables)
{
    const File file{path};
    isal_zstream stream;
    isal_deflate_init(&stream);
    stream.level = 3;
    stream.level_buf = reinterpret_cast<std::uint8_t*>(tables.data());
    stream.level_buf_size = static_cast<std::uint32_t>(tables.size());
    do {
        stream.next_in = reinterpret_cast<std::uint8_t*>(input.data());
        stream.avail_in = static_cast<std::uint32_t>(file.read(input.data(), input.size()));
        stream.end_of_stream = stream.avail_in < input.size() ? 1 : 0;
        do {
            stream.next_out = reinterpret_cast<std::uint8_t*>(output.data());
            stream.avail_out = static_cast<std::uint32_t>(output.size());
            isal_deflate(&stream);
            made += output.size() - stream.avail_out;
        } while (stream.avail_out == 0);
    } while (stream.end_of_stream == 0);
}

void streamFiles(unsigned threads, char** files, std::size_t count)
{
    spread(threads, count, [=] {
        return [=, input = std::string(pieceSize, '\0'), output = std::string(pieceSize, '\0'),
                tables = std::string(ISAL_DEF_LVL3_DEFAULT, '\0')](std::size_t index) mutable {
            streamFile(files[index], input, output, tables);
        };
    });
}

void inflateTo(const fs::path& target, const Bench::PlainZip& archive, const Bench::PlainEntry& entry)
{
    const std::string bytes = archive.read(entry);
    const int file = ::open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    std::string_view rest = bytes;
    for (ssize_t count = 1; count > 0 && !rest.empty(); rest.remove_prefix(static_cast<std::size_t>(count)))
        count = ::write(file, rest.data(), rest.size());
    ::close(file);
    made += bytes.size();
}

void inflateArchive(unsigned threads, const char* path, const fs::path& directory)
{
    const int file = ::open(path, O_RDONLY | O_CLOEXEC);
    const Bench::PlainZip archive{file, 0, static_cast<std::uint64_t>(::lseek(file, 0, SEEK_END))};
    fs::path last;
    for (const Bench::PlainEntry& entry : archive.entries()) {
        fs::path folder = (directory / entry.name).parent_path();
        if (folder == last)
            continue;
        fs::create_directories(folder);
        last = std::move(folder);
    }
    spread(threads, archive.entries().size(), [&] {
        return [&](std::size_t index) {
            const Bench::PlainEntry& entry = archive.entries()[index];
            inflateTo(directory / entry.name, archive, entry);
        };
    });
    ::close(file);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 4)
        return 2;
    const std::string_view task = argv[1];
    const auto threads = static_cast<unsigned>(std::atoi(argv[2]));
    const auto files = static_cast<std::size_t>(argc - 3);
    if (task == "deflate")
        deflateFiles(threads, argv + 3, files);
    else if (task == "stream")
        streamFiles(threads, argv + 3, files);
    else if (task == "inflate" && argc == 5)
        inflateArchive(threads, argv[3], argv[4]);
    else
        return 2;
    std::printf("%llu\n", static_cast<unsigned long long>(made.load()));
    return 0;
}
