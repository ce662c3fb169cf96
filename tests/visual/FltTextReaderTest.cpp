#include "visual/FltTextReader.h"

#include "support/CompleteDatabase.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

using Fields = FltWriter::Fields;
using Alignment = FltVisualText::Alignment;

/// The text of a record with a comment.
FltVisualText read(Fields const& fields, std::string const& words = "one\ntwo!")
{
    CompleteDatabase database;
    database.begin().add("Text", fields);
    database.writer.add("Comment", {{"textDescription", words}});
    std::shared_ptr<FltVisualNode> const root = database.see().root;
    FltVisualText const* const text = root->children.at(0)->as<FltVisualText>();
    return text != nullptr ? *text : FltVisualText();
}

} // namespace

TEST(FltTextReader, readsLinesAndPlace)
{
    FltVisualText const text =
        read({{"XlowerLeftCorner", 1}, {"YlowerLeftCorner", 2}, {"ZlowerLeftCorner", 3}}, "caf\xe9\r\n\ntwo");
    EXPECT_EQ(text.lines, (std::vector<std::string>{"caf\xc3\xa9", "", "two"}));
    EXPECT_EQ(text.place, SbVec3d(1, 2, 3));
}

TEST(FltTextReader, standsAsHighAsItsCornersSay)
{
    FltVisualText const upright = read({{"ZupperRightCorner", 4}, {"YupperRightCorner", 9}});
    EXPECT_EQ(upright.size, 2);
    EXPECT_FALSE(upright.isLying);
    FltVisualText const downwards = read({{"ZupperRightCorner", -4}});
    EXPECT_EQ(downwards.size, 2);
}

TEST(FltTextReader, liesWhereItsCornersLie)
{
    FltVisualText const lying = read({{"YupperRightCorner", -6}, {"XupperRightCorner", 50}});
    EXPECT_TRUE(lying.isLying);
    EXPECT_EQ(lying.size, 3);
}

TEST(FltTextReader, takesItsHeightFromItsWidthWhereNothingElseSaysIt)
{
    EXPECT_FLOAT_EQ(read({{"XupperRightCorner", 12}}).size, 5); // four letters, each 0.6 of the height
    EXPECT_EQ(read({}).size, 1);
    EXPECT_EQ(read({{"ZupperRightCorner", 1}}).size, 0.5F);
}

TEST(FltTextReader, staysSoundWithNumbersThatArentAny)
{
    double const none = std::numeric_limits<double>::quiet_NaN();
    FltVisualText const text = read({{"XlowerLeftCorner", none}, {"ZupperRightCorner", none}});
    EXPECT_EQ(text.place, SbVec3d(0, 0, 0));
    EXPECT_EQ(text.size, 1);
}

TEST(FltTextReader, readsAlignmentAndColour)
{
    EXPECT_EQ(read({{"justification", 0}}).alignment, Alignment::left);
    EXPECT_EQ(read({{"justification", 1}}).alignment, Alignment::right);
    EXPECT_EQ(read({{"justification", 2}}).alignment, Alignment::center);
    EXPECT_EQ(read({{"justification", 3}}).alignment, Alignment::left);
    EXPECT_EQ(read({}).color, 0xffffffffU);
}

TEST(FltTextReader, anchorsLinesAtTheSideOfTheBoxThatTheyAreAlignedTo)
{
    auto const placeOf = [](int justification, double width) {
        return read({{"XlowerLeftCorner", -3},
                     {"YlowerLeftCorner", 2},
                     {"XupperRightCorner", width - 3},
                     {"YupperRightCorner", 2},
                     {"ZupperRightCorner", 4},
                     {"justification", justification}})
            .place;
    };
    EXPECT_EQ(placeOf(0, 10), SbVec3d(-3, 2, 0));
    EXPECT_EQ(placeOf(1, 10), SbVec3d(7, 2, 0));
    EXPECT_EQ(placeOf(2, 10), SbVec3d(2, 2, 0));
    EXPECT_EQ(placeOf(1, 0), SbVec3d(-3, 2, 0)) << "without a box";
    EXPECT_EQ(placeOf(1, 1e300), SbVec3d(-3, 2, 0)) << "a box without an end";
}
