#include "records/FltRecordTable.h"

#include "records/FltOpcode.h"
#include "records/FltRecord.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>

namespace
{

/// How far the decoder of each opcode reads, as the layouts have it in their longest revision. Lists count as
/// empty: what they hold is bounded by the record's length.
std::map<int, std::size_t> const reaches = {
    {1, 324},    {2, 32},   {3, 40},    {4, 28},    {5, 80},   {7, 16},   {8, 20},    {9, 32},    {10, 4},
    {11, 4},     {14, 380}, {19, 4},    {20, 4},    {21, 24},  {22, 24},  {31, 4},    {32, 4232}, {33, 4},
    {49, 68},    {50, 16},  {51, 28},   {52, 72},   {60, 12},  {61, 8},   {62, 8},    {63, 216},  {64, 216},
    {66, 11780}, {67, 8},   {68, 40},   {69, 56},   {70, 64},  {71, 48},  {72, 4},    {73, 72},   {74, 56},
    {76, 60},    {78, 56},  {79, 44},   {80, 48},   {82, 60},  {83, 280}, {91, 88},   {93, 32},   {94, 68},
    {95, 320},   {96, 28},  {97, 12},   {98, 280},  {100, 24}, {101, 64}, {102, 210}, {105, 16},  {106, 24},
    {108, 32},   {109, 32}, {111, 156}, {112, 580}, {113, 84}, {114, 10}};

TEST(FltRecordTableTest, ADecoderReachesToTheEndOfItsLongestLayout)
{
    for (auto const& [opcode, reach] : reaches)
        EXPECT_EQ(FltRecordTable::reachOf(opcode, 4, 1580), reach) << "opcode " << opcode;
}

TEST(FltRecordTableTest, TheReachGoesByTheRevisionWhereTheLayoutDoes)
{
    auto const reach = [](int opcode, int revision) { return FltRecordTable::reachOf(opcode, 4, revision); };
    EXPECT_EQ(reach(2, 1420), 28U);
    EXPECT_EQ(reach(2, 1421), 32U);
    EXPECT_EQ(reach(5, 1499), 64U);
    EXPECT_EQ(reach(5, 1500), 80U);
    EXPECT_EQ(reach(68, 1539), 36U);
    EXPECT_EQ(reach(68, 1540), 40U);
    EXPECT_EQ(reach(70, 1579), 60U);
    EXPECT_EQ(reach(70, 1580), 64U);
    EXPECT_EQ(reach(32, 13), 4U + 264);
    EXPECT_EQ(reach(32, 14), 4U + 2048);
    EXPECT_EQ(reach(32, 1421), 4232U);
    EXPECT_EQ(reach(1, 0), 324U) << "a header tells its revision itself";
}

TEST(FltRecordTableTest, TheReachOfAMorphVertexListGoesByItsLength)
{
    EXPECT_EQ(FltRecordTable::reachOf(89, 4, 1580), 4U);
    EXPECT_EQ(FltRecordTable::reachOf(89, 20, 1580), 4U + 4 + 16);
}

TEST(FltRecordTableTest, AnOpcodeWithoutAClassReachesItsLength)
{
    for (int const opcode : {-1, 0, 6, 53, 110, 115, 32767})
        EXPECT_EQ(FltRecordTable::reachOf(opcode, 77, 1580), 77U) << "opcode " << opcode;
}

TEST(FltRecordTableTest, EveryRowMakesARecordOfItsOwnOpcode)
{
    int rows = 0;
    for (int opcode = -5; opcode < 200; ++opcode) {
        FltRecordRow const* const row = FltRecordTable::find(opcode);
        if (row == nullptr)
            continue;
        ++rows;
        EXPECT_EQ(row->opcode, opcode);
        std::unique_ptr<FltRecord> const record(row->make(4, 1570));
        EXPECT_EQ(record->getOpcode(), opcode == 82 ? 76 : opcode);
        EXPECT_EQ(record->getLength(), 4U);
        EXPECT_EQ(row->className.substr(0, 9), "FltRecord");
    }
    EXPECT_EQ(rows, 61);
}

TEST(FltRecordTableTest, WhatOnlyTheCompleteConversionReadsHasNoClassHere)
{
    for (int const opcode :
         {FltOpcode::uvList, FltOpcode::mesh, FltOpcode::localVertexPool, FltOpcode::meshPrimitive,
          FltOpcode::lightPointAppearancePalette, FltOpcode::indexedLightPoint, FltOpcode::indexedString})
        EXPECT_EQ(FltRecordTable::find(opcode), nullptr) << opcode;
}

TEST(FltRecordTableTest, AWholeRecordHasAtLeastWhatItsLayoutHasWithoutWhatMayBeLeftOut)
{
    EXPECT_EQ(FltRecordTable::leastOf(FltOpcode::face, 1499), 64U);
    EXPECT_EQ(FltRecordTable::leastOf(FltOpcode::face, 1500), 80U);
    EXPECT_EQ(FltRecordTable::leastOf(FltOpcode::oldVertex, 13), 16U);
    EXPECT_EQ(FltRecordTable::leastOf(FltOpcode::colorPalette, 1421), 4228U); // without the colours' names
    EXPECT_EQ(FltRecordTable::leastOf(FltOpcode::colorPalette, 14), 2052U);
    EXPECT_EQ(FltRecordTable::leastOf(FltOpcode::header, 1570), 16U);         // tools write several lengths
    EXPECT_EQ(FltRecordTable::leastOf(FltOpcode::texturePattern, 1570), 96U); // the shorter one of two
    EXPECT_EQ(FltRecordTable::leastOf(FltOpcode::multitexture, 1570), 4U);
    EXPECT_EQ(FltRecordTable::leastOf(FltOpcode::mesh, 1570), 4U);
    EXPECT_EQ(FltRecordTable::leastOf(6, 1570), 4U);
}

} // namespace
