#pragma once

/// Functions of the tests' own, registered while this lives:
///
///     test_join       1 to 3 arguments; one result for each argument, its texts joined with "+"
///     test_fail       none; fails as a handler that throws does: a line in the log and FUNC_FAILED
///     test_results    none; two results, the second with a line feed
class TestFunctions
{
public:
    TestFunctions();
    ~TestFunctions();

    TestFunctions(const TestFunctions&) = delete;
    TestFunctions& operator=(const TestFunctions&) = delete;

private:
    struct Registered;
    Registered* m_registered;
};
