#include "convert/FltReferenceChain.h"

#include "messages/FltLimits.h"
#include "support/ScratchFolder.h"
#include "support/SmallStack.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <ucontext.h>
#include <vector>

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

/// A coroutine of a host runs on memory that the system takes for no thread's stack.
TEST(FltReferenceChainTest, IsFullWithThirtyThreeFilesWhereNobodyKnowsTheStack)
{
    struct Asking {
        FltReferenceChain chain;
        std::vector<bool> answers;
        ucontext_t outside = {};
        ucontext_t inside = {};
    };
    static Asking* asking = nullptr;
    auto const ask = [] {
        std::vector<std::unique_ptr<FltReferenceChain::Link>> links;
        for (ino_t file = 1; file <= 34; ++file) {
            links.push_back(std::make_unique<FltReferenceChain::Link>(asking->chain,
                                                                      FltReferenceChain::Identity(1, file)));
            asking->answers.push_back(asking->chain.isFull());
        }
        while (!links.empty())
            links.pop_back();
    };
    Asking made;
    asking = &made;
    std::vector<char> stack(std::size_t(256) << 10);
    ASSERT_EQ(::getcontext(&made.inside), 0);
    made.inside.uc_stack.ss_sp = stack.data();
    made.inside.uc_stack.ss_size = stack.size();
    made.inside.uc_link = &made.outside;
    ::makecontext(&made.inside, ask, 0);
    ASSERT_EQ(::swapcontext(&made.outside, &made.inside), 0);
    ASSERT_EQ(made.answers.size(), 34U);
    EXPECT_FALSE(made.answers[31]);
    EXPECT_TRUE(made.answers[32]) << "one more than the deepest that are followed";
    EXPECT_TRUE(made.answers[33]);
    EXPECT_TRUE(made.chain.isEmpty());
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
