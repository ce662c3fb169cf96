#include "statistics/FltStatisticsTool.h"

#include "convert/FltToInventor.h"
#include "parser/FltFileInput.h"
#include "parser/FltParser.h"
#include "records/FltRecord.h"
#include "records/FltRecordUnknown.h"
#include "support/ClosedInput.h"
#include "support/ConvertedRoot.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{

class FltStatisticsToolTest : public testing::Test
{
protected:
    FltStatisticsToolTest()
    {
        tool.setFltFile("models/tower.flt");
        tool.setStatFile(path.c_str());
        tool.setVectorOfFltRecords(records);
    }

    std::string written() const { return contentsOf(path); }

    ScratchFolder folder;
    std::string path = folder.path("tower.flt.stat");
    FltRecordUnknown low{12, 4}, high{200, 4}, below{-2, 4};
    std::vector<FltRecord*> records{&high, &low, &high};
    FltStatisticsTool tool;
};

/// A host that runs the parse, asks for the statistics, and then converts.
class StatisticsHost
{
public:
    explicit StatisticsHost(std::string const& path) : input(path.c_str()), parser(&input)
    {
        converter.setFltParser(&parser);
        converter.setResult(root.get());
    }
    ~StatisticsHost() { parser.setInput(nullptr); }

    StatisticsHost(StatisticsHost const&) = delete;
    StatisticsHost& operator=(StatisticsHost const&) = delete;

    StreamCapture out{std::cout};
    FltFileInput input;
    FltParser parser;
    ConvertedRoot root{new SoSeparator};
    FltToInventor converter;
};

constexpr char header[] = "#Openflight Statistics File\n\n"
                          "\n************************\n"
                          "models/tower.flt\n";

} // namespace

TEST_F(FltStatisticsToolTest, writesTheHeaderAndTheCountsInAscendingOrder)
{
    records.push_back(&below);
    tool.makeStatistics();
    EXPECT_EQ(written(), std::string(header) + " \n Opcode -2:  1 "
                                               " \n Opcode 12:  1 "
                                               " \n Opcode 200:  2 ");
}

TEST_F(FltStatisticsToolTest, writesTheHeaderAloneForAnEmptyVector)
{
    records.clear();
    tool.makeStatistics();
    EXPECT_EQ(written(), header);
}

TEST_F(FltStatisticsToolTest, doublesTheCountsInASecondRunAndAddsNoSecondHeader)
{
    tool.makeStatistics();
    tool.makeStatistics();
    EXPECT_EQ(written(), std::string(header) + " \n Opcode 12:  1 "
                                               " \n Opcode 200:  2 "
                                               " \n Opcode 12:  2 "
                                               " \n Opcode 200:  4 ");
}

TEST_F(FltStatisticsToolTest, appendsToAFileOfOthersWithoutAHeader)
{
    std::ofstream(path) << "kept";
    tool.makeStatistics();
    EXPECT_EQ(written(), "kept \n Opcode 12:  1  \n Opcode 200:  2 ");
}

TEST_F(FltStatisticsToolTest, guaranteesAFreshHeaderByMakeEmptyFile)
{
    std::ofstream(path) << "gone";
    tool.makeEmptyFile();
    EXPECT_EQ(written(), "");
    EXPECT_TRUE(std::filesystem::exists(path));
    tool.makeStatistics();
    EXPECT_EQ(written(), std::string(header) + " \n Opcode 12:  1  \n Opcode 200:  2 ");
}

TEST_F(FltStatisticsToolTest, copiesTheNamesAndTakesNewOnes)
{
    std::string name = "other.flt";
    tool.setFltFile(name.c_str());
    name.assign("xxxxxxxxx");
    records.clear();
    tool.makeStatistics();
    EXPECT_EQ(written(), "#Openflight Statistics File\n\n\n************************\nother.flt\n");
}

TEST_F(FltStatisticsToolTest, passesOverAFileThatCantBeOpenedAndStartsWithoutNames)
{
    StreamCapture const err(std::cerr);
    tool.setStatFile(folder.path("folder").c_str());
    std::filesystem::create_directory(folder.path("folder"));
    tool.makeEmptyFile();
    tool.makeStatistics();

    FltStatisticsTool unset;
    unset.makeEmptyFile();
    unset.makeStatistics();
    EXPECT_FALSE(unset.isOutputFileEmpty());
    unset.writeFltStatisticsHeader();
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(written(), "");
}

TEST_F(FltStatisticsToolTest, writesWhereStandardInputIsClosed)
{
    ClosedInput const input;
    records.clear();
    tool.makeStatistics();
    EXPECT_EQ(written(), header);
}

TEST_F(FltStatisticsToolTest, leavesALinkAndWhatItNamesAloneAndReportsThatOnce)
{
    ScratchFolder const folder;
    std::string const other = folder.write("precious", "kept");
    std::filesystem::create_symlink(other, folder / "a.flt.stat");
    StreamCapture const err(std::cerr);
    FltStatisticsTool tool;
    tool.setStatFile((folder / "a.flt.stat").c_str());
    tool.makeEmptyFile();
    tool.makeStatistics();
    EXPECT_EQ(contentsOf(other), "kept");
    EXPECT_EQ(err.str(),
              "WARNING ! No statistics are written: what stands at their place is a link, has a second name, "
              "or isn't a plain file. Remove it, or use a copy of the database: " +
                  (folder / "a.flt.stat") + "\n(Warning Level: 2)\n\n");
}

TEST(FltToInventorMakeStats, countsTheRecordsOfAHostThatAsksBeforeTheyGo)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter flt;
    flt.add("SoundPaletteTable").add("SoundPaletteNames").addRaw(53).push();
    flt.add("Group", {{"idASCII", "g1"}}).addRaw(82, std::string(60, '\0')).push().pop().pop();
    flt.save(path);
    std::ofstream(path + ".stat") << "of an earlier run";

    StatisticsHost host(path);
    ASSERT_EQ(host.parser.run(), 0);
    host.converter.makeStats();
    host.converter.visitAllFltRecords();
    host.converter.destroyAllFltRecords();

    EXPECT_EQ(contentsOf(path + ".stat"), "#Openflight Statistics File\n\n"
                                          "\n************************\n" +
                                              path +
                                              "\n"
                                              " \n Opcode 1:  1 "
                                              " \n Opcode 2:  1 "
                                              " \n Opcode 10:  2 "
                                              " \n Opcode 11:  2 "
                                              " \n Opcode 53:  1 "
                                              " \n Opcode 76:  1 "
                                              " \n Opcode 93:  2 ");
    EXPECT_GT(host.root.get()->getNumChildren(), 0);
}

TEST(FltToInventorMakeStats, doesNothingWithoutRecords)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter().save(path);
    StatisticsHost host(path);
    FltToInventor().makeStats();
    ASSERT_EQ(host.converter.convert(), 0);
    host.converter.makeStats();
    EXPECT_FALSE(std::filesystem::exists(path + ".stat"));
}
