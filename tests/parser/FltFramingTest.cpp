#include "parser/FltFraming.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

using Fault = FltFraming::Fault;

std::string record(int opcode, std::size_t length)
{
    std::string bytes(length, 'x');
    bytes[0] = static_cast<char>(opcode >> 8);
    bytes[1] = static_cast<char>(opcode);
    bytes[2] = static_cast<char>(length >> 8);
    bytes[3] = static_cast<char>(length);
    return bytes;
}

/// "opcode@offset+length" of every record, then the fault and where it is.
std::string framesOf(std::string const& bytes)
{
    FltFraming framing(bytes.data(), bytes.size());
    std::string text;
    while (framing.next()) {
        EXPECT_EQ(framing.data(), bytes.data() + framing.getOffset());
        text += std::to_string(framing.getOpcode()) + "@" + std::to_string(framing.getOffset()) + "+" +
                std::to_string(framing.getLength()) + " ";
    }
    EXPECT_FALSE(framing.next()) << "the end stays the end";
    if (framing.getFault() != Fault::none)
        text += framing.faultText() + framing.costText();
    return text;
}

TEST(FltFramingTest, NoBytesAreNoRecords)
{
    EXPECT_EQ(framesOf(""), "");
}

TEST(FltFramingTest, EachLengthLeadsToTheNextRecord)
{
    EXPECT_EQ(framesOf(record(1, 164) + record(0x8002, 4) + record(31, 300)),
              "1@0+164 32770@164+4 31@168+300 ");
}

TEST(FltFramingTest, LengthsOfOneToThreeLeadOnByThatMuch)
{
    // The second record begins inside the first one, the third inside the second.
    EXPECT_EQ(framesOf(std::string("\0\6\0\2\0\1\0\4", 8)),
              "6@0+2 2@2+1 A record ends after the file does: the rest of the file, 5 bytes from byte "
              "offset 3 on, is left out");
}

TEST(FltFramingTest, ALengthOfZeroEndsTheRecords)
{
    EXPECT_EQ(framesOf(record(1, 8) + std::string("\0\5\0\0rest", 8)),
              "1@0+8 A record has the length zero: the rest of the file, 8 bytes from byte offset 8 on, is "
              "left out");
}

TEST(FltFramingTest, ALengthPastTheEndEndsTheRecords)
{
    EXPECT_EQ(framesOf(record(1, 8) + record(31, 12).substr(0, 11)),
              "1@0+8 A record ends after the file does: the rest of the file, 11 bytes from byte "
              "offset 8 "
              "on, is left out");
}

TEST(FltFramingTest, OneToThreeBytesAtTheEndAreNoRecord)
{
    for (std::size_t rest : {1U, 2U, 3U})
        EXPECT_EQ(framesOf(record(1, 8) + std::string(rest, '\0')),
                  "1@0+8 The file ends inside the first four bytes of a record: the rest of the file, " +
                      std::to_string(rest) + " bytes from byte offset 8 on, is left out");
}

} // namespace
