#include "tests/support/random_steps.h"

#include <gtest/gtest.h>

#include <utility>

void RandomSteps::may(std::string name, std::function<void()> step)
{
    m_steps.push_back({std::move(name), std::move(step)});
}

void RandomSteps::take(int count, const std::function<void()>& check)
{
    std::string done;
    for (int number = 0; number < count; ++number) {
        const Step& step = oneOf(m_steps);
        done += " " + step.name;
        const testing::ScopedTrace trace{__FILE__, __LINE__, "done:" + done};
        step.run();
        check();
        if (testing::Test::HasFailure())
            return;
    }
}
