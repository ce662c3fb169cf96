#include "inspect/FltCheck.h"

#include "FamilyFindings.h"
#include "loader/FltLoader.h"
#include "support/FaultyDatabases.h"
#include "support/SameText.h"
#include "writer/EveryRecord.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

namespace
{

std::string findTexture(std::string const& name, std::string const& database)
{
    std::filesystem::path const file =
        std::filesystem::path(database).parent_path() / std::filesystem::path(name).filename();
    return std::filesystem::exists(file) ? file.string() : "";
}

std::vector<FltFinding> findingsIn(std::string const& path, bool isExact = false)
{
    FltInventory const inventory(path);
    FltCheck check(inventory);
    check.checkRecords();
    check.checkGeometry();
    check.checkPalettes();
    check.checkFiles(FltDependencies(inventory, findTexture));
    check.checkPictures(FltLoader().loadVisual(path).distinctTextures());
    check.checkHierarchy();
    check.checkVisibility();
    if (isExact)
        check.checkExactConversion();
    return check.findings();
}

std::set<int> numbersOf(std::vector<FltFinding> const& findings)
{
    std::set<int> numbers;
    for (FltFinding const& finding : findings)
        numbers.insert(finding.kind->number);
    return numbers;
}

constexpr int firstOfExact = 801;

/// All that is told of findings, with names of files as they are in the folder.
std::string textOf(std::vector<FltFinding> const& findings, ScratchFolder const& folder)
{
    std::ostringstream os;
    for (FltFinding const& finding : findings)
        os << finding.kind->code() << ' ' << finding.file << " at " << finding.offset << ", opcode "
           << finding.opcode << ", node \"" << finding.node << "\", " << finding.count
           << " times: " << finding.text << '\n';
    return withoutFolder(os.str(), folder);
}

class FltCheckOfFault : public testing::TestWithParam<int>
{
protected:
    FaultyDatabase const& database() const
    {
        auto const& all = faultyDatabases();
        return *std::find_if(all.begin(), all.end(),
                             [](FaultyDatabase const& one) { return one.number == GetParam(); });
    }
    ScratchFolder folder;
};

class FltCheckOfTwin : public FltCheckOfFault
{
};

std::vector<int> faultsWithTwins()
{
    std::vector<int> numbers;
    for (FaultyDatabase const& database : faultyDatabases())
        if (database.writeTwin)
            numbers.push_back(database.number);
    return numbers;
}

std::vector<int> allFaults()
{
    std::vector<int> numbers;
    for (FaultyDatabase const& database : faultyDatabases())
        numbers.push_back(database.number);
    return numbers;
}

std::string nameOf(testing::TestParamInfo<int> const& info)
{
    return "FLT" + std::to_string(info.param);
}

} // namespace

TEST_P(FltCheckOfFault, isFoundAndNothingElse)
{
    std::vector<FltFinding> const findings = findingsIn(database().write(folder), GetParam() >= firstOfExact);
    std::set<int> expected = database().others;
    expected.insert(GetParam());
    EXPECT_EQ(numbersOf(findings), expected);
}

INSTANTIATE_TEST_SUITE_P(Each, FltCheckOfFault, testing::ValuesIn(allFaults()), nameOf);

TEST_P(FltCheckOfTwin, findsNothing)
{
    EXPECT_EQ(numbersOf(findingsIn(database().writeTwin(folder), GetParam() >= firstOfExact)),
              std::set<int>{});
}

INSTANTIATE_TEST_SUITE_P(Each, FltCheckOfTwin, testing::ValuesIn(faultsWithTwins()), nameOf);

/// The file has place, record, node, text and count of each, as people read them in a report.
TEST(FltCheck, tellsOfEachFaultWhereItIsAndWhatItIs)
{
    std::string text;
    for (FaultyDatabase const& database : faultyDatabases()) {
        ScratchFolder const folder;
        text += textOf(findingsIn(database.write(folder), database.number >= firstOfExact), folder);
    }
    expectSameText(text, contentsOf(VELLOREADER_GOLDEN "findings.txt"));
}

TEST(FltCheck, hasAFaultyDatabaseForEachKindThatADatabaseCanProvoke)
{
    std::vector<int> const faults = allFaults();
    for (FltFindingKind const& kind : FltFindingTable())
        EXPECT_TRUE(kind.number == 901 || std::count(faults.begin(), faults.end(), kind.number) == 1)
            << kind.code();
}

TEST(FltCheck, saysNothingOfAFaultlessDatabase)
{
    ScratchFolder const folder;
    faultlessDatabase().save(folder / "database.flt");
    EXPECT_TRUE(findingsIn(folder / "database.flt", true).empty());
}

TEST(FltCheck, findsNoShortRecordAndNoUnknownOneInADatabaseOfEveryRecord)
{
    ScratchFolder const folder;
    for (int const revision : {11, 13, 14, 1420, 1421, 1500, 1540, 1550, 1570, 1580}) {
        everyRecord(revision).save(folder / "every.flt");
        for (FltFinding const& finding : findingsIn(folder / "every.flt"))
            EXPECT_GE(finding.kind->number, 200) << "at revision " << revision << ": " << finding.text;
    }
}

TEST(FltCheck, tellsPlaceRecordNodeAndText)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("ColorPalette").push().add("Group", {{"idASCII", "g1"}}).push();
    flt.add("InstanceReference", {{"instanceDefinitionNumber", 7}});
    std::size_t const offset = flt.lastOffset();
    flt.add("ExternalReference", {{"asciiPath", "x.flt"}}).pop().pop().save(folder / "database.flt");
    faultlessDatabase().save(folder / "x.flt");
    std::vector<FltFinding> const findings = findingsIn(folder / "database.flt");
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind->code(), "FLT-506");
    EXPECT_EQ(findings[0].file, folder / "database.flt");
    EXPECT_EQ(findings[0].offset, static_cast<std::int64_t>(offset));
    EXPECT_EQ(findings[0].opcode, 61);
    EXPECT_EQ(findings[0].node, "g1/7");
    EXPECT_EQ(findings[0].text, "instance 7");
    EXPECT_EQ(findings[0].count, 1U);
}

TEST(FltCheck, countsWhatIsFoundSeveralTimesInANode)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("ColorPalette").push().add("Object", {{"idASCII", "o1"}}).push();
    flt.add("Face").add("Face").add("Face").pop().pop().save(folder / "database.flt");
    std::vector<FltFinding> const findings = findingsIn(folder / "database.flt");
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].count, 3U);
}

TEST(FltCheck, keepsAThousandFindingsOfAKindAndCountsTheRest)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.push();
    for (int i = 0; i < 1234; ++i)
        flt.add("InstanceReference", {{"instanceDefinitionNumber", 7}});
    flt.add("Text").pop().save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    FltCheck check(inventory);
    check.checkHierarchy();
    EXPECT_EQ(check.findings().size(), FltCheck::mostOfAKind);
    EXPECT_EQ(check.leftOut(), (std::map<int, std::uint64_t>{{506, 234}}));
}

TEST(FltCheck, tellsUndefinedMappingsOnceForEachTexture)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("ColorPalette").add("TexturePattern", {{"fileName", "tree.rgb"}, {"patternIndex", 3}}).push();
    for (int i = 0; i < 3; ++i) {
        flt.add("Object", {{"idASCII", "o" + std::to_string(i)}}).push();
        flt.add("Face", {{"textureMappingIndex", 5}});
        flt.add("Face", {{"textureMappingIndex", 5 + i}, {"texturePatternIndex", 3}}).pop();
    }
    flt.pop().save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    FltCheck check(inventory);
    check.checkPalettes();
    std::vector<FltFinding> const findings = check.findings();
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0].text, "faces without a texture: texture mapping 5");
    EXPECT_EQ(findings[1].text, "\"tree.rgb\": texture mapping 5 and others");
    EXPECT_EQ(findings[1].kind->code(), "FLT-305");
    EXPECT_EQ(findings[1].count, 3U);
}

/// A face without an area was told by FLT-202 and FLT-901.
TEST(FltCheck, leavesOutOmissionsThatHaveFindingsOfTheirOwn)
{
    for (FaultyDatabase const& database : faultyDatabases()) {
        bool const isToldOtherwise =
            std::set<int>{201, 202, 203, 206, 208, 402, 404, 506, 511}.count(database.number) != 0;
        if (!isToldOtherwise)
            continue;
        ScratchFolder const folder;
        std::string const path = database.write(folder);
        FltInventory const inventory(path);
        FltCheck check(inventory);
        FltVisual const visual = FltLoader().loadVisual(path);
        EXPECT_FALSE(visual.omissions.empty()) << database.number;
        for (FltOmission const& omission : visual.omissions)
            check.addOmission(omission.kind, omission.count);
        EXPECT_TRUE(check.findings().empty()) << database.number << ": " << check.findings()[0].text;
    }
}

TEST(FltCheck, tellsWhatAConversionLeavesOut)
{
    ScratchFolder const folder;
    faultlessDatabase().save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    FltCheck check(inventory);
    check.addOmission("sounds", 3);
    ASSERT_EQ(check.findings().size(), 1U);
    EXPECT_EQ(check.findings()[0].kind->number, 901);
    EXPECT_EQ(check.findings()[0].text, "sounds");
    EXPECT_EQ(check.findings()[0].offset, FltFinding::nowhere);
    EXPECT_EQ(check.findings()[0].opcode, 0);
    EXPECT_EQ(check.findings()[0].node, "");
    EXPECT_EQ(check.findings()[0].count, 3U);
}

TEST(FltFindingTable, findsKindsByTheirCodes)
{
    EXPECT_EQ(FltFindingTable::find("FLT-101")->number, 101);
    EXPECT_EQ(FltFindingTable::of(604).code(), "FLT-604");
    EXPECT_EQ(FltFindingTable::find("FLT-100"), nullptr);
    EXPECT_EQ(FltFindingTable::find("101"), nullptr);
}

TEST(FltFindingTable, saysOfEachKindWhatItIsWhyItMattersAndHowToMendIt)
{
    for (FltFindingKind const& kind : FltFindingTable()) {
        EXPECT_NE(kind.title.back(), '.') << kind.code();
        EXPECT_EQ(kind.why.back(), '.') << kind.code();
        EXPECT_EQ(kind.mend.back(), '.') << kind.code();
    }
}
