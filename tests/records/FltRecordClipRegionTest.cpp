#include "records/FltRecordClipRegion.h"

#include "support/RecordText.h"

#include <gtest/gtest.h>

#include <climits>
#include <numeric>
#include <sstream>

namespace
{

FltWriter clipRegion()
{
    std::vector<double> coefficients(20);
    std::iota(coefficients.begin(), coefficients.end(), 100);
    return FltWriter().add("ClipRegion", {{"idASCII", "clip1"},
                                          {"reserved1", -1},
                                          {"reserved2", -2},
                                          {"flags", std::string("\1\0\2\1\xff\1", 6)},
                                          {"clipRegion1", {1.5, 2.5, 3.5}},
                                          {"clipRegion2", {4, 5, 6}},
                                          {"clipRegion3", {-7, -8, -9}},
                                          {"clipRegion4", {10, 11, 12}},
                                          {"clipRegionCoefs", coefficients}});
}

TEST(FltRecordClipRegionTest, DecodesEveryField)
{
    auto const record = decodeLastAs<FltRecordClipRegion>(clipRegion());
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->idASCII, "clip1");
    EXPECT_EQ(record->reserved1, -1);
    EXPECT_EQ(record->reserved2, -2);
    EXPECT_EQ(std::vector<int>(std::begin(record->flags), std::end(record->flags)),
              (std::vector<int>{1, 0, 2, 1, 255, 1}));
    auto const corner = [](double const(&values)[3]) {
        return std::vector<double>(std::begin(values), std::end(values));
    };
    EXPECT_EQ(corner(record->clipRegion1), (std::vector<double>{1.5, 2.5, 3.5}));
    EXPECT_EQ(corner(record->clipRegion2), (std::vector<double>{4, 5, 6}));
    EXPECT_EQ(corner(record->clipRegion3), (std::vector<double>{-7, -8, -9}));
    EXPECT_EQ(corner(record->clipRegion4), (std::vector<double>{10, 11, 12}));
    for (int coefficient = 0; coefficient < 4; ++coefficient)
        for (int plane = 0; plane < 5; ++plane)
            EXPECT_EQ(record->clipRegionCoefs[coefficient][plane], 100 + 5 * coefficient + plane);
}

TEST(FltRecordClipRegionTest, DumpsTheAddressOfItsFlagsAndNotWhatTheyHold)
{
    auto const record = decodeLastAs<FltRecordClipRegion>(clipRegion());
    ASSERT_NE(record, nullptr);
    std::ostringstream address;
    address << static_cast<void const*>(record->flags);
    EXPECT_EQ(dumpOf(*record), frame("\n CLIP REGION RECORD ", "PRIMARY_RECORD", 98, 280) +
                                   "idASCII: clip1\n"
                                   "reserved1: -1\n"
                                   "reserved2: -2\n"
                                   "flags: " +
                                   address.str() +
                                   "\n"
                                   "clipRegion1: 1.5 2.5 3.5\n"
                                   "clipRegion2: 4 5 6\n"
                                   "clipRegion3: -7 -8 -9\n"
                                   "clipRegion4: 10 11 12\n"
                                   "clipRegionCoefs: \n"
                                   "|  100  101  102  103  104    |\n"
                                   "|  105  106  107  108  109    |\n"
                                   "|  110  111  112  113  114    |\n"
                                   "|  115  116  117  118  119    |\n");
}

TEST(FltRecordClipRegionTest, APlaneIsEnabledByAFlagOfExactly1)
{
    auto const record = decodeLastAs<FltRecordClipRegion>(clipRegion());
    ASSERT_NE(record, nullptr);
    EXPECT_TRUE(record->isEnabledClipPlane(0));
    EXPECT_FALSE(record->isEnabledClipPlane(1));
    EXPECT_FALSE(record->isEnabledClipPlane(2)) << "a flag of 2 doesn't enable";
    EXPECT_TRUE(record->isEnabledClipPlane(3));
    EXPECT_FALSE(record->isEnabledClipPlane(4));
    EXPECT_TRUE(record->isEnabledClipPlane(5)) << "the sixth flag is there, though it has no plane";
}

TEST(FltRecordClipRegionTest, APlaneWithoutAFlagIsNotEnabled)
{
    auto const record = decodeLastAs<FltRecordClipRegion>(clipRegion());
    ASSERT_NE(record, nullptr);
    for (int plane : {-1, 6, 7, 48, INT_MIN, INT_MAX})
        EXPECT_FALSE(record->isEnabledClipPlane(plane)) << plane;
}

TEST(FltRecordClipRegionTest, HasFivePlanes)
{
    EXPECT_EQ(FltRecordClipRegion::getUsedFlags(), 5);
}

TEST(FltRecordClipRegionTest, AnIdOfEightCharactersRunsOnIntoTheReservedFields)
{
    auto const record = decodeLast(FltWriter().add(
        "ClipRegion", {{"idASCII", "CLIPNAME"}, {"reserved1", 0x44434241}, {"reserved2", 0x45}}));
    EXPECT_NE(dumpOf(*record).find("\nidASCII: CLIPNAMEABCDE\nreserved1: "), std::string::npos);
}

} // namespace
