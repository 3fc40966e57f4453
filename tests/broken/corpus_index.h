#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// One line of the index of tests/data/broken: a file and what must happen to it.
struct CorpusCase
{
    std::filesystem::path path;
    std::vector<std::string> verdicts; ///< "ok", "warn", codes
    std::string parts;
    std::vector<std::string> unpacked; ///< numbers of files, codes behind "!"
    std::vector<std::string> kinds;    ///< "example", "scriptable!b1"
    std::string what;

    bool opens() const;
    std::string name() const { return path.filename().string(); }
};

std::vector<CorpusCase> readCorpusIndex();

bool contains(const std::vector<std::string>& words, const std::string& word);
