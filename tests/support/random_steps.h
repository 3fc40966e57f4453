#pragma once

#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <vector>

/// Does things in a random order, the same one for the same seed, and looks after each whether all is well:
///
///     RandomSteps steps{7};
///     steps.may("sort", [&] { proxy.sort(steps.below(3)); });
///     steps.may("reload", [&] { model.setBundle(reopened()); });
///     steps.take(300, [&] { expectTree(proxy); });
///
/// The first failure ends it and tells what was done.
class RandomSteps
{
public:
    explicit RandomSteps(unsigned seed) : m_generator{seed} {}

    /// A number from 0 to `count` - 1.
    int below(std::size_t count) { return static_cast<int>(m_generator() % count); }

    template <class Choices>
    auto& oneOf(Choices& choices)
    {
        return choices[static_cast<typename Choices::size_type>(below(choices.size()))];
    }

    void may(std::string name, std::function<void()> step);

    void take(int count, const std::function<void()>& check);

private:
    struct Step
    {
        std::string name;
        std::function<void()> run;
    };

    std::mt19937 m_generator;
    std::vector<Step> m_steps;
};
