#include "host/core/paths/disk/faults.h"
#include "tests/faults/allocation_faults.h"
#include "tests/faults/work.h"
#include "tests/host/core/opc/package_file.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>

#if defined(HOLLERWICK_FAULTS)

using namespace Kelvaris::System;
namespace fs = std::filesystem;

namespace {

constexpr std::size_t largeAllocation = std::size_t{64} << 10;

/// Calls of one kind, each of which can be made to fail.
struct Fault
{
    std::function<void()> count;
    std::function<void(std::uint64_t)> fail;
    std::function<std::uint64_t()> calls;
    std::function<void()> clear;
    int error; ///< what is answered when one fails
};

Fault systemCalls()
{
    return {Disk::Faults::clear, [](std::uint64_t call) { Disk::Faults::fail(call, EIO); }, Disk::Faults::calls,
            Disk::Faults::clear, EIO};
}

Fault allocationsAbove(std::size_t threshold)
{
    return {[=] { AllocationFaults::count(threshold); },
            [=](std::uint64_t call) { AllocationFaults::fail(call, threshold); }, AllocationFaults::calls,
            AllocationFaults::clear, ENOMEM};
}

/// The temporary file of a save, which stays when there was no memory to remember it; the next save removes it.
bool isLeftover(const std::string& name)
{
    return name.ends_with(".saving");
}

void expectSame(const Snapshot& files, const Snapshot& expected)
{
    for (const auto& [name, bytes] : expected) {
        const auto found = files.find(name);
        EXPECT_TRUE(found != files.end() && found->second == bytes) << name << " is not as it must be";
    }
    for (const auto& [name, bytes] : files)
        EXPECT_TRUE(expected.contains(name)) << name << " is left over";
}

/// Runs a work again and again, each time with another call that fails.
class Trial
{
public:
    Trial(const Work& work, Fault fault) : m_work{work}, m_fault{std::move(fault)} {}

    void run()
    {
        rehearse();
        expectSame(outcome(), m_standing.back());
        const std::uint64_t calls = m_calls;
        ASSERT_GT(calls, 0U);
        for (std::uint64_t call = 0; call < calls && !testing::Test::HasFailure(); ++call) {
            SCOPED_TRACE("call " + std::to_string(call) + " of " + std::to_string(calls));
            m_failing = call;
            const Snapshot files = outcome();
            SCOPED_TRACE(m_failure);
            expectSame(files, m_standing.back());
        }
        EXPECT_GT(m_failures, 0) << "no failure was told";
    }

private:
    /// What stands in front of each step, and in the end, when nothing fails.
    void rehearse()
    {
        const TemporaryFolder folder;
        m_work.prepare(folder.path());
        for (const Work::Step& step : m_work.begin(folder.path())) {
            m_standing.push_back(snapshotOf(folder.path()));
            const auto result = step();
            ASSERT_TRUE(result) << toStdString(result.error().message());
        }
        m_standing.push_back(snapshotOf(folder.path()));
    }

    /// @return  the files that are there in the end
    Snapshot outcome()
    {
        const TemporaryFolder folder;
        restore(m_standing.front(), folder.path());
        const auto steps = m_work.begin(folder.path());
        m_failing ? m_fault.fail(*m_failing) : m_fault.count();
        for (std::size_t step = 0; step < steps.size(); ++step) {
            const auto result = steps[step]();
            if (result)
                continue;
            m_fault.clear();
            const std::string where = "step " + std::to_string(step);
            SCOPED_TRACE(where);
            m_failure = where + " failed";
            expectToldAndHarmless(result.error(), snapshotOf(folder.path()), m_standing[step]);
            const auto again = steps[step]();
            EXPECT_TRUE(again) << "tried again: " << toStdString(again.error().message());
            if (!again)
                break;
        }
        m_calls = m_fault.calls();
        m_fault.clear();
        return snapshotOf(folder.path());
    }

    void expectToldAndHarmless(const ErrorCode2& error, Snapshot files, const Snapshot& standing)
    {
        ++m_failures;
        const std::string message = toStdString(error.message());
        m_failure += ": " + message;
        EXPECT_EQ(error.value(), m_fault.error) << message;
        EXPECT_FALSE(message.empty());
        std::erase_if(files, [](const auto& file) { return isLeftover(file.first); });
        expectSame(files, standing);
    }

    const Work& m_work;
    const Fault m_fault;
    std::optional<std::uint64_t> m_failing;
    std::vector<Snapshot> m_standing;
    std::uint64_t m_calls = 0;
    std::string m_failure; ///< the last one
    int m_failures = 0;
};

class SmallWork : public testing::TestWithParam<Work>
{
};

class LargeWork : public testing::TestWithParam<Work>
{
};

std::string nameOf(const testing::TestParamInfo<Work>& info)
{
    return info.param.name;
}

} // namespace

TEST_P(SmallWork, LosesNothingWhicheverCallToTheSystemFails)
{
    Trial{GetParam(), systemCalls()}.run();
}

TEST_P(SmallWork, LosesNothingWhicheverAllocationFails)
{
    Trial{GetParam(), allocationsAbove(0)}.run();
}

TEST_P(LargeWork, LosesNothingWhicheverCallToTheSystemFails)
{
    Trial{GetParam(), systemCalls()}.run();
}

TEST_P(LargeWork, LosesNothingWhicheverLargeAllocationFails)
{
    Trial{GetParam(), allocationsAbove(largeAllocation)}.run();
}

INSTANTIATE_TEST_SUITE_P(Faults, SmallWork, testing::ValuesIn(smallWorks()), nameOf);
INSTANTIATE_TEST_SUITE_P(Faults, LargeWork, testing::ValuesIn(largeWorks()), nameOf);

#endif
