#include "model/FltNodeNumbers.h"

#include "model/FltModelRecordReader.h"
#include "records/FltOpcode.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

/// The opcode of the node that has a name; 0 if there is none.
int opcodeOf(FltWriter const& flt, std::string const& name)
{
    std::string const bytes = flt.bytes();
    FltModelTree tree(0);
    FltModelRecordReader reader(bytes.data(), bytes.size(), true);
    FltRecordView record;
    reader.next(record); // the header, which is no node
    while (reader.next(record))
        static_cast<void>(tree.add(record));
    FltModelTree::Number const found = FltNodeNumbers(tree).find(name);
    return found != FltModelTree::none ? static_cast<int>(tree.recordOf(found).opcode) : 0;
}

FltWriter named(std::string const& name)
{
    FltWriter flt;
    return flt.push().add("Group", {{"idASCII", name}}).add("Object", {{"idASCII", name}}).pop();
}

} // namespace

TEST(FltNodeNumbers, findTheFirstNodeOfAName)
{
    EXPECT_EQ(opcodeOf(named("gate"), "gate"), FltOpcode::group);
    EXPECT_EQ(opcodeOf(named("gate"), "Gate"), 0);
    EXPECT_EQ(opcodeOf(named("gate"), ""), 0);
}

TEST(FltNodeNumbers, findANameWhetherItIsAskedForInItsOwnBytesOrInUtf8)
{
    EXPECT_EQ(opcodeOf(named("caf\xe9"), "caf\xe9"), FltOpcode::group);
    EXPECT_EQ(opcodeOf(named("caf\xe9"), "caf\xc3\xa9"), FltOpcode::group);
    EXPECT_EQ(opcodeOf(named("caf\xc3\xa9"), "caf\xc3\xa9"), FltOpcode::group);
}
