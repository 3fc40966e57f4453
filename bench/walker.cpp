#include "bench/walker.h"

#include "bench/plain_zip.h"

#include <fcntl.h>
#include <unistd.h>

#include <string_view>
#include <vector>

namespace Bench {

namespace {

std::string between(std::string_view text, std::string_view open, std::string_view close)
{
    const std::size_t begin = text.find(open);
    if (begin == std::string_view::npos)
        return {};
    const std::size_t end = text.find(close, begin);
    return std::string{text.substr(begin + open.size(), end - begin - open.size())};
}

WalkedExample walkExample(PlainZip& example)
{
    WalkedExample texts;
    for (const PlainEntry& entry : example.entries()) {
        if (entry.name == "docProps/core.xml") {
            const std::string core = example.read(entry);
            texts.title = between(core, "<dc:title>", "</dc:title>");
            texts.description = between(core, "<dc:description>", "</dc:description>");
            texts.keywords = between(core, "<cp:keywords>", "</cp:keywords>");
        } else if (entry.name == "bundle.xml") {
            texts.manufacturer = between(example.read(entry), "<manufacturer>", "</manufacturer>");
        } else if (entry.name == "[Content_Types].xml" || entry.name == "_rels/.rels") {
            // what says which part is which; the names above are only custom
            (void)example.read(entry);
        }
    }
    return texts;
}

} // namespace

std::size_t walkBarrel(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return 0;
    std::vector<WalkedExample> examples;
    PlainZip barrel{file, 0, static_cast<std::uint64_t>(::lseek(file, 0, SEEK_END))};
    (void)barrel.read("[Content_Types].xml");
    const std::string relationships = barrel.read("_rels/.rels");
    for (const PlainEntry& entry : barrel.entries()) {
        if (!entry.name.starts_with("examples/"))
            continue;
        PlainZip example{file, barrel.dataOffset(entry), entry.size};
        examples.push_back(walkExample(example));
    }
    ::close(file);
    return examples.size();
}

} // namespace Bench
