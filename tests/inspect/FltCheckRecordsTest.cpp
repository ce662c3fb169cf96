#include "inspect/FltCheckRecords.h"

#include "FamilyFindings.h"
#include "messages/FltFindingNumber.h"
#include "writer/FltWriter.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace Number = FltFindingNumber;

namespace
{

using Found = FamilyFindings<FltCheckRecords>;

std::vector<int> const nothing;

} // namespace

TEST(FltCheckRecords, findsAMultiplierOfZeroWhereTheRevisionHasOne)
{
    std::vector<int> const zero = {Number::zeroMultiplier};
    for (int const revision : {11, 12})
        EXPECT_EQ(Found::numbersIn(FltWriter(revision, {{"multiplierDiviserUnit", 0}})), zero) << revision;
    for (int const revision : {13, 14, 1570})
        EXPECT_EQ(Found::numbersIn(FltWriter(revision, {{"multiplierDiviserUnit", 0}})), nothing) << revision;
    EXPECT_EQ(Found::numbersIn(FltWriter(12, {{"multiplierDiviserUnit", 1}})), nothing);
}

TEST(FltCheckRecords, findsUnitsThatAreNone)
{
    for (int const unit : {0, 1, 4, 5, 8})
        EXPECT_EQ(Found::numbersIn(FltWriter(1570, {{"vertexCoordinateUnits", unit}})), nothing) << unit;
    std::vector<FltFinding> const findings = Found::in(FltWriter(1570, {{"vertexCoordinateUnits", 9}}));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind->number, Number::unknownUnit);
    EXPECT_EQ(findings[0].text, "unit 9");
    EXPECT_EQ(findings[0].offset, 0);
}

TEST(FltCheckRecords, findsUnitsBelowZeroThatAreNone)
{
    EXPECT_EQ(Found::in(FltWriter(1570, {{"vertexCoordinateUnits", 255}})).at(0).kind->number,
              Number::unknownUnit);
}

TEST(FltCheckRecords, tellsRecordsThatLackAPartOfTheirHeadFromThoseThatLackFields)
{
    FltWriter flt;
    flt.push().add("Group").add("Replicate").resizeLast(11).pop();
    std::vector<FltFinding> const fields = Found::in(flt);
    ASSERT_EQ(fields.size(), 1U);
    EXPECT_EQ(fields[0].kind->number, Number::shorterThanLayout);
    EXPECT_EQ(fields[0].text, "11 of 12 bytes");
    flt = FltWriter();
    flt.push().add("Group").add("Replicate").resizeLast(4).pop();
    EXPECT_EQ(Found::numbersIn(flt), std::vector<int>{Number::shorterThanLayout}) << "a head alone";
    for (unsigned const length : {2U, 3U, 4U}) {
        FltWriter head;
        head.push().addRaw(31).claimLength(length);
        std::vector<int> const numbers = Found::numbersIn(head);
        EXPECT_EQ(std::count(numbers.begin(), numbers.end(), Number::shorterThanHead), length < 4 ? 1 : 0)
            << length;
    }
}

namespace
{

/// A database in which such indices of textures are there twice, and which is long enough for a carriage
/// return to be missed.
FltWriter withTwice(std::vector<int> const& indices, std::size_t& first)
{
    FltWriter flt;
    flt.add("Comment", {{"textDescription", std::string(5000, 'x')}});
    for (int const index : indices)
        flt.add("TexturePattern", {{"fileName", "a"}, {"patternIndex", index}});
    first = 0;
    for (int const index : indices) {
        flt.add("TexturePattern", {{"fileName", "b"}, {"patternIndex", index}});
        if (first == 0)
            first = flt.lastOffset();
    }
    return flt;
}

} // namespace

TEST(FltCheckRecords, countsNumbersThatATransferAsTextMayHaveChanged)
{
    std::size_t first = 0;
    std::vector<FltFinding> findings = Found::in(withTwice({0x0a}, first));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind->number, Number::textTransfer);
    EXPECT_EQ(findings[0].text, "1 number with a line feed hit nothing, or are there twice");
    EXPECT_EQ(findings[0].offset, static_cast<std::int64_t>(first));
    findings = Found::in(withTwice({0x0a0a, 0x0a, 7}, first));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].text, "2 numbers with a line feed hit nothing, or are there twice");
    EXPECT_EQ(findings[0].offset, static_cast<std::int64_t>(first)) << "the first in the file";
    EXPECT_EQ(Found::numbersIn(withTwice({7}, first)), nothing);
    FltWriter once;
    once.add("Comment", {{"textDescription", std::string(5000, 'x')}});
    once.add("TexturePattern", {{"fileName", "a"}, {"patternIndex", 0x0a}});
    EXPECT_EQ(Found::numbersIn(once), nothing);
}
