#include "parser/FltParser.h"

#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltFileInput.h"
#include "parser/FltRawData.h"
#include "records/FltOpcode.h"
#include "records/FltRecordComment.h"
#include "records/FltRecordHeader.h"
#include "records/FltRecordTable.h"
#include "records/FltRecordTransformations.h"
#include "records/FltRecordUnknown.h"
#include "support/Parse.h"
#include "support/RecordText.h"
#include "support/ScratchFolder.h"
#include "support/Text.h"

#include <gtest/gtest.h>

namespace
{

std::string const notOpenFlight = "ERROR! Not an Openflight Input !\n(Warning Level: 3)\n\n";

/// The message of damage at a place.
std::string damage(std::string const& what, int opcode, std::size_t offset)
{
    return "WARNING ! " + what + " (memory.flt, record with opcode " + std::to_string(opcode) +
           " at byte offset " + std::to_string(offset) + ")\n(Warning Level: 2)\n\n";
}

TEST(FltParserTest, RecordsStandInFileOrderAndTheLogHoldsTheirDumps)
{
    FltWriter flt(1570, {{"flags", 0x40000000}});
    flt.push().add("Comment", {{"textDescription", "hello"}}).pop();
    Parse parse(flt);
    EXPECT_EQ(parse.result, 0);
    EXPECT_EQ(parse.messages, "");
    ASSERT_EQ(parse.size(), 4U);
    auto const& records = parse.parser.getFltRecords();
    EXPECT_EQ(records[0]->getOpcode(), 1);
    EXPECT_EQ(records[1]->getOpcode(), 10);
    EXPECT_EQ(records[2]->getOpcode(), 31);
    EXPECT_EQ(records[3]->getOpcode(), 11);
    EXPECT_EQ(parse.parser.getNumberOfFltRawData(), 4U);
    EXPECT_TRUE(parse.parser.isAllFltRecordsCreated());
    EXPECT_EQ(parse.log, "beginning of parsing\n" + dumpOf(*records[0]) +
                             "OpenFlight file version: 1570\nRGB mode: true\n" + dumpOf(*records[1]) +
                             dumpOf(*records[2]) + dumpOf(*records[3]) + "end of parsing\n");
}

TEST(FltParserTest, HeaderAloneIsAWholeFile)
{
    Parse parse(FltWriter(11));
    EXPECT_EQ(parse.result, 0);
    EXPECT_EQ(parse.size(), 1U);
    EXPECT_EQ(parse.messages, "");
    EXPECT_NE(parse.log.find("OpenFlight file version: 11\nRGB mode: false\nend of parsing\n"),
              std::string::npos);
}

TEST(FltParserTest, HeaderGivesRevisionAndRgbModeToTheFactoryBeforeTheSecondRecord)
{
    Parse parse(FltWriter(1580, {{"flags", 0x40000000}}));
    EXPECT_EQ(parse.parser.getFltCreationVisitor()->revision, 1580);
    EXPECT_TRUE(parse.parser.getFltCreationVisitor()->rgbMode);
    Parse other(FltWriter(-0, {{"flags", 0xbfffffffU}}));
    EXPECT_EQ(other.parser.getFltCreationVisitor()->revision, 0);
    EXPECT_FALSE(other.parser.getFltCreationVisitor()->rgbMode);
}

TEST(FltParserTest, SecondHeaderChangesNothingOfTheFactory)
{
    FltWriter flt(1570);
    flt.addRaw(1, FltWriter(1420).lastRecord().substr(4));
    Parse parse(flt);
    EXPECT_EQ(parse.size(), 2U);
    EXPECT_EQ(parse.parser.getFltCreationVisitor()->revision, 1570);
}

TEST(FltParserTest, EmptyInputIsNotOpenFlight)
{
    Parse parse(std::string{});
    EXPECT_EQ(parse.result, 1);
    EXPECT_EQ(parse.size(), 0U);
    EXPECT_EQ(parse.messages, notOpenFlight);
    EXPECT_EQ(parse.log, "");
    EXPECT_FALSE(parse.parser.isAllFltRecordsCreated());
}

TEST(FltParserTest, InputOfFewerThanFourBytesIsNotOpenFlight)
{
    for (std::size_t size : {1U, 2U, 3U}) {
        Parse parse(std::string("\0\1\0", 3).substr(0, size));
        EXPECT_EQ(parse.result, 1);
        EXPECT_EQ(parse.messages, notOpenFlight);
    }
}

TEST(FltParserTest, FirstRecordHasToBeTheHeaderWithALength)
{
    for (std::string const& bytes : {FltWriter::big16(2) + FltWriter::big16(4), std::string("\0\1\0\0", 4),
                                     std::string("\1\0\0\4", 4), std::string("#VRML V1.0 ascii")}) {
        Parse parse(bytes);
        EXPECT_EQ(parse.result, 1);
        EXPECT_EQ(parse.messages, notOpenFlight);
        EXPECT_EQ(parse.size(), 0U);
    }
}

TEST(FltParserTest, ParserWithoutAnInputIsNotOpenFlight)
{
    FltParser parser;
    EXPECT_EQ(parser.getInput(), nullptr);
    StreamCapture const err(std::cerr);
    EXPECT_EQ(parser.run(), 1);
    EXPECT_EQ(err.str(), notOpenFlight);
}

TEST(FltParserTest, FileThatCouldNotBeOpenedIsNotOpenFlight)
{
    StreamCapture const err(std::cerr);
    FltParser parser(new FltFileInput("/dev/zero"));
    EXPECT_EQ(parser.run(), 1);
    EXPECT_EQ(err.str(), "Error in opening file: /dev/zero\n" + notOpenFlight);
}

TEST(FltParserTest, ParserFreesAnInputThatIsAFile)
{
    ScratchFolder const directory;
    FltWriter().save(directory.path("a.flt"));
    StreamCapture const out(std::cout);
    FltParser parser(new FltFileInput(directory.path("a.flt").c_str()));
    EXPECT_EQ(parser.run(), 0);
    EXPECT_EQ(parser.getFltRecords().size(), 1U);
    destroyRecords(parser);
}

TEST(FltParserTest, RecordOfLengthZeroEndsTheScanAndKeepsWhatCameBefore)
{
    FltWriter flt;
    flt.push().addRaw(5).claimLength(0).addBytes(FltWriter().pop().lastRecord());
    std::size_t const offset = flt.lastOffset();
    Parse parse(flt);
    EXPECT_EQ(parse.result, 0);
    EXPECT_EQ(parse.size(), 2U);
    EXPECT_EQ(parse.messages,
              damage("A record has the length zero: the rest of the file, 8 bytes from byte offset " +
                         std::to_string(offset) + " on, is left out",
                     5, offset));
    EXPECT_TRUE(parse.parser.isAllFltRecordsCreated());
    EXPECT_NE(parse.log.find("end of parsing\n"), std::string::npos);
}

TEST(FltParserTest, RecordPastTheEndOfTheFileIsLeftOutAndEndsTheScan)
{
    for (unsigned length : {9U, 65535U}) {
        FltWriter flt;
        flt.push().addRaw(31, "abcd").claimLength(length);
        Parse parse(flt);
        EXPECT_EQ(parse.result, 0);
        EXPECT_EQ(parse.size(), 2U);
        EXPECT_EQ(
            parse.messages,
            damage("A record ends after the file does: the rest of the file, 8 bytes from byte offset " +
                       std::to_string(flt.lastOffset()) + " on, is left out",
                   31, flt.lastOffset()));
    }
}

TEST(FltParserTest, RecordThatEndsExactlyWithTheFileIsKept)
{
    FltWriter flt;
    flt.addRaw(31, "abcd");
    Parse parse(flt);
    EXPECT_EQ(parse.size(), 2U);
    EXPECT_EQ(parse.messages, "");
}

TEST(FltParserTest, HeaderPastTheEndOfTheFileLeavesNoRecord)
{
    FltWriter flt;
    flt.claimLength(325 + 1000);
    Parse parse(flt);
    EXPECT_EQ(parse.result, 0);
    EXPECT_EQ(parse.size(), 0U);
    EXPECT_EQ(parse.messages,
              damage("A record ends after the file does: the rest of the file, " +
                         std::to_string(flt.bytes().size()) + " bytes from byte offset 0 on, is left out",
                     1, 0));
}

TEST(FltParserTest, RestOfOneToThreeBytesEndsTheScan)
{
    for (std::size_t rest : {1U, 2U, 3U}) {
        FltWriter flt;
        flt.push().addBytes(std::string("\0\13\0", 3).substr(0, rest));
        std::size_t const offset = flt.bytes().size() - rest;
        Parse parse(flt);
        EXPECT_EQ(parse.result, 0);
        EXPECT_EQ(parse.size(), 2U);
        EXPECT_EQ(parse.messages,
                  damage("The file ends inside the first four bytes of a record: the rest of the file, " +
                             std::to_string(rest) + " bytes from byte offset " + std::to_string(offset) +
                             " on, is left out",
                         0, offset));
    }
}

TEST(FltParserTest, RecordsShorterThanTheirOwnHeadAreReadAndReportedAndTheScanGoesOn)
{
    // Each record begins inside the words of the one before, and the fourth has room for its own.
    FltWriter flt;
    std::size_t const offset = flt.bytes().size();
    Parse parse(flt.addBytes(std::string("\0\6\0\3\0\0\2\0\1\4", 10) + std::string(256, 'x')));
    EXPECT_EQ(parse.result, 0);
    auto const report = [](int length, int opcode, std::size_t at) {
        return damage("A record is shorter than its own first four bytes, with a length of " +
                          std::to_string(length) + ": the next one is looked for after that",
                      opcode, at);
    };
    EXPECT_EQ(parse.messages,
              report(3, 6, offset) + report(2, 0x0300, offset + 3) + report(1, 2, offset + 5));
    ASSERT_EQ(parse.size(), 5U);
    auto const& records = parse.parser.getFltRecords();
    EXPECT_EQ(records[1]->getOpcode(), 6);
    EXPECT_EQ(records[1]->getLength(), 3U);
    EXPECT_EQ(records[2]->getOpcode(), 0x0300);
    EXPECT_EQ(records[2]->getLength(), 2U);
    EXPECT_EQ(records[3]->getOpcode(), 2);
    EXPECT_EQ(records[3]->getLength(), 1U);
    EXPECT_EQ(records[4]->getOpcode(), 0x0200);
    EXPECT_EQ(records[4]->getLength(), 0x0104U);
}

TEST(FltParserTest, EveryPrefixOfAFileIsParsedWithoutHarm)
{
    FltWriter flt(1580);
    flt.push().add("Comment", {{"textDescription", "hello"}}).add("ExtensionAttribute").add("Text").pop();
    std::string const bytes = flt.bytes();
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        Parse parse(bytes.substr(0, size));
        EXPECT_EQ(parse.result, size < 4 ? 1 : 0);
        EXPECT_LE(parse.size(), 6U);
    }
}

/// A factory of unknown records whose decoders may read half a megabyte.
class GreedyVisitor : public FltCreationVisitor
{
public:
    void visitFltRawData(FltRecord*& result, FltRawData const* raw) override
    {
        result = new FltRecordUnknown(raw->opcode, raw->length);
    }
    std::size_t getReach(int, unsigned int) const override { return reach; }

    static constexpr std::size_t reach = std::size_t(1) << 19;
};

TEST(FltParserTest, TooManyRecordsShorterThanTheirLayoutEndTheScan)
{
    std::string bytes;
    for (int i = 0; i < 20; ++i)
        bytes += std::string("\0\1\0\4", 4);
    MemoryInput input(bytes);
    FltParser parser(&input);
    delete parser.getFltCreationVisitor();
    parser.setFltCreationVisitor(new GreedyVisitor);
    StreamCapture const out(std::cout);
    StreamCapture const err(std::cerr);
    EXPECT_EQ(parser.run(), 0);
    // Each takes half a megabyte less its own four bytes, and a file has one and a little more for all.
    EXPECT_EQ(FltLimits::shortRecordBytes, 2 * GreedyVisitor::reach);
    EXPECT_EQ(parser.getFltRecords().size(), 2U);
    EXPECT_EQ(err.str(),
              damage("Too many records are shorter than their layout: the rest of the file, 72 bytes from "
                     "byte offset 8 on, is left out",
                     1, 8));
    EXPECT_EQ(parser.getFltCreationVisitor()->revision, 0) << "the first object is no header";
    destroyRecords(parser);
}

/// A factory of unknown records whose decoders read so many bytes more than a group has.
class CostlyVisitor : public FltCreationVisitor
{
public:
    explicit CostlyVisitor(std::size_t cost) : cost(cost) {}
    void visitFltRawData(FltRecord*& result, FltRawData const* raw) override
    {
        result = new FltRecordUnknown(raw->opcode, raw->length);
    }
    std::size_t getReach(int opcode, unsigned int length) const override
    {
        return length + (opcode == FltOpcode::group ? cost : 0);
    }

private:
    std::size_t cost;
};

/// How many records are read of a file of a header and groups, all of them without content.
std::size_t recordsReadOf(int groups, std::size_t cost)
{
    std::string bytes("\0\1\0\4", 4);
    for (int i = 0; i < groups; ++i)
        bytes += std::string("\0\2\0\4", 4);
    MemoryInput input(bytes);
    FltParser parser(&input);
    delete parser.getFltCreationVisitor();
    parser.setFltCreationVisitor(new CostlyVisitor(cost));
    StreamCapture const out(std::cout);
    StreamCapture const err(std::cerr);
    EXPECT_EQ(parser.run(), 0);
    std::size_t const count = parser.getFltRecords().size();
    destroyRecords(parser);
    return count;
}

TEST(FltParserTest, AShortRecordMayCostAllThatThereIsAndNoByteMore)
{
    std::size_t const budget = 1024 * 1024 + 2 * 8;
    EXPECT_EQ(recordsReadOf(1, budget), 2U);
    EXPECT_EQ(recordsReadOf(1, budget + 1), 1U);
}

TEST(FltParserTest, ARecordThatIsShortByAByteCostsItsObject)
{
    constexpr int groups = 50'000;
    std::size_t const budget = 1024 * 1024 + 2 * (4 + 4 * groups);
    EXPECT_EQ(recordsReadOf(groups, 1), 1 + budget / FltRecordTable::objectSizeOf(FltOpcode::group));
    EXPECT_EQ(recordsReadOf(groups, 0), 1U + groups);
}

TEST(FltParserTest, AFileBeginsWithAHeaderThatHasALength)
{
    EXPECT_EQ(Parse(std::string("\0\1\0\0\1\1", 6)).result, 1);
    EXPECT_EQ(Parse(std::string("\0\1\0\4\0\0", 6)).result, 0);
    EXPECT_EQ(Parse(std::string("\0\1\1\0\0\0", 6)).result, 0);
    EXPECT_EQ(Parse(std::string("\1\1\0\4\0\0", 6)).result, 1);
    EXPECT_EQ(Parse(std::string("\0\2\0\4\0\0", 6)).result, 1);
}

TEST(FltParserTest, ShortRecordsMayCostAMebibyteAndTwoBytesForEachOfTheFile)
{
    std::size_t const header = FltWriter().bytes().size(); // shorter than the longest one, too
    std::string const shortMatrix = FltWriter().add("Matrix").resizeLast(4).lastRecord();
    for (int const count : {50'000, 200'000}) {
        FltWriter flt;
        std::string records;
        for (int i = 0; i < count; ++i)
            records += shortMatrix;
        flt.addBytes(records);
        std::size_t const size = flt.bytes().size();
        std::size_t const matrices =
            (1024 * 1024 + 2 * size - sizeof(FltRecordHeader)) / sizeof(FltRecordMatrix);
        Parse parse(flt);
        EXPECT_EQ(parse.size(), 1 + matrices);
        std::size_t const end = header + 4 * matrices;
        EXPECT_EQ(parse.messages,
                  damage("Too many records are shorter than their layout: the rest of the file, " +
                             std::to_string(size - end) + " bytes from byte offset " + std::to_string(end) +
                             " on, is left out",
                         49, end));
    }
}

TEST(FltParserTest, ShortRecordsMayCostAllOfThat)
{
    std::string const shortMatrix = FltWriter().add("Matrix").resizeLast(4).lastRecord();
    FltWriter flt;
    for (int i = 0; i < 20'000; ++i)
        flt.addBytes(shortMatrix);
    auto const budget = [&] { return 1024 * 1024 + 2 * flt.bytes().size() - sizeof(FltRecordHeader); };
    constexpr std::size_t cost = sizeof(FltRecordMatrix);
    constexpr std::size_t headOfComment = 4;
    std::size_t text = 4; // so long that the matrices take what there is to the last byte
    while ((budget() + 2 * (headOfComment + text)) % cost != 0 && text < 4 * cost)
        ++text;
    flt.addRaw(FltOpcode::comment, std::string(text, 'x'));
    ASSERT_EQ(budget() % cost, 0U);
    Parse parse(flt);
    EXPECT_EQ(parse.size(), 1 + budget() / cost);
}

TEST(FltParserTest, WholeRecordsCostNothing)
{
    std::string levels;
    for (int i = 0; i < 75'000; ++i)
        levels += FltWriter().push().pop().bytes().substr(FltWriter().bytes().size());
    FltWriter flt;
    flt.addBytes(levels);
    Parse parse(flt);
    EXPECT_EQ(parse.size(), 150'001U);
    EXPECT_EQ(parse.messages, "");
}

TEST(FltParserTest, DamageOfAKindIsReportedOneByOneUpToALimitAndInTheNextFileAnew)
{
    FltWriter flt;
    for (int i = 0; i < FltLimits::messagesOfAKind + 20; ++i)
        flt.add("SoundPaletteNames", {{"dataLength", 5}}).push();
    Parse parse(flt);
    EXPECT_EQ(parse.size(), 1U + 2U * (FltLimits::messagesOfAKind + 20));
    EXPECT_EQ(countOf(parse.messages, "WARNING !"), FltLimits::messagesOfAKind + 1);
    EXPECT_NE(parse.messages.find("WARNING ! 20 more of this kind: A sound palette"), std::string::npos);
    Parse next(FltWriter().add("SoundPaletteNames", {{"dataLength", 5}}));
    EXPECT_EQ(next.messages,
              damage("A sound palette has no room for its names: what is there of them is kept", 93, 298));
}

/// Writes down what it hears, and what the parser and the log look like at that time.
class Listener : public FltRecordObserver
{
public:
    Listener(FltParser& parser, std::string name, std::string& notes)
        : parser(parser), name(std::move(name)), notes(notes)
    {
    }

    void update(FltRecord const* record) override
    {
        bool const stands = !parser.getFltRecords().empty() && parser.getFltRecords().back() == record;
        std::string const log = out.str();
        std::string const dump = dumpOf(*record);
        bool const dumped = log.size() >= dump.size() && log.substr(log.size() - dump.size()) == dump;
        notes += name + std::to_string(record->getOpcode()) + (stands ? " stands" : " missing") +
                 (dumped ? " dumped; " : " not dumped; ");
    }

private:
    FltParser& parser;
    std::string name;
    std::string& notes;
    StreamCapture out{std::cout};
};

TEST(FltParserTest, ObserverSeesEachRecordAfterItStandsInTheVectorWithItsDumpWritten)
{
    FltWriter flt;
    flt.push().pop();
    MemoryInput input(flt.bytes());
    FltParser parser(&input);
    std::string notes;
    Listener listener(parser, "", notes);
    parser.attachFltObserver(&listener);
    EXPECT_EQ(parser.run(), 0);
    EXPECT_EQ(notes, "1 stands dumped; 10 stands dumped; 11 stands dumped; ");
    destroyRecords(parser);
}

/// Counts what it hears.
class Counter : public FltRecordObserver
{
public:
    explicit Counter(std::string& order, char name) : order(order), name(name) {}
    void update(FltRecord const*) override { order += name; }

private:
    std::string& order;
    char name;
};

TEST(FltParserTest, ObserversHearInTheOrderOfAttachmentAndDetachRemovesOnlyTheFirst)
{
    FltParser parser;
    std::string order;
    Counter a(order, 'a');
    Counter b(order, 'b');
    Counter never(order, 'n');
    parser.attachFltObserver(&a);
    parser.attachFltObserver(&b);
    parser.attachFltObserver(&a);
    FltRecordComment const record(4);
    parser.notify(&record);
    EXPECT_EQ(order, "aba");
    order.clear();
    parser.detachFltObserver(&a);
    parser.notify(&record);
    EXPECT_EQ(order, "ba");
    order.clear();
    parser.detachFltObserver(&never);
    parser.detachFltObserver(&a);
    parser.notify(&record);
    EXPECT_EQ(order, "b");
}

TEST(FltParserTest, SoundPalettesInARowCountEachThoughTheyShareAnObject)
{
    FltWriter flt;
    flt.add("SoundPaletteTable").add("SoundPaletteNames").push();
    Parse parse(flt);
    EXPECT_EQ(parse.parser.getNumberOfFltRawData(), 4U);
    ASSERT_EQ(parse.size(), 4U);
    EXPECT_EQ(parse.parser.getFltRecords()[1], parse.parser.getFltRecords()[2]);
}

TEST(FltParserTest, SecondRunAppendsToTheRecordsAndCountsAnew)
{
    FltWriter flt;
    flt.push();
    Parse parse(flt);
    StreamCapture const out(std::cout);
    EXPECT_EQ(parse.parser.run(), 0);
    EXPECT_EQ(parse.size(), 4U);
    EXPECT_EQ(parse.parser.getNumberOfFltRawData(), 2U);
}

TEST(FltParserTest, ShowAllFltRecordsDumpsThemInOrder)
{
    FltWriter flt;
    flt.push().pop();
    Parse parse(flt);
    std::ostringstream os;
    EXPECT_EQ(&parse.parser.showAllFltRecords(os), &os);
    std::string expected;
    for (FltRecord const* record : parse.parser.getFltRecords())
        expected += dumpOf(*record);
    EXPECT_EQ(os.str(), expected);
}

TEST(FltParserTest, AccessorsGiveBackWhatWasSet)
{
    MemoryInput input("");
    FltParser parser;
    EXPECT_FALSE(parser.isAllFltRecordsCreated());
    EXPECT_EQ(parser.getNumberOfFltRawData(), 0U);
    parser.setInput(&input);
    EXPECT_EQ(parser.getInput(), &input);
    parser.setInput(nullptr);
    EXPECT_EQ(parser.getInput(), nullptr);
    EXPECT_NE(dynamic_cast<Flt_15_7_CreationVisitor*>(parser.getFltCreationVisitor()), nullptr);
    parser.setAdditionalDirPath("somewhere");
    parser.setAdditionalDirPath("elsewhere");
}

} // namespace
