#include "records/FltRecordControl.h"

#include "messages/FltWarningMessageConsole.h"
#include "support/RecordText.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

namespace
{

std::string const control = "CONTROL_RECORD";

TEST(FltRecordControlTest, PushLevelOfLength4DumpsFourLines)
{
    EXPECT_EQ(dumpOf(*decodeLast(FltWriter().push())),
              "\n PUSH LEVEL RECORD \n  (CONTROL_RECORD)\n-- Opcode: 10  Length: 4 --\n");
}

TEST(FltRecordControlTest, EachControlRecordHasItsTitle)
{
    auto const dump = [](char const* record) { return dumpOf(*decodeLast(FltWriter().add(record))); };
    EXPECT_EQ(dump("PopLevel"), frame("\n POP LEVEL RECORD ", control, 11, 4));
    EXPECT_EQ(dump("PushSubface"), frame("\n PUSH SUBFACE RECORD ", control, 19, 4));
    EXPECT_EQ(dump("PopSubface"), frame("\n POP SUBFACE RECORD ", control, 20, 4));
}

TEST(FltRecordControlTest, PushLevelOfLength8LeavesAMessageAtLevel1ThatIsNotPrinted)
{
    auto const& messages = FltWarningMessageConsole::setOfMessages;
    std::size_t const before = messages.size();
    StreamCapture const printed(std::cerr);
    auto const record = decodeLastAs<FltRecordPushLevel>(FltWriter().push().resizeLast(8));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->getLength(), 8U);
    ASSERT_EQ(messages.size(), before + 1);
    EXPECT_STREQ(messages.back().message, "WARNING ! this ControlRecord hasn t the correct length !");
    EXPECT_EQ(messages.back().level, 1);
    EXPECT_EQ(printed.str(), "");
}

TEST(FltRecordControlTest, PushExtensionDecodesItsVertexReferenceAndLeavesTheLengthMessage)
{
    std::size_t const before = FltWarningMessageConsole::setOfMessages.size();
    auto const record = decodeLastAs<FltRecordPushExtension>(
        FltWriter().add("PushExtension", {{"vertexReferenceIndex", 65535}}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->vertexReferenceIndex, 65535);
    EXPECT_EQ(dumpOf(*record),
              frame("\n PUSH EXTENSION RECORD ", control, 21, 24) + "vertexReferenceIndex: 65535\n");
    EXPECT_EQ(FltWarningMessageConsole::setOfMessages.size(), before + 1);
}

TEST(FltRecordControlTest, PopExtensionHasItsTitle)
{
    EXPECT_EQ(dumpOf(*decodeLast(FltWriter().add("PopExtension"))),
              frame("\n POP EXTENSION RECORD ", control, 22, 24) + "vertexReferenceIndex: 0\n");
}

TEST(FltRecordControlTest, InstanceRecordsDecodeSignedNumbersAndMakeNoLengthTest)
{
    std::size_t const before = FltWarningMessageConsole::setOfMessages.size();
    auto const reference = decodeLastAs<FltRecordInstanceReference>(
        FltWriter().add("InstanceReference", {{"spare", 7}, {"instanceDefinitionNumber", -5}}));
    ASSERT_NE(reference, nullptr);
    EXPECT_EQ(reference->spare, 7);
    EXPECT_EQ(reference->instanceDefinitionNumber, -5);
    EXPECT_EQ(dumpOf(*reference), frame("\n INSTANCE REFERENCE RECORD ", control, 61, 8) +
                                      "spare: 7\ninstanceDefinitionNumber: -5\n");
    EXPECT_EQ(dumpOf(*decodeLast(FltWriter().add("InstanceDefinition", {{"instanceDefinitionNumber", 12}}))),
              frame("\n INSTANCE DEFINITION RECORD ", control, 62, 8) +
                  "spare: 0\ninstanceDefinitionNumber: 12\n");
    EXPECT_EQ(FltWarningMessageConsole::setOfMessages.size(), before);
}

} // namespace
