#include "view/SceneRecords.h"

#include "LoadedViewDatabase.h"
#include "records/FltOpcode.h"
#include "support/StreamCapture.h"
#include "writer/EveryRecord.h"

#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>

namespace
{

using SceneRecordsTest = LoadedViewDatabase;

std::vector<std::string> classesOf(std::vector<nlohmann::ordered_json> const& records)
{
    std::vector<std::string> classes;
    for (nlohmann::ordered_json const& record : records)
        classes.push_back(record.at("class"));
    return classes;
}

TEST_F(SceneRecordsTest, TellsTheKindTheNameAndTheFacesOfARecord)
{
    SceneRecords::Summary const panel = loaded.records.summaryOf(place("panel"));
    EXPECT_EQ(FltOpcode::object, panel.opcode);
    EXPECT_EQ("panel", panel.name);
    EXPECT_EQ(1, panel.faces);
    EXPECT_EQ(0, loaded.records.summaryOf(place("door")).faces) << "they belong to its object";
    SceneRecords::Summary const root = loaded.records.summaryOf({path, 0});
    EXPECT_EQ(FltOpcode::header, root.opcode);
    EXPECT_EQ("yard", root.name);
    EXPECT_EQ(0, root.faces);
}

TEST_F(SceneRecordsTest, CountsTheFacesOfARecordAndNotThoseOfOtherNodes)
{
    FltWriter flt;
    flt.vertexPalette();
    flt.push();
    flt.add("Object", {{"idASCII", "o"}});
    std::size_t const object = flt.lastOffset();
    flt.add("Comment").push();
    flt.add("Face").push().add("VertexList").pop();
    flt.add("PushSubface").add("Face").add("PopSubface");
    flt.add("Group").push().add("Face").add("Face").pop();
    flt.add("Face").pop().add("Group").push().add("Face").pop().pop();
    std::string const file = folder.path("faces.flt");
    flt.save(file);
    SceneRecords records(file);
    EXPECT_EQ(3, records.summaryOf({file, object}).faces);
}

TEST_F(SceneRecordsTest, GivesARecordWithThoseThatTellMoreOfIt)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "short"}});
    std::size_t const group = flt.lastOffset();
    flt.add("LongID", {{"idASCII", "a much longer name"}}).add("Comment").add("Matrix");
    flt.push().add("Group").pop().pop();
    std::string const file = folder.path("long.flt");
    flt.save(file);
    SceneRecords records(file);
    EXPECT_EQ("a much longer name", records.summaryOf({file, group}).name);
    auto const fields = records.fieldsOf({file, group});
    EXPECT_EQ((std::vector<std::string>{"FltRecordGroup", "FltRecordLongID", "FltRecordComment",
                                        "FltRecordMatrix"}),
              classesOf(fields));
    EXPECT_EQ("short", fields[0]["fields"]["idASCII"]);
}

TEST_F(SceneRecordsTest, GivesTheFirstFacesOfARecord)
{
    FltWriter flt;
    flt.push().add("Object");
    std::size_t const object = flt.lastOffset();
    flt.push();
    for (int i = 0; i < 5; ++i)
        flt.add("Face").add("Comment");
    flt.pop().pop();
    std::string const file = folder.path("five.flt");
    flt.save(file);
    SceneRecords records(file);
    EXPECT_EQ(5U, records.facesOf({file, object}, 100).size());
    auto const two = records.facesOf({file, object}, 2);
    EXPECT_EQ((std::vector<std::string>{"FltRecordFace", "FltRecordFace"}), classesOf(two));
    EXPECT_LT(two[0]["offset"], two[1]["offset"]);
}

TEST_F(SceneRecordsTest, ReadsRecordsOfOtherFilesInAnyOrder)
{
    std::string const first = save(folder.path("first.flt"));
    FltWriter flt(1570, {{"id", "second"}});
    flt.save(folder.path("second.flt"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ("yard", loaded.records.summaryOf({first, 0}).name);
        EXPECT_EQ("second", loaded.records.summaryOf({folder.path("second.flt"), 0}).name);
        EXPECT_EQ("lamp", loaded.records.summaryOf(place("lamp")).name);
    }
}

TEST_F(SceneRecordsTest, ReadsTheDatabaseOnceForAllOfItsRecords)
{
    FltRecordPlace const lamp = place("lamp");
    std::remove(path.c_str());
    EXPECT_EQ("lamp", loaded.records.summaryOf(lamp).name);
    EXPECT_FALSE(loaded.records.fieldsOf(place("door")).empty());
}

TEST_F(SceneRecordsTest, HasNoRecordsOfAFileThatIsGoneAndSaysNothing)
{
    StreamCapture const out(std::cout);
    StreamCapture const err(std::cerr);
    SceneRecords records(folder.path("missing.flt"));
    FltRecordPlace const gone{folder.path("missing.flt"), 0};
    EXPECT_EQ(0, records.summaryOf(gone).opcode);
    EXPECT_TRUE(records.fieldsOf(gone).empty());
    EXPECT_TRUE(records.facesOf(gone, 5).empty());
    EXPECT_TRUE(loaded.records.fieldsOf({path, 1u << 30}).empty());
    EXPECT_EQ("", out.str() + err.str());
}

TEST_F(SceneRecordsTest, ReadsAtAnyByteWithoutLeavingTheFile)
{
    std::string const file = folder.path("all.flt");
    FltWriter const flt = everyRecordInBrief(1570);
    flt.save(file);
    SceneRecords records(file);
    for (std::size_t offset = 0; offset < flt.bytes().size(); offset += 13) {
        static_cast<void>(records.summaryOf({file, offset}));
        static_cast<void>(records.facesOf({file, offset}, 3));
    }
    EXPECT_EQ(FltOpcode::header, records.summaryOf({file, 0}).opcode);
}

} // namespace
