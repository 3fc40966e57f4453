#include "tests/windows/all_windows.h"
#include "tests/windows/faults.h"

using Faults::Lines;

namespace {

class Accessibility : public testing::TestWithParam<WindowCase>
{
protected:
    static void SetUpTestSuite() { samples = std::make_unique<Samples>(); }
    static void TearDownTestSuite() { samples.reset(); }

    static inline std::unique_ptr<Samples> samples;
};

std::string nameOf(const testing::TestParamInfo<WindowCase>& info)
{
    return info.param.name;
}

} // namespace

TEST_P(Accessibility, EveryControlHasANameAndTheKeyboardReachesItInReadingOrder)
{
    GetParam().withWindow(*samples, [](QWidget& window) {
        EXPECT_EQ(Faults::namelessWidgets(window), Lines{});
        EXPECT_EQ(Faults::labelsWithoutBuddy(window), Lines{});
        EXPECT_EQ(Faults::sharedMnemonics(window), Lines{});
        EXPECT_EQ(Faults::buttonsForTheMouseAlone(window), Lines{});
        EXPECT_EQ(Faults::tabOrderFaults(window), Lines{});
    });
}

INSTANTIATE_TEST_SUITE_P(Of, Accessibility, testing::ValuesIn(allWindows()), nameOf);
