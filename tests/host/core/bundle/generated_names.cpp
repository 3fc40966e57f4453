#include "tests/host/core/bundle/generated_names.h"

#include <random>

namespace {

const char* const pieces[] = {
    "amp",   "Filter", " ",  "  ", "%",    "%20",         "%2F",        "%zz",     "#",     "?",       "+",    "&",
    "&amp;", "=",      "'",  "\"", "<",    ">",           "|",          "*",       ":",     ";",       ",",    "!",
    "$",     "@",      "~",  "`",  "^",    "{",           "}",          "[",       "]",     "(",       ")",    "-",
    "_",     ".",      "..", "ä",  "Ö",    "ß",           "é",          "e\u0301", "ñ",     "\u00a0",  "日本", "回路",
    "中",    "한국",   "Ω",  "µ",  "🙂", "👩‍🔬", "\U0001F50C", "\u202E",  "עברית", "العربية", "7",    "0",
};

std::string generatedSegment(std::mt19937& random, std::size_t number)
{
    std::string segment;
    const std::size_t count = 1 + random() % 6;
    for (std::size_t piece = 0; piece < count; ++piece)
        segment += pieces[random() % std::size(pieces)];
    // names of parts must not end in a dot, and no two of ours may be equal
    return segment + std::to_string(number);
}

} // namespace

std::vector<std::string> generatedNames(std::size_t count)
{
    std::mt19937 random{20260301};
    std::vector<std::string> names{std::string(190, 'n') + ".kvsch", "CON", "nul.txt", "[Content_Types].xml",
                                   "_rels/own.rels.txt"};
    while (names.size() < count) {
        std::string name = generatedSegment(random, names.size());
        if (random() % 3 == 0)
            name = generatedSegment(random, names.size()) + '/' + name;
        names.push_back(name + (random() % 2 == 0 ? ".txt" : ""));
    }
    return names;
}
