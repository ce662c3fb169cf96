#include "inspect/FltSeenTogether.h"

#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>

namespace
{

using Fields = FltWriter::Fields;

/// Whether two objects are seen together that stand below a node.
bool areTogether(std::string_view record, Fields const& fields, Fields const& object = {},
                 bool isMoved = false)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.push().add(record, fields).push();
    for (int i = 0; i < 2; ++i) {
        flt.add("Object", object);
        if (isMoved)
            flt.add("Translate", {{"deltaX", 1}});
    }
    flt.pop().pop().save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    FltCheckedModel const checked(inventory);
    FltSeenTogether const seen(checked);
    std::uint32_t const last = static_cast<std::uint32_t>(inventory.nodes.size()) - 1;
    return seen.scopeOf(last) == seen.scopeOf(last - 1);
}

} // namespace

TEST(FltSeenTogether, takesObjectsOfAGroupAsSeenTogether)
{
    EXPECT_TRUE(areTogether("Group", {}));
    EXPECT_TRUE(areTogether("LOD", {}));
    EXPECT_TRUE(areTogether("DOF", {}));
    EXPECT_TRUE(areTogether("Group", {{"relativePriority", 3}}));
}

TEST(FltSeenTogether, partsGroupsOfOtherPriorities)
{
    for (int const priority : {-1, 0, 1, 3}) {
        ScratchFolder const folder;
        FltWriter flt;
        flt.push().add("Group").push();
        for (int i = 0; i < 2; ++i)
            flt.add("Group", {{"relativePriority", priority}});
        flt.pop().pop().save(folder / "database.flt");
        FltInventory const inventory(folder / "database.flt");
        FltCheckedModel const checked(inventory);
        FltSeenTogether const seen(checked);
        EXPECT_EQ(seen.scopeOf(2) == seen.scopeOf(3), priority == 0) << priority;
    }
}

TEST(FltSeenTogether, partsTheChildrenOfSwitchesAndFlipBooks)
{
    EXPECT_FALSE(areTogether("Switch", {}));
    for (unsigned bit = 0; bit < 32; ++bit)
        EXPECT_EQ(areTogether("Group", {{"flags", 1U << bit}}), bit != 30 && bit != 29 && bit != 25) << bit;
}

TEST(FltSeenTogether, partsObjectsOfOtherTimesPrioritiesAndPlaces)
{
    for (unsigned bit = 0; bit < 32; ++bit)
        EXPECT_EQ(areTogether("Group", {}, {{"flags", 1U << bit}}),
                  bit != 31 && bit != 30 && bit != 29 && bit != 26)
            << bit;
    EXPECT_FALSE(areTogether("Group", {}, {{"relativePriority", 1}}));
    EXPECT_FALSE(areTogether("Group", {}, {}, true));
}
