#include "visual/FltSwitchReader.h"

#include "support/CompleteDatabase.h"

#include <gtest/gtest.h>

namespace
{

using Fields = FltWriter::Fields;

FltVisualSwitch read(CompleteDatabase& database)
{
    std::shared_ptr<FltVisualNode> const root = database.see().root;
    FltVisualSwitch const* const choice = root->children.at(0)->as<FltVisualSwitch>();
    return choice != nullptr ? *choice : FltVisualSwitch();
}

Fields switchOf(int masks, int words, std::vector<double> const& values)
{
    return {{"indexOfCurrentMask", 1},
            {"numberOfMasks", masks},
            {"numberOf32BitWordsPerMask", words},
            {"masks", values}};
}

} // namespace

TEST(FltSwitchReader, readsMasksAndTheirNames)
{
    CompleteDatabase database;
    database.begin().add("Switch", switchOf(2, 2, {1, 2, 3, 4}));
    database.writer.addRaw(132, FltWriter::big32(1) + std::string("windy\0", 6));
    database.writer.addRaw(132, FltWriter::big32(2) + std::string("beyond\0", 7));
    FltVisualSwitch const choice = read(database);
    EXPECT_EQ(choice.masks, (std::vector<std::uint32_t>{1, 2, 3, 4}));
    EXPECT_EQ(choice.wordsPerMask, 2U);
    EXPECT_EQ(choice.currentMask, 1);
    EXPECT_EQ(choice.maskNames, (std::vector<std::string>{"", "windy"}));
}

TEST(FltSwitchReader, takesNoMoreMasksThanAreCounted)
{
    CompleteDatabase database;
    database.begin().add("Switch", switchOf(1, 2, {1, 2, 3, 4}));
    EXPECT_EQ(read(database).masks, (std::vector<std::uint32_t>{1, 2}));
}

TEST(FltSwitchReader, takesNoMoreMasksThanAreThere)
{
    CompleteDatabase database;
    database.begin().add("Switch", switchOf(1000000, 1, {1, 2}));
    EXPECT_EQ(read(database).masks.size(), 2U);
    CompleteDatabase negative;
    negative.begin().add("Switch", switchOf(-1, -1, {1, 2}));
    EXPECT_TRUE(read(negative).masks.empty());
}
