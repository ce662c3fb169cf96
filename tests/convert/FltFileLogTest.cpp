#include "convert/FltFileLog.h"

#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>
#include <iostream>

namespace
{

/// std::cout's own buffer comes back when the test ends.
class FltFileLogTest : public testing::Test
{
protected:
    StreamCapture const out{std::cout};
    ScratchFolder const folder;
    std::string const path = folder.path("a.log");
};

TEST_F(FltFileLogTest, OutputGoesIntoTheFileWhileTheLogIsOpen)
{
    std::cout << "before";
    FltFileLog log;
    log.open(path.c_str());
    std::cout << "one line" << std::endl;
    log.close();
    EXPECT_EQ(contentsOf(path), "one line\n");
    EXPECT_EQ(out.str(), "before");
}

TEST_F(FltFileLogTest, OutputAfterTheEndIsLost)
{
    {
        FltFileLog log;
        log.open(path.c_str());
        std::cout << "inside";
    }
    std::cout << "outside" << std::endl;
    std::cout.clear();
    EXPECT_EQ(contentsOf(path), "inside");
    EXPECT_EQ(out.str(), "");
}

TEST_F(FltFileLogTest, ASecondCloseDoesNothing)
{
    FltFileLog log;
    log.close();
    log.open(path.c_str());
    std::cout << "x";
    log.close();
    log.close();
    EXPECT_EQ(contentsOf(path), "x");
}

TEST_F(FltFileLogTest, AFileThatCannotBeMadeLosesTheOutputSilently)
{
    StreamCapture const err(std::cerr);
    {
        FltFileLog log;
        log.open(folder.path("no/such/folder/a.log").c_str());
        std::cout << "lost" << std::endl;
    }
    std::cout.clear();
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "");
}

} // namespace
