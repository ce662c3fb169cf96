#include "toolkit/SoRefCounter.h"

#include <gtest/gtest.h>

namespace
{

class Counted final : public SoRefCounter
{
public:
    explicit Counted(bool& gone) : gone(gone) {}
    ~Counted() override { gone = true; }

private:
    bool& gone;
};

} // namespace

TEST(SoRefCounter, beginsWithoutReferences)
{
    bool gone = false;
    Counted const counted(gone);
    EXPECT_EQ(counted.getRefCount(), 0);
}

TEST(SoRefCounter, goesWithItsLastReference)
{
    bool gone = false;
    auto* const counted = new Counted(gone);
    counted->ref();
    counted->ref();
    counted->unref();
    EXPECT_EQ(counted->getRefCount(), 1);
    EXPECT_FALSE(gone);
    counted->unref();
    EXPECT_TRUE(gone);
}

TEST(SoRefCounter, livesOnAfterUnrefNoDelete)
{
    bool gone = false;
    auto* const counted = new Counted(gone);
    counted->ref();
    counted->unrefNoDelete();
    EXPECT_EQ(counted->getRefCount(), 0);
    EXPECT_FALSE(gone);
    delete counted;
}
