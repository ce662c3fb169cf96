#include "parser/FltRecordScan.h"

#include "messages/FltLimits.h"
#include "records/FltOpcode.h"
#include "records/FltRecord.h"
#include "records/FltRecordJson.h"
#include "records/FltRecordTable.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

TEST(FltRecordScan, goesFromRecordToRecord)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("Group", {{"idASCII", "g1"}}).addRaw(777, "abc").save(folder / "database.flt");
    FltRecordScan scan(folder / "database.flt");
    EXPECT_EQ(scan.revision(), 1570);
    ASSERT_TRUE(scan.next());
    EXPECT_EQ(scan.opcode(), 1);
    ASSERT_TRUE(scan.next());
    EXPECT_EQ(scan.opcode(), 2);
    EXPECT_EQ(nlohmann::json::parse(FltRecordJson::of(*scan.record(), scan.offset()))["fields"]["idASCII"],
              "g1");
    EXPECT_EQ(nlohmann::json::parse(FltRecordJson::of(*scan.record(), scan.offset()))["offset"],
              scan.offset());
    ASSERT_TRUE(scan.next());
    EXPECT_EQ(scan.opcode(), 777);
    EXPECT_EQ(scan.bytes().substr(4), "abc");
    EXPECT_EQ(scan.record()->getRecordCategory(), "");
    EXPECT_FALSE(scan.next());
    EXPECT_EQ(scan.fault(), FltFraming::Fault::none);
}

TEST(FltRecordScan, countsTheRecordsThatAreYetToCome)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("Group").add("Object").add("Group").addBytes("abc").save(folder / "database.flt");
    FltRecordScan scan(folder / "database.flt");
    EXPECT_EQ(scan.countOf(2), 2U);
    EXPECT_EQ(scan.countOf(5), 0U);
    ASSERT_TRUE(scan.next());
    ASSERT_TRUE(scan.next());
    EXPECT_EQ(scan.countOf(2), 1U);
    EXPECT_EQ(scan.opcode(), 2);
}

TEST(FltRecordScan, leavesOutARecordThatCountsFewerThanNothing)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("Switch", {{"numberOfMasks", -5}, {"numberOf32BitWordsPerMask", 1}});
    flt.add("Group").save(folder / "database.flt");
    FltRecordScan scan(folder / "database.flt");
    ASSERT_TRUE(scan.next());
    ASSERT_TRUE(scan.next());
    EXPECT_EQ(scan.record(), nullptr);
    EXPECT_EQ(scan.record(), nullptr);
    EXPECT_EQ(scan.complaints().size(), 1U);
    ASSERT_TRUE(scan.next());
    EXPECT_EQ(scan.opcode(), 2);
    EXPECT_TRUE(scan.complaints().empty());
}

TEST(FltRecordScan, decodesOnlySoManyRecordsThatAreShorterThanTheirLayout)
{
    ScratchFolder const folder;
    FltWriter flt;
    for (int i = 0; i < 30'000; ++i)
        flt.addRaw(32); // a colour palette of four bytes, which reads four thousand
    flt.save(folder / "database.flt");
    FltRecordScan scan(folder / "database.flt");
    std::size_t decoded = 0, records = 0;
    for (; scan.next(); ++records)
        decoded += scan.record() != nullptr ? 1 : 0;
    EXPECT_EQ(records, 30'001U);
    EXPECT_GT(decoded, 100U);
    EXPECT_LT(decoded, 1000U);
}

TEST(FltRecordScan, spendsAllThatShortRecordsMayCost)
{
    ScratchFolder const folder;
    FltWriter flt;
    constexpr unsigned length = 4;
    std::size_t const cost = FltRecordTable::reachOf(FltOpcode::colorPalette, length, 1570) - length;
    for (int i = 0; i < 2000; ++i)
        flt.addRaw(FltOpcode::colorPalette);
    auto const budget = [&](std::size_t more) {
        return FltLimits::shortRecordBytes +
               FltLimits::shortRecordBytesPerFileByte * (flt.bytes().size() + more);
    };
    std::size_t text = 0; // so long that the palettes take what there is to the last byte
    while (budget(length + text) % cost != 0 && text < cost)
        ++text;
    flt.addRaw(FltOpcode::comment, std::string(text, 'x')).save(folder / "database.flt");
    ASSERT_EQ(budget(0) % cost, 0U);
    std::size_t decoded = 0;
    for (FltRecordScan scan(folder / "database.flt"); scan.next();)
        decoded += scan.opcode() == FltOpcode::colorPalette && scan.record() != nullptr ? 1 : 0;
    EXPECT_EQ(decoded, budget(0) / cost);
}

TEST(FltRecordScan, decodesNoRecordThatCostsAByteMoreThanIsLeft)
{
    ScratchFolder const folder;
    FltWriter flt;
    std::size_t const cost = FltRecordTable::reachOf(FltOpcode::colorPalette, 4, 1570) - 4;
    for (int i = 0; i < 2000; ++i)
        flt.addRaw(FltOpcode::colorPalette);
    flt.addRaw(FltOpcode::colorPalette, "x"); // costs one less
    flt.addRaw(FltOpcode::colorPalette, "xx");
    auto const leftAtLast = [&](std::size_t more) {
        return (FltLimits::shortRecordBytes +
                FltLimits::shortRecordBytesPerFileByte * (flt.bytes().size() + more)) %
               cost;
    };
    std::size_t text = 0; // so long that the palettes of four bytes leave two less than one of them costs
    while (leftAtLast(4 + text) != cost - 2 && text < cost)
        ++text;
    flt.addRaw(FltOpcode::comment, std::string(text, 'x')).save(folder / "database.flt");
    ASSERT_EQ(leftAtLast(0), cost - 2);
    std::map<unsigned int, bool> isLastDecoded;
    for (FltRecordScan scan(folder / "database.flt"); scan.next();)
        if (scan.opcode() == FltOpcode::colorPalette)
            isLastDecoded[scan.length()] = scan.record() != nullptr;
    EXPECT_EQ(isLastDecoded, (std::map<unsigned int, bool>{{4, false}, {5, false}, {6, true}}));
}

TEST(FltRecordScan, hasNoRecordBeforeTheFirst)
{
    ScratchFolder const folder;
    FltWriter().save(folder / "database.flt");
    FltRecordScan scan(folder / "database.flt");
    EXPECT_EQ(scan.record(), nullptr);
    ASSERT_TRUE(scan.next());
    EXPECT_NE(scan.record(), nullptr);
}

TEST(FltRecordScan, decodesAsManyShortRecordsAgainAfterItWentBack)
{
    ScratchFolder const folder;
    FltWriter flt;
    for (int i = 0; i < 30'000; ++i)
        flt.addRaw(32);
    flt.save(folder / "database.flt");
    FltRecordScan scan(folder / "database.flt");
    std::size_t told = 0;
    auto const decodeAll = [&] {
        std::size_t decoded = 0;
        while (scan.next()) {
            decoded += scan.record() != nullptr ? 1 : 0;
            told += scan.complaints().size();
        }
        return decoded;
    };
    std::size_t const first = decodeAll();
    EXPECT_EQ(scan.record(), nullptr) << "there is none after the last";
    EXPECT_EQ(told, 1U);
    scan.goTo(0);
    EXPECT_EQ(decodeAll(), first);
    EXPECT_EQ(told, 2U) << "what is left out is told again";
}

TEST(FltRecordScan, spendsNothingOnRecordsThatNobodyLooksInto)
{
    ScratchFolder const folder;
    FltWriter flt;
    for (int i = 0; i < 30'000; ++i)
        flt.addRaw(32);
    flt.save(folder / "database.flt");
    FltRecordScan scan(folder / "database.flt");
    for (int i = 0; i < 30'000; ++i)
        ASSERT_TRUE(scan.next());
    ASSERT_TRUE(scan.next());
    EXPECT_NE(scan.record(), nullptr);
    EXPECT_FALSE(scan.next());
}

TEST(FltRecordScan, readsZerosForTheRevisionThatAFileOfAShortHeaderLacks)
{
    ScratchFolder const folder;
    std::string const path =
        folder.write("database.flt", FltWriter::big16(1) + FltWriter::big16(12) + "database");
    // Memory that was used before has other bytes; whether the allocator clears a part of a block depends on
    // how many it gave since.
    for (std::size_t count = 0; count < 8; ++count) {
        std::string const text(20, '\1');
        std::vector<std::string>(64, text).clear();
        std::vector<std::string> const taken(count, text);
        std::string problem;
        try {
            FltRecordScan const scan(path);
        } catch (std::runtime_error const& thrown) {
            problem = thrown.what();
        }
        EXPECT_EQ(problem, path + ": OpenFlight revision 0 isn't supported. Export the database at revision "
                                  "11 or newer.");
    }
}

TEST(FltRecordScan, saysThatADirectoryIsNoDatabase)
{
    ScratchFolder const folder;
    try {
        FltRecordScan const scan(folder / "");
        FAIL();
    } catch (std::runtime_error const& problem) {
        EXPECT_EQ(problem.what(), (folder / "") + ": this is a directory. Give the name of an OpenFlight "
                                                  "file (*.flt).");
    }
}

TEST(FltRecordScan, takesNothingThatBeginsWithAnotherRecord)
{
    ScratchFolder const folder;
    std::string const header = FltWriter().bytes(), group = FltWriter().add("Group").lastRecord();
    EXPECT_NO_THROW(FltRecordScan(folder.write("whole.flt", header + group)));
    for (std::string const& other :
         {group, group + header, header.substr(0, header.size() - 1), std::string()})
        EXPECT_THROW(FltRecordScan(folder.write("other.flt", other)), std::runtime_error) << other.size();
}
