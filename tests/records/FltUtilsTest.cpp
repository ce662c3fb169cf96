#include "records/FltUtils.h"

#include "writer/FltWriter.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace
{

/// Bytes and a cursor upon them.
struct Reader {
    explicit Reader(std::string text) : bytes(std::move(text)), cursor(&bytes[0]) {}
    std::ptrdiff_t moved() { return cursor - &bytes[0]; }

    std::string bytes;
    char* cursor;
};

TEST(FltUtilsTest, BytesAreReadSignedAndUnsigned)
{
    Reader reader("\xff\xff\x80\x7f");
    std::int8_t number = 0;
    std::uint8_t unsignedNumber = 0;
    FltUtils::getInt8ValueThenDecal(&number, reader.cursor);
    FltUtils::getUInt8ValueThenDecal(&unsignedNumber, reader.cursor);
    EXPECT_EQ(number, -1);
    EXPECT_EQ(unsignedNumber, 255);
    FltUtils::getInt8ValueThenDecal(&number, reader.cursor);
    FltUtils::getUInt8ValueThenDecal(&unsignedNumber, reader.cursor);
    EXPECT_EQ(number, -128);
    EXPECT_EQ(unsignedNumber, 127);
    EXPECT_EQ(reader.moved(), 4);
}

TEST(FltUtilsTest, WordsOf16BitsAreBigEndian)
{
    Reader reader("\x01\x02\xff\xfe\xff\xfe");
    std::int16_t number = 0;
    std::uint16_t unsignedNumber = 0;
    FltUtils::getInt16ValueThenDecal(&number, reader.cursor);
    EXPECT_EQ(number, 0x0102);
    FltUtils::getInt16ValueThenDecal(&number, reader.cursor);
    EXPECT_EQ(number, -2);
    FltUtils::getUInt16ValueThenDecal(&unsignedNumber, reader.cursor);
    EXPECT_EQ(unsignedNumber, 0xfffe);
    EXPECT_EQ(reader.moved(), 6);
}

TEST(FltUtilsTest, WordsOf32BitsAreBigEndian)
{
    Reader reader("\x01\x02\x03\x04\x80\x01\x02\x03\xff\xff\xff\xfe");
    std::int32_t number = 0;
    std::uint32_t unsignedNumber = 0;
    FltUtils::getInt32ValueThenDecal(&number, reader.cursor);
    EXPECT_EQ(number, 0x01020304);
    FltUtils::getUInt32ValueThenDecal(&unsignedNumber, reader.cursor);
    EXPECT_EQ(unsignedNumber, 0x80010203U);
    FltUtils::getInt32ValueThenDecal(&number, reader.cursor);
    EXPECT_EQ(number, -2);
    EXPECT_EQ(reader.moved(), 12);
}

TEST(FltUtilsTest, FloatsKeepEveryBit)
{
    for (std::uint32_t word :
         {0x3f800000U, 0x80000000U, 0x00000001U, 0x7f800000U, 0xffc12345U, 0x7f812345U}) {
        Reader reader(FltWriter::big32(word));
        float value = 0;
        FltUtils::getFloat32ValueThenDecal(&value, reader.cursor);
        std::uint32_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        EXPECT_EQ(bits, word);
        EXPECT_EQ(reader.moved(), 4);
    }
}

TEST(FltUtilsTest, DoublesKeepEveryBit)
{
    std::uint64_t const words[] = {0x3ff0000000000000U, 0x8000000000000000U, 0x0000000000000001U,
                                   0xfff0000000000000U, 0x7ff123456789abcdU, 0x0123456789abcdefU};
    for (std::uint64_t word : words) {
        Reader reader(FltWriter::big32(static_cast<long>(word >> 32)) +
                      FltWriter::big32(static_cast<long>(word & 0xffffffffU)));
        double value = 0;
        FltUtils::getDouble64ValueThenDecal(&value, reader.cursor);
        std::uint64_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        EXPECT_EQ(bits, word);
        EXPECT_EQ(reader.moved(), 8);
    }
}

TEST(FltUtilsTest, BytesAreCopiedAsTheyStand)
{
    Reader reader(std::string("a\0\xff"
                              "z",
                              4));
    char copy[3] = {};
    FltUtils::getBytesThenDecal(copy, 3, reader.cursor);
    EXPECT_EQ(std::string(copy, 3), std::string("a\0\xff", 3));
    EXPECT_EQ(reader.moved(), 3);
}

TEST(FltUtilsTest, RestAsTextTakesWhatStandsBehindTheFirstFourBytes)
{
    EXPECT_EQ(std::string(FltUtils::restAsText("1234ab\0cd", 9).get(), 6), std::string("ab\0cd\0", 6));
    for (unsigned length : {0U, 1U, 3U, 4U})
        EXPECT_STREQ(FltUtils::restAsText("1234abcd", length).get(), "") << length;
}

TEST(FltUtilsTest, WordsAtAPlaceAreUnsigned)
{
    EXPECT_EQ(FltUtils::word16At("\xff\xfe"), 0xfffe);
    EXPECT_EQ(FltUtils::word32At("\xff\xfe\xfd\xfc"), 0xfffefdfcU);
    EXPECT_EQ(FltUtils::word32At("\x01\x80\x81\x82"), 0x01808182U);
}

} // namespace
