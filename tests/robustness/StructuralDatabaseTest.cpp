#include "robustness/StructuralDatabase.h"

#include "messages/FltLimits.h"
#include "robustness/BrokenDatabases.h"
#include "robustness/Mutations.h"

#include "records/FltOpcode.h"
#include "records/FltUtils.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>

namespace
{

constexpr unsigned some = 300;
constexpr int exponentOf1e300 = 0x7e30; // in the first two bytes of a double

unsigned opcodeOf(std::string const& record)
{
    return FltUtils::word16At(record.data());
}

/// The deepest level that the pushes and pops of a file open.
int depthOf(std::string const& bytes)
{
    int level = 0;
    int deepest = 0;
    for (std::string const& record : recordsOf(bytes)) {
        level += opcodeOf(record) == FltOpcode::pushLevel  ? 1
                 : opcodeOf(record) == FltOpcode::popLevel ? -1
                                                           : 0;
        deepest = std::max(deepest, level);
    }
    return deepest;
}

/// Whether a translation of a file has a number of 1e300 or more, infinite, or none.
bool hasOddNumber(std::string const& bytes)
{
    for (std::string const& record : recordsOf(bytes))
        if (opcodeOf(record) == FltOpcode::translate)
            for (std::size_t at = 8; at + 8 <= record.size(); at += 8)
                if ((FltUtils::word16At(record.data() + at) & 0x7fff) >= exponentOf1e300)
                    return true;
    return false;
}

} // namespace

TEST(StructuralDatabaseTest, IsTheSameForTheSameNumber)
{
    for (unsigned number = 0; number < 20; ++number) {
        StructuralDatabase const first(number), second(number);
        ASSERT_EQ(first.files().size(), second.files().size());
        for (std::size_t file = 0; file < first.files().size(); ++file)
            EXPECT_EQ(first.files()[file].bytes, second.files()[file].bytes);
    }
    EXPECT_NE(StructuralDatabase(1).files()[0].bytes, StructuralDatabase(2).files()[0].bytes);
}

TEST(StructuralDatabaseTest, IsDamagedInAThirdOfAll)
{
    unsigned damaged = 0;
    for (unsigned number = 0; number < some; ++number)
        damaged += StructuralDatabase(number).isDamaged() ? 1 : 0;
    EXPECT_EQ(damaged, some / 3);
}

TEST(StructuralDatabaseTest, HoldsEveryStructureOfTheFormatInSomeOfThem)
{
    std::set<unsigned> opcodes;
    std::set<unsigned> revisions;
    std::size_t mostFiles = 0;
    bool hasOdd = false;
    for (unsigned number = 0; number < some; ++number) {
        StructuralDatabase const database(number);
        mostFiles = std::max(mostFiles, database.files().size());
        if (database.isDamaged())
            continue;
        for (StructuralDatabase::File const& file : database.files()) {
            for (std::string const& record : recordsOf(file.bytes))
                opcodes.insert(opcodeOf(record));
            revisions.insert(FltUtils::word32At(file.bytes.data() + 12));
            hasOdd = hasOdd || hasOddNumber(file.bytes);
        }
    }
    for (int const opcode : {FltOpcode::group,
                             FltOpcode::oldLOD,
                             FltOpcode::object,
                             FltOpcode::face,
                             FltOpcode::oldVertex,
                             FltOpcode::oldVertexColor,
                             FltOpcode::dof,
                             FltOpcode::pushSubface,
                             FltOpcode::popSubface,
                             FltOpcode::pushExtension,
                             FltOpcode::popExtension,
                             FltOpcode::continuation,
                             FltOpcode::comment,
                             FltOpcode::colorPalette,
                             FltOpcode::longID,
                             FltOpcode::matrix,
                             FltOpcode::multitexture,
                             FltOpcode::uvList,
                             FltOpcode::separatingPlane,
                             FltOpcode::replicate,
                             FltOpcode::instanceReference,
                             FltOpcode::texturePattern,
                             FltOpcode::externalReference,
                             FltOpcode::instanceDefinition,
                             FltOpcode::vertexList,
                             FltOpcode::lod,
                             FltOpcode::rotateAboutPoint,
                             FltOpcode::mesh,
                             FltOpcode::localVertexPool,
                             FltOpcode::meshPrimitive,
                             FltOpcode::morphVertexList,
                             FltOpcode::sound,
                             FltOpcode::generalMatrix,
                             FltOpcode::text,
                             FltOpcode::switchNode,
                             FltOpcode::clipRegion,
                             FltOpcode::lightSource,
                             FltOpcode::lightPoint,
                             FltOpcode::lightPointSystem})
        EXPECT_EQ(opcodes.count(static_cast<unsigned>(opcode)), 1U) << opcode;
    EXPECT_EQ(revisions.size(), std::size(changingRevisions));
    EXPECT_GT(mostFiles, 32U);
    EXPECT_TRUE(hasOdd);
}

TEST(StructuralDatabaseTest, NestsARareOneDeeperThanAConversionGoes)
{
    for (unsigned const number : {1019U, 3430U, 3503U}) { // three of the four among the first six thousand
        StructuralDatabase const database(number);
        int deepest = 0;
        for (StructuralDatabase::File const& file : database.files())
            deepest = std::max(deepest, depthOf(file.bytes));
        EXPECT_GT(deepest, FltLimits::hierarchyDepth) << number;
    }
}
