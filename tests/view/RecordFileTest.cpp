#include "view/RecordFile.h"

#include "LoadedViewDatabase.h"
#include "records/FltOpcode.h"
#include "support/StreamCapture.h"
#include "writer/EveryRecord.h"

#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>

namespace
{

using RecordFileTest = LoadedViewDatabase;

std::vector<std::string> namesBelow(RecordFile const& file, HierarchyRecord const& record)
{
    std::vector<std::string> names;
    for (int const child : record.children)
        names.push_back(file.hierarchy()[static_cast<std::size_t>(child)].name);
    return names;
}

TEST_F(RecordFileTest, KnowsTheHierarchy)
{
    EXPECT_EQ((std::vector<std::string>{"base", "door", "lamp", "far", "poster"}),
              namesBelow(loaded.records, loaded.records.hierarchy().front()));
    EXPECT_EQ((std::vector<std::string>{"red", "green"}), namesBelow(loaded.records, record("lamp")));
    EXPECT_EQ(FltOpcode::dof, record("door").opcode);
    EXPECT_EQ(1, record("panel").faces);
}

TEST_F(RecordFileTest, TakesLongNamesAndGivesThemWithTheFields)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "short"}}).add("LongID", {{"idASCII", "a much longer name"}}).pop();
    flt.save(folder.path("long.flt"));
    RecordFile const file(folder.path("long.flt"));
    HierarchyRecord const& group = file.hierarchy().back();
    EXPECT_EQ("a much longer name", group.name);
    auto const fields = file.fieldsOf(group);
    ASSERT_EQ(2U, fields.size());
    EXPECT_EQ("short", fields[0]["fields"]["idASCII"]);
    EXPECT_EQ("FltRecordLongID", fields[1]["class"]);
}

TEST_F(RecordFileTest, ReadsSilently)
{
    StreamCapture const out(std::cout);
    StreamCapture const err(std::cerr);
    everyRecord(1570).save(folder.path("all.flt"));
    RecordFile const file(folder.path("all.flt"));
    for (HierarchyRecord const& each : file.hierarchy())
        EXPECT_FALSE(file.fieldsOf(each).empty());
    EXPECT_EQ(0U, RecordFile(folder.path("missing.flt")).recordCount());
    EXPECT_EQ("", out.str());
    EXPECT_EQ("", err.str());
}

TEST_F(RecordFileTest, SurvivesLevelsThatDoNotBalance)
{
    FltWriter flt;
    flt.pop().pop().add("Group", {{"idASCII", "g"}}).push().push().add("Object", {{"idASCII", "o"}});
    flt.save(folder.path("odd.flt"));
    RecordFile const file(folder.path("odd.flt"));
    ASSERT_EQ(3U, file.hierarchy().size());
    EXPECT_EQ((std::vector<std::string>{"o"}), namesBelow(file, file.hierarchy()[1]));
}

TEST_F(RecordFileTest, ReadsWhatIsCutAtAnyByte)
{
    std::string const whole = everyRecordInBrief(1570).bytes();
    for (std::size_t size = 0; size < whole.size(); size += 37) {
        std::ofstream(folder.path("cut.flt"), std::ios::binary) << whole.substr(0, size);
        RecordFile const file(folder.path("cut.flt"));
        for (HierarchyRecord const& each : file.hierarchy())
            EXPECT_FALSE(file.fieldsOf(each).empty()) << size;
    }
}

} // namespace
