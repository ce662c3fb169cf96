#include "inspect/FltNodeBoxes.h"

#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <optional>

namespace
{

/// A group that is moved, with an object in it.
struct MovedGroup {
    explicit MovedGroup(std::string_view below = "Object", std::string_view movedBy = "Translate")
    {
        FltWriter flt;
        flt.push().add("Group").add(movedBy, movedBy == "Translate" ? FltWriter::Fields{{"deltaX", 10}}
                                                                    : FltWriter::Fields{});
        flt.push().add(below).pop().pop();
        flt.save(folder / "database.flt");
        inventory.emplace(folder / "database.flt");
        checked.emplace(*inventory);
    }

    ScratchFolder folder;
    std::optional<FltInventory> inventory;
    std::optional<FltCheckedModel> checked;
};

constexpr std::uint32_t header = 0;
constexpr std::uint32_t group = 1;
constexpr std::uint32_t object = 2;

} // namespace

TEST(FltNodeBoxes, joinsThemUpwardsByTheMatricesOfTheNodes)
{
    MovedGroup const moved;
    FltNodeBoxes boxes(*moved.checked);
    boxes.add(object, {1, 2, 3});
    boxes.add(object, {2, 4, 6});
    EXPECT_TRUE(boxes.boxOf(group).isEmpty());
    boxes.join();
    EXPECT_EQ(boxes.boxOf(group).getMin(), SbVec3d(1, 2, 3));
    EXPECT_EQ(boxes.boxOf(header).getMin(), SbVec3d(11, 2, 3));
    EXPECT_EQ(boxes.boxOf(header).getMax(), SbVec3d(12, 4, 6));
    EXPECT_EQ(boxes.placedBoxOf(group).getMax(), SbVec3d(12, 4, 6));
}

TEST(FltNodeBoxes, keepsTheFarthestThatFloatsAreFromPlaces)
{
    MovedGroup const moved;
    FltNodeBoxes boxes(*moved.checked);
    boxes.add(object, {4'500'000, 0.5, 0});
    EXPECT_EQ(boxes.errorOf(object), 0);
    boxes.add(object, {4'500'000.125, 0, 0});
    boxes.add(object, {0, 0, 4'500'000.25});
    EXPECT_EQ(boxes.errorOf(object), 0.25);
    EXPECT_EQ(boxes.errorOf(group), 0);
}

TEST(FltNodeBoxes, knowsWhatHoldsFacesAlone)
{
    MovedGroup const moved;
    FltNodeBoxes faces(*moved.checked);
    faces.join();
    EXPECT_TRUE(faces.isPlain(header) && faces.isPlain(group));
    MovedGroup const copied("Object", "Replicate");
    FltNodeBoxes copies(*copied.checked);
    EXPECT_FALSE(copies.isPlain(group));
    EXPECT_TRUE(copies.isPlain(object));
    MovedGroup const joint("DOF");
    FltNodeBoxes others(*joint.checked);
    others.join();
    EXPECT_FALSE(others.isPlain(header) || others.isPlain(group) || others.isPlain(object));
}
