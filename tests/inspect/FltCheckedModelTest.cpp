#include "inspect/FltCheckedModel.h"

#include "records/FltOpcode.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <iostream>

TEST(FltCheckedModel, findsTheNodesOfTheInventoryForTheRecordsOfTheHierarchy)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.vertexPalette();
    double const corner = flt.vertex("VertexColor", 0, 0, 0);
    flt.push().add("Group").push().add("Object").push().face({corner}).pop().pop();
    flt.add("Group").pop().save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    FltCheckedModel const checked(inventory);
    ASSERT_EQ(inventory.nodes.size(), 4U);
    EXPECT_EQ(checked.numberOf(0), FltModelTree::root);
    for (std::uint32_t node = 1; node < 4; ++node) {
        EXPECT_EQ(checked.recordOf(checked.numberOf(node)).offset, inventory.nodes[node].offset);
        EXPECT_EQ(checked.nodeOf(checked.numberOf(node)), node);
    }
    EXPECT_EQ(checked.parentOf(checked.numberOf(2)), checked.numberOf(1));
    EXPECT_EQ(checked.parentOf(checked.numberOf(3)), FltModelTree::root);
    FltModelTree::Number const face = checked.model.tree[checked.numberOf(2)].firstChild;
    EXPECT_EQ(checked.recordOf(face).opcode, static_cast<std::uint32_t>(FltOpcode::face));
    EXPECT_EQ(checked.nodeOf(face), 2U);
    EXPECT_EQ(checked.nodeOf(checked.model.tree[face].firstChild), 2U);
    EXPECT_EQ(checked.paletteVertices, 1U);
    EXPECT_TRUE(checked.isWhole());
}

TEST(FltCheckedModel, isSilentAndNotWholeWhereTheFileIsDamaged)
{
    ScratchFolder const folder;
    FltWriter().push().pop().pop().addRaw(2).claimLength(0).save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    StreamCapture const errors(std::cerr);
    FltCheckedModel const checked(inventory);
    EXPECT_FALSE(checked.isWhole());
    EXPECT_EQ(errors.str(), "");
}

/// What follows damage is shown, so it is judged as well.
TEST(FltCheckedModel, readsWhatFollowsDamageAsTheCompleteConversionDoes)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.push().addRaw(2).claimLength(0);
    for (int i = 0; i < 20; ++i)
        flt.add("Group").push().add("Object").pop();
    flt.pop().save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    EXPECT_EQ(inventory.nodes.size(), 1U);
    EXPECT_GT(FltCheckedModel(inventory).model.tree.getCount(), 20);
}
