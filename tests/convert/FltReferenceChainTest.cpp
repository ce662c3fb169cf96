#include "convert/FltReferenceChain.h"

#include "messages/FltLimits.h"
#include "support/ScratchFolder.h"
#include "support/SmallStack.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>

namespace
{

TEST(FltReferenceChainTest, AllNamesOfAFileHaveItsIdentity)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    std::ofstream(path) << "a";
    std::ofstream(folder.path("b.flt")) << "b";
    std::filesystem::create_symlink(path, folder.path("link.flt"));
    auto const identity = FltReferenceChain::identityOf(path.c_str());
    ASSERT_TRUE(identity.has_value());
    EXPECT_EQ(FltReferenceChain::identityOf(folder.path("./a.flt").c_str()), identity);
    EXPECT_EQ(FltReferenceChain::identityOf(folder.path("link.flt").c_str()), identity);
    EXPECT_NE(FltReferenceChain::identityOf(folder.path("b.flt").c_str()), identity);
    EXPECT_EQ(FltReferenceChain::identityOf(folder.path("missing.flt").c_str()), std::nullopt);
}

TEST(FltReferenceChainTest, AFileIsPartOfTheChainForAsLongAsItsLinkLives)
{
    FltReferenceChain chain;
    EXPECT_TRUE(chain.isEmpty());
    {
        FltReferenceChain::Link const top(chain, {1, 1});
        {
            FltReferenceChain::Link const nested(chain, {1, 2});
            EXPECT_TRUE(chain.holds({1, 1}));
            EXPECT_TRUE(chain.holds({1, 2}));
            EXPECT_FALSE(chain.holds({2, 1}));
        }
        EXPECT_FALSE(chain.holds({1, 2}));
        EXPECT_TRUE(chain.holds({1, 1}));
        EXPECT_FALSE(chain.isEmpty());
    }
    EXPECT_TRUE(chain.isEmpty());
}

TEST(FltReferenceChainTest, IsFullWhereLittleOfTheStackIsLeft)
{
    FltReferenceChain const chain;
    EXPECT_FALSE(chain.isFull());
    runOnStackOf(2 * FltLimits::stackForAFile, [&] { EXPECT_FALSE(chain.isFull()); });
    runOnStackOf(FltLimits::stackForAFile, [&] { EXPECT_TRUE(chain.isFull()); });
}

TEST(FltReferenceChainTest, OnlySoManyFilesAreOpenedOnAllWaysTogether)
{
    FltReferenceChain chain;
    for (int i = 0; i < FltLimits::externalReferences; ++i)
        ASSERT_TRUE(chain.open()) << i;
    EXPECT_FALSE(chain.open());
    EXPECT_FALSE(chain.open());
}

} // namespace
