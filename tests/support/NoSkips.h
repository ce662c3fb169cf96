#pragma once

#include <cstdlib>
#include <gtest/gtest.h>

/// Takes skipped tests for failed ones where VELLOREADER_NO_SKIPS is set: a machine that lacks what a test
/// needs passes over it, the one that decides about a change doesn't.
class NoSkips : public testing::EmptyTestEventListener
{
public:
    static void listenIfAsked()
    {
        if (std::getenv("VELLOREADER_NO_SKIPS") != nullptr)
            testing::UnitTest::GetInstance()->listeners().Append(new NoSkips);
    }

private:
    void OnTestEnd(testing::TestInfo const& test) override
    {
        if (test.result()->Skipped())
            ADD_FAILURE() << "VELLOREADER_NO_SKIPS is set, and this test was skipped";
    }
};
