#include "dump/FltDumpOutput.h"

#include "support/MemoryInput.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <iostream>
#include <sstream>

namespace
{

TEST(FltDumpOutputTest, ADumpGoesIntoStdCout)
{
    EXPECT_EQ(FltDumpOutput::current(), &std::cout);
    StreamCapture const out(std::cout);
    FltDumpOutput::line("one line");
    EXPECT_EQ(out.str(), "one line\n");
}

TEST(FltDumpOutputTest, ARedirectionHoldsAsLongAsItLives)
{
    StreamCapture const out(std::cout);
    std::ostringstream outer;
    std::ostringstream inner;
    {
        FltDumpOutput::Redirect const first(&outer);
        {
            FltDumpOutput::Redirect const second(&inner);
            FltDumpOutput::line("inner");
        }
        FltDumpOutput::line("outer");
    }
    FltDumpOutput::line("after");
    EXPECT_EQ(inner.str(), "inner\n");
    EXPECT_EQ(outer.str(), "outer\n");
    EXPECT_EQ(out.str(), "after\n");
}

TEST(FltDumpOutputTest, WithoutAnOutputNothingIsWritten)
{
    StreamCapture const out(std::cout);
    FltDumpOutput::Redirect const none(nullptr);
    EXPECT_EQ(FltDumpOutput::current(), nullptr);
    FltDumpOutput::line("lost");
    EXPECT_EQ(out.str(), "");
}

/// What a parse writes into std::cout while its dump goes to @p os.
std::string writtenToStdCout(std::ostream* os)
{
    FltWriter flt;
    flt.add("Group").push().add("Object").pop();
    StreamCapture const out(std::cout);
    FltDumpOutput::Redirect const redirect(os);
    MemoryInput input(flt.bytes());
    FltParser parser(&input);
    parser.run();
    destroyRecords(parser);
    parser.setInput(nullptr);
    return out.str();
}

TEST(FltDumpOutputTest, AWholeParseGoesWhereItIsSent)
{
    std::ostringstream elsewhere;
    std::string const usual = writtenToStdCout(&std::cout);
    EXPECT_EQ(writtenToStdCout(&elsewhere), "");
    EXPECT_NE(usual.find("GROUP RECORD"), std::string::npos);
    EXPECT_EQ(elsewhere.str(), usual);
    EXPECT_EQ(writtenToStdCout(nullptr), "");
}

} // namespace
