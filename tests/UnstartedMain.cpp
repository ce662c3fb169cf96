#include "support/NoSkips.h"

#include <Inventor/SoDB.h>
#include <gtest/gtest.h>

namespace
{

/// Fails where a test has started the toolkit.
class Unstarted : public testing::EmptyTestEventListener
{
    void OnTestEnd(testing::TestInfo const& /*test*/) override { EXPECT_FALSE(SoDB::isInitialized()); }
};

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    NoSkips::listenIfAsked();
    testing::UnitTest::GetInstance()->listeners().Append(new Unstarted);
    return RUN_ALL_TESTS();
}
