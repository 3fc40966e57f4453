#include "host/shell/close_names.h"

#include <algorithm>
#include <numeric>

namespace HostShell {

namespace {

constexpr std::size_t mostNames = 3;

// The number of letters to insert, drop or replace that turn one text into the other.
std::size_t editDistance(const std::string& left, const std::string& right)
{
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t replaced = diagonal + (left[i] == right[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

bool holdsTheOther(const std::string& left, const std::string& right)
{
    constexpr std::size_t shortest = 4; // shorter words occur in most names
    const auto& [inner, outer] = std::minmax(left, right, [](auto& a, auto& b) { return a.size() < b.size(); });
    return inner.size() >= shortest && outer.find(inner) != std::string::npos;
}

bool isClose(const std::string& left, const std::string& right)
{
    return editDistance(left, right) <= 1 + left.size() / 4 || holdsTheOther(left, right);
}

} // namespace

std::vector<std::string> closeNames(const std::string& name, const std::vector<std::string>& names)
{
    std::vector<std::string> close;
    std::copy_if(names.begin(), names.end(), std::back_inserter(close),
                 [&](const auto& candidate) { return isClose(name, candidate); });
    std::stable_sort(close.begin(), close.end(), [&](const auto& left, const auto& right) {
        return editDistance(name, left) < editDistance(name, right);
    });
    close.resize(std::min(close.size(), mostNames));
    return close;
}

} // namespace HostShell
