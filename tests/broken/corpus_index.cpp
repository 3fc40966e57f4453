#include "tests/broken/corpus_index.h"

#include "tests/support/split.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

bool CorpusCase::opens() const
{
    return contains(verdicts, "ok") || contains(verdicts, "warn");
}

std::vector<CorpusCase> readCorpusIndex()
{
    const std::filesystem::path directory = HOLLERWICK_BROKEN_PACKAGES;
    std::ifstream index{directory / "INDEX.tsv"};
    std::vector<CorpusCase> cases;
    std::string line;
    std::getline(index, line);
    while (std::getline(index, line)) {
        const auto fields = split(line, '\t');
        cases.push_back({directory / fields.at(0), split(fields.at(1), ' '), fields.at(2), split(fields.at(3), ' '),
                         split(fields.at(4), ' '), fields.at(5)});
    }
    EXPECT_GE(cases.size(), 150U);
    return cases;
}

bool contains(const std::vector<std::string>& words, const std::string& word)
{
    return std::ranges::find(words, word) != words.end();
}
