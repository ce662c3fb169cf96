#include "model/FltModelTree.h"

#include "messages/FltLimits.h"
#include "model/FltModelRecordReader.h"
#include "records/FltOpcode.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace
{

using Place = FltModelTree::Place;

/// A tree of what a writer holds after its header, and what became of the records.
struct Grown {
    explicit Grown(FltWriter const& flt, int levelsAbove = 0) : bytes(flt.bytes()), tree(levelsAbove)
    {
        StreamCapture const err(std::cerr);
        FltModelRecordReader reader(bytes.data(), bytes.size(), true);
        FltRecordView record;
        reader.next(record);
        while (reader.next(record))
            ++places[tree.add(record)];
        messages = err.str();
    }

    /// The nodes as "4(5 5(7))": opcodes, and in brackets those below them.
    std::string text(FltModelTree::Number parent = FltModelTree::root) const
    {
        std::string list;
        for (auto child = tree[parent].firstChild; child != FltModelTree::none;
             child = tree[child].nextSibling) {
            std::string const below = text(child);
            list += (list.empty() ? "" : " ") + std::to_string(tree.recordOf(child).opcode) +
                    (below.empty() ? "" : "(" + below + ")");
        }
        return list;
    }

    /// Opcodes of what says more about a node.
    std::vector<std::uint32_t> ancillaries(FltModelTree::Number number) const
    {
        std::vector<std::uint32_t> opcodes;
        for (FltRecordView const& record : tree.ancillaries(number))
            opcodes.push_back(record.opcode);
        EXPECT_EQ(tree.ancillaries(number).empty(), opcodes.empty());
        return opcodes;
    }

    std::string bytes;
    FltModelTree tree;
    std::map<Place, int> places;
    std::string messages;
};

TEST(FltModelTree, hasLevelsBelowTheNodeBeforeThem)
{
    FltWriter flt;
    flt.push()
        .add("Group")
        .push()
        .add("Object")
        .push()
        .add("Face")
        .pop()
        .add("Object")
        .pop()
        .add("Group")
        .pop();
    Grown const grown(flt);
    EXPECT_EQ(grown.text(), "2(4(5) 4) 2");
    EXPECT_EQ(grown.tree.getCount(), 6);
    EXPECT_EQ(grown.places.at(Place::taken), 11);
}

TEST(FltModelTree, goesOnWithANodeInASecondLevelOfIt)
{
    FltWriter flt;
    flt.push().add("Group").push().add("Object").pop().push().add("Face").pop().pop();
    EXPECT_EQ(Grown(flt).text(), "2(4 5)");
}

TEST(FltModelTree, hasFacesThatLieOnOthersBelowThese)
{
    FltWriter flt;
    flt.add("Face").add("PushSubface").add("Face").add("PopSubface").add("Face");
    EXPECT_EQ(Grown(flt).text(), "5(5) 5");
}

TEST(FltModelTree, givesANodeTheRecordsRightAfterIt)
{
    FltWriter flt;
    flt.add("Comment")
        .push()
        .add("Group")
        .add("Comment")
        .add("Matrix")
        .push()
        .add("Object")
        .add("Comment")
        .pop();
    Grown const grown(flt);
    EXPECT_EQ(grown.ancillaries(FltModelTree::root).size(), 1U);
    ASSERT_EQ(grown.ancillaries(1).size(), 2U);
    EXPECT_EQ(grown.ancillaries(1)[1], std::uint32_t(FltOpcode::matrix));
    EXPECT_EQ(grown.ancillaries(2).size(), 1U);
}

TEST(FltModelTree, findsTheFirstRecordOfAnOpcodeAfterANode)
{
    FltWriter flt;
    flt.add("Group").add("Matrix").add("Comment").add("Comment").add("Group").add("LongID");
    Grown const grown(flt);
    ASSERT_TRUE(grown.tree.ancillary(1, FltOpcode::comment));
    FltRecordView const matrix = *grown.tree.ancillary(1, FltOpcode::matrix);
    EXPECT_EQ(grown.tree.ancillary(1, FltOpcode::comment)->offset, matrix.offset + matrix.size);
    EXPECT_FALSE(grown.tree.ancillary(1, FltOpcode::longID)) << "it is the other node's";
    EXPECT_TRUE(grown.tree.ancillary(2, FltOpcode::longID));
    EXPECT_FALSE(grown.tree.ancillary(FltModelTree::root, FltOpcode::matrix));
}

/// It went to the node that was read last, some levels below the one that it was written after.
TEST(FltModelTree, givesNoNodeWhatFollowsAPop)
{
    FltWriter flt;
    flt.push().add("Group").push().add("Object").pop().add("Matrix").add("Comment").pop().add("Matrix");
    Grown const grown(flt);
    EXPECT_TRUE(grown.ancillaries(1).empty());
    EXPECT_TRUE(grown.ancillaries(2).empty());
    EXPECT_EQ(grown.places.at(Place::nowhere), 3);
}

TEST(FltModelTree, givesANodeAfterAPopItsRecords)
{
    FltWriter flt;
    flt.push().add("Group").push().pop().add("Group").add("Matrix").push().add("Comment").pop().pop();
    Grown const grown(flt);
    EXPECT_EQ(grown.ancillaries(2).size(), 2U);
    EXPECT_EQ(grown.places.count(Place::nowhere), 0U);
}

TEST(FltModelTree, leavesOutWhatStandsInAnExtension)
{
    FltWriter flt;
    flt.push()
        .add("Group")
        .add("PushExtension")
        .add("Object")
        .add("PopExtension")
        .add("PopExtension")
        .add("Matrix");
    Grown const grown(flt);
    EXPECT_EQ(grown.text(), "2");
    EXPECT_EQ(grown.ancillaries(1).size(), 1U);
    EXPECT_EQ(grown.places.at(Place::leftOut), 1);
}

TEST(FltModelTree, leavesLevelsOutThatAreNestedTooDeeply)
{
    FltWriter flt;
    flt.push()
        .add("Group")
        .push()
        .add("Object")
        .push()
        .add("Face")
        .pop()
        .add("Comment")
        .pop()
        .add("Group")
        .pop();
    Grown const grown(flt, FltLimits::hierarchyDepth - 3);
    EXPECT_EQ(grown.text(), "2(4) 2");
    EXPECT_FALSE(grown.tree.isWhole());
    EXPECT_EQ(grown.places.at(Place::leftOut), 1);
    EXPECT_EQ(grown.places.at(Place::nowhere), 1);
    EXPECT_NE(grown.messages.find("nested too deeply"), std::string::npos);
    EXPECT_TRUE(Grown(flt, FltLimits::hierarchyDepth - 4).tree.isWhole());
}

TEST(FltModelTree, reportsALevelThatEndsWithoutABeginning)
{
    FltWriter flt;
    flt.pop().add("Group");
    Grown const grown(flt);
    EXPECT_EQ(grown.text(), "2");
    EXPECT_NE(grown.messages.find("A level ends that never began"), std::string::npos);
}

} // namespace
