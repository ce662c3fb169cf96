#include "dump/FltDump.h"

#include "dump/FltDumpBuffer.h"
#include "support/StreamCapture.h"

#include <cmath>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <iomanip>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

namespace
{

using Action = std::function<void(std::ostream&)>;

std::string written(Action const& action)
{
    std::ostringstream os;
    action(os);
    return os.str();
}

/// A locale that groups digits and has a comma for the point.
class Grouping : public std::numpunct<char>
{
protected:
    char do_thousands_sep() const override { return '.'; }
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

std::vector<double> manyDoubles()
{
    using Limits = std::numeric_limits<double>;
    std::vector<double> values = {0.0,
                                  -0.0,
                                  1.0,
                                  -1.0,
                                  0.1,
                                  1.0 / 3,
                                  2.0 / 3,
                                  123456.7,
                                  999999.4,
                                  999999.5,
                                  999999.6,
                                  1234567.0,
                                  1e5,
                                  1e6,
                                  1e7,
                                  1e-4,
                                  1e-5,
                                  0.00012345675,
                                  0.000099999949,
                                  1e300,
                                  -1e300,
                                  1e-300,
                                  100000.5,
                                  0.5,
                                  2.5,
                                  1.0000005,
                                  1.0000015,
                                  Limits::infinity(),
                                  -Limits::infinity(),
                                  Limits::quiet_NaN(),
                                  -Limits::quiet_NaN(),
                                  std::nan("1"),
                                  Limits::max(),
                                  Limits::lowest(),
                                  Limits::min(),
                                  Limits::denorm_min(),
                                  -Limits::denorm_min(),
                                  Limits::epsilon(),
                                  static_cast<double>(0.1F),
                                  static_cast<double>(std::numeric_limits<float>::max()),
                                  static_cast<double>(std::numeric_limits<float>::denorm_min())};
    std::mt19937_64 random(42);
    for (int i = 0; i < 20000; ++i) {
        std::uint64_t const bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        values.push_back(value);
        values.push_back(std::ldexp(static_cast<double>(bits >> 40), static_cast<int>(bits % 64) - 40));
    }
    return values;
}

TEST(FltDumpTest, DoublesHaveTheBytesOfTheStreamsOwnFormatting)
{
    for (double value : manyDoubles()) {
        std::ostringstream expected;
        expected << "label: " << value << '\n';
        ASSERT_EQ(written([&](std::ostream& os) { FltDump(os).line("label: ", value); }), expected.str());
    }
}

TEST(FltDumpTest, SomeDoublesAsTheyPrint)
{
    auto const text = [](double value) {
        return written([&](std::ostream& os) { FltDump(os).line("", value); });
    };
    using Limits = std::numeric_limits<double>;
    EXPECT_EQ(text(0.0), "0\n");
    EXPECT_EQ(text(-0.0), "-0\n");
    EXPECT_EQ(text(123456.7), "123457\n");
    EXPECT_EQ(text(1234567.0), "1.23457e+06\n");
    EXPECT_EQ(text(1e-5), "1e-05\n");
    EXPECT_EQ(text(0.0001), "0.0001\n");
    EXPECT_EQ(text(1e300), "1e+300\n");
    EXPECT_EQ(text(Limits::denorm_min()), "4.94066e-324\n");
    EXPECT_EQ(text(Limits::infinity()), "inf\n");
    EXPECT_EQ(text(-Limits::infinity()), "-inf\n");
    EXPECT_EQ(text(Limits::quiet_NaN()), "nan\n");
    EXPECT_EQ(text(std::copysign(Limits::quiet_NaN(), -1)), "-nan\n");
}

TEST(FltDumpTest, FloatsPrintWidenedToDoubles)
{
    for (float value : {0.1F, 1e-30F, 16777217.0F, -0.0F, std::numeric_limits<float>::infinity()}) {
        std::ostringstream expected;
        expected << "f: " << static_cast<double>(value) << '\n';
        EXPECT_EQ(written([&](std::ostream& os) { FltDump(os).line("f: ", value); }), expected.str());
    }
}

TEST(FltDumpTest, IntegersOfEverySizePrintAsNumbers)
{
    auto const text = [](auto value) {
        return written([&](std::ostream& os) { FltDump(os).line("n: ", value); });
    };
    EXPECT_EQ(text(std::int8_t{65}), "n: 65\n");
    EXPECT_EQ(text(std::int8_t{-128}), "n: -128\n");
    EXPECT_EQ(text(std::uint8_t{255}), "n: 255\n");
    EXPECT_EQ(text(std::int16_t{-32768}), "n: -32768\n");
    EXPECT_EQ(text(std::uint16_t{65535}), "n: 65535\n");
    EXPECT_EQ(text(std::numeric_limits<std::int32_t>::min()), "n: -2147483648\n");
    EXPECT_EQ(text(std::numeric_limits<std::uint32_t>::max()), "n: 4294967295\n");
    EXPECT_EQ(text(std::numeric_limits<std::uint64_t>::max()), "n: 18446744073709551615\n");
}

TEST(FltDumpTest, LabelAloneAndWithText)
{
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).line("flags: "); }), "flags: \n");
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).line(""); }), "\n");
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).text("name: ", std::string_view("a\0b", 3)); }),
              std::string("name: a\0b\n", 10));
}

TEST(FltDumpTest, LinesCanBePutTogetherPieceByPiece)
{
    EXPECT_EQ(written([](std::ostream& os) { (FltDump(os) << "eyePoint[" << 9 << "]: *****").endLine(); }),
              "eyePoint[9]: *****\n");
    EXPECT_EQ(written([](std::ostream& os) { (FltDump(os) << "mask[" << -1 << "] : " << 42).endLine(); }),
              "mask[-1] : 42\n");
    EXPECT_EQ(written([](std::ostream& os) {
                  (FltDump(os) << "name[" << 3 << "] : "
                               << "x")
                      .endLine();
              }),
              "name[3] : x\n");
}

TEST(FltDumpTest, FieldIsANameAColonAndItsValue)
{
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).field("drawType", std::int8_t{-1}); }),
              "drawType: -1\n");
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).field("x", 0.25F); }), "x: 0.25\n");
}

TEST(FltDumpTest, CharacterPrintsAlsoWhenItIsZero)
{
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).character("c: ", 'A'); }), "c: A\n");
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).character("c: ", '\0'); }),
              std::string("c: \0\n", 5));
}

TEST(FltDumpTest, FlagPrintsOneBit)
{
    auto const text = [](std::uint32_t word, int bit) {
        return written([&](std::ostream& os) { FltDump(os).flag("", word, bit); });
    };
    EXPECT_EQ(text(0x80000000U, 31), "1\n");
    EXPECT_EQ(text(0x7fffffffU, 31), "0\n");
    EXPECT_EQ(text(1, 0), "1\n");
    EXPECT_EQ(text(0xfffffffeU, 0), "0\n");
}

TEST(FltDumpTest, BitsPrintTheMostSignificantFirst)
{
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).bits(0x80000005U); }),
              "10000000000000000000000000000101\n");
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).bits(0x00000001U); }), std::string(31, '0') + "1\n");
}

TEST(FltDumpTest, PointerFormIsHexadecimalSignExtendedAnd0ForZero)
{
    auto const text = [](std::int32_t word) {
        return written([&](std::ostream& os) { (FltDump(os) << "p: ").pointer(word).endLine(); });
    };
    EXPECT_EQ(text(0), "p: 0\n");
    EXPECT_EQ(text(0x1f), "p: 0x1f\n");
    EXPECT_EQ(text(0x7fffffff), "p: 0x7fffffff\n");
    EXPECT_EQ(text(-1), "p: 0xffffffffffffffff\n");
    EXPECT_EQ(text(std::numeric_limits<std::int32_t>::min()), "p: 0xffffffff80000000\n");
}

TEST(FltDumpTest, PointerFormOfAnAddressIsTheStreamsOwn)
{
    int object = 0;
    std::ostringstream expected;
    expected << "p: " << static_cast<void const*>(&object) << '\n';
    EXPECT_EQ(written([&](std::ostream& os) { (FltDump(os) << "p: ").pointer(&object).endLine(); }),
              expected.str());
}

TEST(FltDumpTest, ColorByteIsAFractionOf255InSinglePrecision)
{
    for (int value = 0; value < 256; ++value) {
        std::ostringstream expected;
        expected << "r: " << static_cast<float>(value) / 255.0F << '\n';
        EXPECT_EQ(written([&](std::ostream& os) {
                      FltDump(os).colorByte("r: ", static_cast<std::uint8_t>(value));
                  }),
                  expected.str());
    }
}

TEST(FltDumpTest, TextEndsAtItsFirstZeroOrWhereItIsToldTo)
{
    char const members[] = {'a', 'b', 'c', 'd', '\0', 'e'};
    auto const text = [&](void const* end) {
        return written([&](std::ostream& os) { FltDump(os).text("t: ", members, end); });
    };
    EXPECT_EQ(text(members + sizeof members), "t: abcd\n");
    EXPECT_EQ(text(members + 3), "t: abc\n");
    EXPECT_EQ(text(members), "t: \n");
}

TEST(FltDumpTest, NullTextPrintsAsAnEmptyOne)
{
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).text("t: ", nullptr); }), "t: \n");
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).text("t: ", "abc"); }), "t: abc\n");
}

TEST(FltDumpTest, ListsHaveSeparatorsBetweenAndAClosingAtTheEnd)
{
    std::int32_t const numbers[] = {1, -2, 3};
    float const floats[] = {0.5F, 0.1F};
    double const doubles[] = {1e10, -0.25};
    EXPECT_EQ(written([&](std::ostream& os) { FltDump(os).list("v: (", numbers, 3, ",", ")"); }),
              "v: (1,-2,3)\n");
    EXPECT_EQ(written([&](std::ostream& os) { FltDump(os).list("v: ", floats, 2, " "); }), "v: 0.5 0.1\n");
    EXPECT_EQ(written([&](std::ostream& os) { FltDump(os).list("v: ", doubles, 2, ", "); }),
              "v: 1e+10, -0.25\n");
    EXPECT_EQ(written([&](std::ostream& os) { FltDump(os).list("v: (", doubles, 0, ",", ")"); }), "v: ()\n");
}

TEST(FltDumpTest, RowsStandBetweenBars)
{
    float const floats[] = {1, 2, 3, 4};
    double const doubles[] = {0.5, 1.5, 2.5, 3.5, 4.5, 5.5};
    EXPECT_EQ(written([&](std::ostream& os) { FltDump(os).rows(floats, 2, 2); }),
              "|  1  2    |\n|  3  4    |\n");
    EXPECT_EQ(written([&](std::ostream& os) { FltDump(os).rows(doubles, 2, 3); }),
              "|  0.5  1.5  2.5    |\n|  3.5  4.5  5.5    |\n");
}

TEST(FltDumpTest, LinesThatOutgrowTheBufferComeOutWhole)
{
    for (std::size_t size : {500U, 511U, 512U, 513U, 600U, 5000U}) {
        std::string const text(size, 't');
        EXPECT_EQ(written([&](std::ostream& os) { FltDump(os).text("label: ", std::string_view(text)); }),
                  "label: " + text + "\n");
    }
    std::vector<double> const values(1000, -1.23456e-100);
    std::string expected = "v: ";
    for (int i = 0; i < 1000; ++i)
        expected += (i > 0 ? "," : "") + std::string("-1.23456e-100");
    EXPECT_EQ(written([&](std::ostream& os) { FltDump(os).list("v: ", values.data(), 1000, ",", ")"); }),
              expected + ")\n");
}

TEST(FltDumpTest, EveryLineEndsWithOneFlush)
{
    CaptureBuffer buffer;
    std::ostream os(&buffer);
    double const matrix[4] = {};
    FltDump(os).line("a: ", 1);
    EXPECT_EQ(buffer.flushes(), 1);
    {
        FltDump dump(os);
        dump.field("b", 1);
        EXPECT_EQ(buffer.flushes(), 2);
        (dump << "c: " << 0.5).endLine();
        EXPECT_EQ(buffer.flushes(), 3);
    }
    FltDump(os).rows(matrix, 2, 2);
    EXPECT_EQ(buffer.flushes(), 5);
    FltDump(os) << "t: x";
    EXPECT_EQ(buffer.flushes(), 5);
}

TEST(FltDumpTest, StreamThatFlushesByItselfDoesSoAfterEveryPieceAsByItsOperators)
{
    auto const flushesOf = [](Action const& write) {
        CaptureBuffer buffer;
        std::ostream os(&buffer);
        os << std::unitbuf;
        write(os);
        return buffer.flushes();
    };
    int const ofTwoPieces = flushesOf([](std::ostream& os) { os << "label: " << 'x' << std::endl; });
    EXPECT_EQ(flushesOf([](std::ostream& os) { FltDump(os).line("label: ", 7); }), ofTwoPieces);
    EXPECT_EQ(flushesOf([](std::ostream& os) { FltDump(os).text("label: ", "x"); }), ofTwoPieces);
    EXPECT_EQ(flushesOf([](std::ostream& os) { FltDump(os).character("label: ", 'x'); }), ofTwoPieces);
    EXPECT_EQ(flushesOf([](std::ostream& os) { FltDump(os).field("label", 7); }),
              flushesOf([](std::ostream& os) {
                  os << "label"
                     << ": " << 7 << std::endl;
              }));
}

/// A dump of every shape with a number in it, and the same by the stream's own operators.
void dumpShapes(std::ostream& os)
{
    double const doubles[] = {1234567.0, 0.1, -2e-9, 1e300};
    std::int32_t const numbers[] = {1234567, -8};
    (FltDump(os) << "-- Opcode: " << 1000 << "  Length: " << 65000U << " --").endLine();
    FltDump(os).field("e", -3);
    FltDump(os).lineOf("o[", 12, "]: ", 0.5);
    FltDump(os).line("i: ", 1234567);
    FltDump(os).line("u: ", 4000000000U);
    FltDump(os).line("b: ", std::uint8_t{200});
    FltDump(os).line("d: ", 1234567.891);
    FltDump(os).line("f: ", 0.1F);
    (FltDump(os) << "n[" << 1000 << "] : " << 2000).endLine();
    FltDump(os).list("l: (", numbers, 2, ",", ")");
    FltDump(os).list("l: (", doubles, 4, ",", ")");
    FltDump(os).rows(doubles, 2, 2);
    FltDump(os).text("t: ", "text takes no more room than it has");
    FltDump(os).flag("g: ", 1, 0);
    (FltDump(os) << "p: ").pointer(0x12345).endLine();
    FltDump(os).colorByte("c: ", 77);
    FltDump(os).line("");
}

void streamShapes(std::ostream& os)
{
    os << "-- Opcode: " << 1000 << "  Length: " << 65000U << " --" << std::endl;
    os << "e"
       << ": " << -3 << std::endl;
    os << "o[" << 12 << "]: " << 0.5 << std::endl;
    os << "i: " << 1234567 << std::endl;
    os << "u: " << 4000000000U << std::endl;
    os << "b: " << 200U << std::endl;
    os << "d: " << 1234567.891 << std::endl;
    os << "f: " << static_cast<double>(0.1F) << std::endl;
    os << "n[" << 1000 << "] : " << 2000 << std::endl;
    os << "l: (" << 1234567 << "," << -8 << ")" << std::endl;
    os << "l: (" << 1234567.0 << "," << 0.1 << "," << -2e-9 << "," << 1e300 << ")" << std::endl;
    os << "|  " << 1234567.0 << "  " << 0.1 << "  "
       << "  |" << std::endl;
    os << "|  " << -2e-9 << "  " << 1e300 << "  "
       << "  |" << std::endl;
    os << "t: text takes no more room than it has" << std::endl;
    os << "g: " << '1' << std::endl;
    os << "p: " << reinterpret_cast<void const*>(std::intptr_t{0x12345}) << std::endl;
    os << "c: " << static_cast<double>(77.0F / 255.0F) << std::endl;
    os << "" << std::endl;
}

void expectStreamsOwnFormatting(Action const& setUp)
{
    EXPECT_EQ(written([&](std::ostream& os) {
                  setUp(os);
                  dumpShapes(os);
              }),
              written([&](std::ostream& os) {
                  setUp(os);
                  streamShapes(os);
              }));
}

TEST(FltDumpTest, DefaultStateGivesTheBytesOfTheStreamsOperators)
{
    expectStreamsOwnFormatting([](std::ostream&) {});
}

TEST(FltDumpTest, OtherPrecisionIsTheStreamsOwn)
{
    expectStreamsOwnFormatting([](std::ostream& os) { os.precision(12); });
    std::string const text = written([](std::ostream& os) {
        os.precision(12);
        FltDump(os).line("d: ", 1234567.891);
    });
    EXPECT_EQ(text, "d: 1234567.891\n");
}

TEST(FltDumpTest, HexadecimalIsTheStreamsOwn)
{
    expectStreamsOwnFormatting([](std::ostream& os) { os << std::hex << std::showbase; });
    EXPECT_EQ(written([](std::ostream& os) {
                  os << std::hex;
                  FltDump(os).line("i: ", 255);
              }),
              "i: ff\n");
}

TEST(FltDumpTest, FixedAndScientificAreTheStreamsOwn)
{
    expectStreamsOwnFormatting([](std::ostream& os) { os << std::fixed; });
    expectStreamsOwnFormatting([](std::ostream& os) { os << std::scientific << std::uppercase; });
    EXPECT_EQ(written([](std::ostream& os) {
                  os << std::fixed;
                  FltDump(os).line("d: ", 0.5);
              }),
              "d: 0.500000\n");
}

TEST(FltDumpTest, SignsAndFlushingFlagsAreTheStreamsOwn)
{
    expectStreamsOwnFormatting([](std::ostream& os) { os << std::showpos; });
    expectStreamsOwnFormatting([](std::ostream& os) { os << std::showpoint; });
    expectStreamsOwnFormatting([](std::ostream& os) { os << std::unitbuf; });
}

TEST(FltDumpTest, LocaleWithGroupingIsTheStreamsOwn)
{
    std::locale const grouping(std::locale::classic(), new Grouping);
    expectStreamsOwnFormatting([&](std::ostream& os) { os.imbue(grouping); });
    EXPECT_EQ(written([&](std::ostream& os) {
                  os.imbue(grouping);
                  FltDump(os).line("i: ", 1234567);
                  FltDump(os).line("d: ", 0.5);
              }),
              "i: 1.234.567\nd: 0,5\n");
}

TEST(FltDumpTest, StreamThatGetsAnotherLocaleBetweenLinesIsFollowed)
{
    std::locale const grouping(std::locale::classic(), new Grouping);
    std::ostringstream os;
    FltDump(os).line("a ", 1234.5);
    os.imbue(grouping);
    FltDump(os).line("b ", 1234.5);
    FltDump(os).line("c ", 1234.5);
    os.imbue(std::locale::classic());
    FltDump(os).line("d ", 1234.5);
    os.imbue(grouping);
    FltDump(os).line("e ", 1234.5);
    EXPECT_EQ(os.str(), "a 1234.5\nb 1.234,5\nc 1.234,5\nd 1234.5\ne 1.234,5\n");
}

TEST(FltDumpTest, StreamThatTakesTheFormatOfAnotherIsFollowed)
{
    std::ostringstream foreign;
    foreign.imbue(std::locale(std::locale::classic(), new Grouping));
    std::ostringstream os;
    FltDump(os).line("a ", 1234.5);
    os.copyfmt(foreign); // no line was written there yet
    FltDump(os).line("b ", 1234.5);
    FltDump(foreign).line("", 1);
    os.copyfmt(std::ostringstream());
    FltDump(os).line("c ", 1234.5);
    os.copyfmt(foreign); // one was
    FltDump(os).line("d ", 1234.5);
    os.imbue(std::locale::classic());
    FltDump(os).line("e ", 1234.5);
    EXPECT_EQ(os.str(), "a 1234.5\nb 1.234,5\nc 1234.5\nd 1.234,5\ne 1234.5\n");
}

TEST(FltDumpTest, WidthGoesToTheFirstPieceOfTheFirstLineAsTheStreamHasIt)
{
    expectStreamsOwnFormatting([](std::ostream& os) { os << std::setw(12) << std::setfill('*'); });
    EXPECT_EQ(written([](std::ostream& os) {
                  os.width(6);
                  FltDump(os).line("i: ", 1);
                  FltDump(os).line("i: ", 2);
              }),
              "   i: 1\ni: 2\n");
}

TEST(FltDumpTest, StreamThatFailsStaysFailedAndTakesNothing)
{
    std::ostringstream os;
    os.setstate(std::ios_base::badbit);
    dumpShapes(os);
    EXPECT_TRUE(os.bad());
    EXPECT_EQ(os.str(), "");
    std::ostream nowhere(nullptr);
    dumpShapes(nowhere);
    EXPECT_TRUE(nowhere.bad());
}

/// Takes a few bytes and then no more.
class SmallBuffer : public std::streambuf
{
public:
    SmallBuffer() { setp(room, room + sizeof room); }

private:
    char room[8];
};

/// A log's block of few bytes, with bytes behind it that aren't its own.
class SmallBlock : public FltDumpBuffer
{
public:
    explicit SmallBlock(std::size_t size) : memory(size + behind, untouched)
    {
        setp(memory.data(), memory.data() + size);
        current = this;
    }
    ~SmallBlock() override { current = nullptr; }

    void write() override
    {
        ++writes;
        text.append(pbase(), pptr());
        setp(pbase(), epptr());
    }
    int timesWritten() const { return writes; }
    std::string const& written()
    {
        write();
        return text;
    }
    bool isKept() const { return std::string(epptr(), behind) == std::string(behind, untouched); }

protected:
    int_type overflow(int_type character) override
    {
        write();
        return sputc(traits_type::to_char_type(character));
    }

private:
    static constexpr std::size_t behind = 64;
    static constexpr char untouched = '?';

    std::string memory;
    std::string text;
    int writes = 0;
};

TEST(FltDumpTest, LinesKeepToTheBlockOfALogOfAnySize)
{
    std::string const expected = written(streamShapes);
    constexpr std::size_t longestPiece = 64;
    for (std::size_t size = longestPiece; size <= expected.size(); ++size) {
        SmallBlock block(size);
        std::ostream os(&block);
        dumpShapes(os);
        ASSERT_TRUE(block.isKept()) << size;
        ASSERT_EQ(block.written(), expected) << size;
    }
}

TEST(FltDumpTest, BlockOfALogThatHasRoomIsNotWritten)
{
    SmallBlock block(4096);
    std::ostream os(&block);
    dumpShapes(os);
    EXPECT_EQ(block.timesWritten(), 0);
    EXPECT_EQ(block.written(), written(streamShapes));
}

TEST(FltDumpTest, LineThatFillsTheBlockOfALogToItsLastByteIsWrittenWithTheNextOne)
{
    std::vector<std::pair<std::string, Action>> const lines = {
        {"label\n", [](std::ostream& os) { FltDump(os).line("label"); }},
        {"\n", [](std::ostream& os) { FltDump(os).line(""); }},
        {"c: x\n", [](std::ostream& os) { FltDump(os).character("c: ", 'x'); }},
        {"some text\n",
         [](std::ostream& os) { FltDump(os).lineOf(std::string_view("some "), std::string_view("text")); }},
        {"some text\n", [](std::ostream& os) { FltDump(os).text("some ", "text"); }},
    };
    for (auto const& [line, write] : lines) {
        SmallBlock block(line.size());
        std::ostream os(&block);
        write(os);
        EXPECT_EQ(block.timesWritten(), 0) << line;
        EXPECT_TRUE(block.isKept()) << line;
        write(os);
        EXPECT_EQ(block.timesWritten(), 1) << line;
        EXPECT_EQ(block.written(), line + line);
    }
}

TEST(FltDumpTest, LineThatIsAByteLongerThanTheBlockOfALogComesOutWhole)
{
    std::string const line = "a line that is longer than the longest number\n";
    SmallBlock block(line.size() - 1);
    std::ostream os(&block);
    FltDump(os).line("a line that is longer than the longest number");
    EXPECT_TRUE(block.isKept());
    EXPECT_EQ(block.written(), line);
}

TEST(FltDumpTest, StreamThatIsNoLogOrFormatsByItselfIsNotInALog)
{
    SmallBlock block(4096);
    std::ostringstream other;
    EXPECT_FALSE(FltDump(other).isInLog());
    std::ostream os(&block);
    for (Action const& change : std::vector<Action>{[](std::ostream& log) { log.precision(7); },
                                                    [](std::ostream& log) {
                                                        log.precision(6);
                                                        log.width(3);
                                                    },
                                                    [&other](std::ostream& log) {
                                                        log.width(0);
                                                        log.tie(&other);
                                                    },
                                                    [](std::ostream& log) {
                                                        log.tie(nullptr);
                                                        log << std::hex;
                                                    }}) {
        change(os);
        EXPECT_FALSE(FltDump(os).isInLog());
    }
    os << std::dec;
    EXPECT_TRUE(FltDump(os).isInLog());
}

/// It was taken for as long as a number, and went on behind the block.
TEST(FltDumpTest, LiteralThatIsLongerThanANumberKeepsToTheBlockOfALog)
{
    SmallBlock block(64);
    std::ostream os(&block);
    FltDump(os).lineOf("a text that is as long as a whole line of a log, and longer than many: ", 7);
    EXPECT_TRUE(block.isKept());
    EXPECT_EQ(block.written(), "a text that is as long as a whole line of a log, and longer than many: 7\n");
}

TEST(FltDumpTest, LineOntoAnotherStreamThanTheOpenLogGoesThere)
{
    SmallBlock block(4096);
    EXPECT_EQ(written([](std::ostream& os) { FltDump(os).line("elsewhere: ", 1); }), "elsewhere: 1\n");
    EXPECT_EQ(block.written(), "");
}

TEST(FltDumpTest, BufferThatTakesNoMoreSetsTheBadBit)
{
    SmallBuffer buffer;
    std::ostream os(&buffer);
    FltDump(os).line("1234567");
    EXPECT_TRUE(os.good());
    FltDump(os).line("8");
    EXPECT_TRUE(os.bad());
}

} // namespace
