#include "records/FltOpcodeTable.h"

#include "messages/FltFindingNumber.h"
#include "records/FltOpcodeName.h"
#include "records/FltRecordTable.h"

#include <gtest/gtest.h>

using Part = FltOpcodeRow::Part;

namespace
{

constexpr int beyondAll = 70000;

} // namespace

TEST(FltOpcodeTable, FindsEachRowByItsOpcode)
{
    int rows = 0;
    for (int opcode = -1; opcode <= beyondAll; ++opcode) {
        FltOpcodeRow const* const row = FltOpcodeTable::find(opcode);
        if (row == nullptr)
            continue;
        EXPECT_EQ(row->opcode, opcode);
        ++rows;
    }
    EXPECT_EQ(rows, 90);
}

TEST(FltOpcodeTable, HasARowForEveryClassOfRecords)
{
    for (int opcode = 0; opcode <= FltOpcode::last; ++opcode)
        EXPECT_TRUE(FltRecordTable::find(opcode) == nullptr || FltOpcodeTable::find(opcode) != nullptr)
            << opcode;
}

TEST(FltOpcodeTable, TellsThePartsOfAHierarchyFromWhatTheyAreMadeOf)
{
    EXPECT_EQ(FltOpcodeTable::partOf(FltOpcode::group), Part::node);
    EXPECT_EQ(FltOpcodeTable::partOf(FltOpcode::separatingPlane), Part::node);
    EXPECT_EQ(FltOpcodeTable::partOf(FltOpcode::face), Part::component);
    EXPECT_EQ(FltOpcodeTable::partOf(FltOpcode::mesh), Part::component);
    for (int const opcode :
         {FltOpcode::vertexList, FltOpcode::morphVertexList, FltOpcode::oldVertex, FltOpcode::oldVertexColor,
          FltOpcode::oldVertexColorNormal, FltOpcode::meshPrimitive})
        EXPECT_EQ(FltOpcodeTable::partOf(opcode), Part::corners) << opcode;
    EXPECT_EQ(FltOpcodeTable::partOf(FltOpcode::matrix), Part::ancillary);
    EXPECT_EQ(FltOpcodeTable::partOf(FltOpcode::material), Part::palette);
    EXPECT_EQ(FltOpcodeTable::partOf(FltOpcode::vertexColorUv), Part::vertex);
    EXPECT_EQ(FltOpcodeTable::partOf(6), Part::unknown);
    EXPECT_EQ(FltOpcodeTable::partOf(-1), Part::unknown);
    EXPECT_EQ(FltOpcodeTable::partOf(beyondAll), Part::unknown);
}

TEST(FltOpcodeTable, EveryLevelEndsWithTheOpcodeAfterItsFirst)
{
    EXPECT_EQ(FltOpcodeTable::partOf(FltOpcode::pushLevel), Part::push);
    EXPECT_EQ(FltOpcodeTable::partOf(FltOpcode::pushSubface), Part::push);
    EXPECT_EQ(FltOpcodeTable::partOf(FltOpcode::pushExtension), Part::pushExtension);
    for (int const push : {FltOpcode::pushLevel, FltOpcode::pushSubface})
        EXPECT_EQ(FltOpcodeTable::partOf(push + 1), Part::pop);
    EXPECT_EQ(FltOpcodeTable::partOf(FltOpcode::pushExtension + 1), Part::popExtension);
}

TEST(FltOpcodeTable, TakesNoLengthThatARecordCantHave)
{
    struct Lengths {
        int opcode;
        unsigned int shortest, longest;
    };
    for (Lengths const& each : {Lengths{FltOpcode::header, 128, 1024},
                                {FltOpcode::group, 24, 64},
                                {FltOpcode::object, 16, 64},
                                {FltOpcode::face, 24, 128},
                                {FltOpcode::oldVertex, 16, 24},
                                {FltOpcode::pushLevel, 4, 4},
                                {FltOpcode::dof, 100, 512},
                                {FltOpcode::matrix, 68, 68},
                                {FltOpcode::vector, 16, 16},
                                {FltOpcode::replicate, 8, 12},
                                {FltOpcode::instanceReference, 8, 8},
                                {FltOpcode::vertexColor, 36, 40}}) {
        EXPECT_FALSE(FltOpcodeTable::isPlausible(each.opcode, each.shortest - 1)) << each.opcode;
        EXPECT_TRUE(FltOpcodeTable::isPlausible(each.opcode, each.shortest)) << each.opcode;
        EXPECT_TRUE(FltOpcodeTable::isPlausible(each.opcode, each.longest)) << each.opcode;
        EXPECT_FALSE(FltOpcodeTable::isPlausible(each.opcode, each.longest + 1)) << each.opcode;
    }
    EXPECT_FALSE(FltOpcodeTable::isPlausible(6, 8));
}

TEST(FltOpcodeTable, NamesRecordsAndThoseWithoutANameByTheirOpcode)
{
    EXPECT_EQ(FltOpcodeName::of(FltOpcode::vertexPalette), "vertex palette");
    EXPECT_EQ(FltOpcodeName::of(300), "record 300");
    EXPECT_EQ(FltOpcodeName::of(65), "record 65");
    EXPECT_TRUE(FltOpcodeName::isKnown(FltOpcode::shaderPalette));
    EXPECT_FALSE(FltOpcodeName::isKnown(65));
    EXPECT_FALSE(FltOpcodeName::isKnown(6));
}

TEST(FltOpcodeTable, TellsWhatACompleteSceneDoesNotLack)
{
    for (int const opcode :
         {FltOpcode::header, FltOpcode::vertexPalette, FltOpcode::namePalette, FltOpcode::group,
          FltOpcode::object, FltOpcode::dof, FltOpcode::lod, FltOpcode::oldLOD, FltOpcode::text,
          FltOpcode::instanceDefinition, FltOpcode::lightPointSystem})
        EXPECT_TRUE(FltOpcodeTable::isSilent(opcode)) << opcode;
    for (int const opcode :
         {int(FltOpcode::soundPalette), int(FltOpcode::sound), int(FltOpcode::face), 65, 6, -1})
        EXPECT_FALSE(FltOpcodeTable::isSilent(opcode)) << opcode;
}

TEST(FltOpcodeTable, TellsWhichFindingTellsOfALoss)
{
    EXPECT_EQ(FltOpcodeTable::find(FltOpcode::replicate)->finding, FltFindingNumber::lostCopies);
    EXPECT_EQ(FltOpcodeTable::find(FltOpcode::translate)->finding, FltFindingNumber::lostTransformation);
    EXPECT_EQ(FltOpcodeTable::find(FltOpcode::group)->finding, 0);
}
