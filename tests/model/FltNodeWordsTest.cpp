#include "model/FltNodeWords.h"

#include "support/CompleteDatabase.h"

#include <gtest/gtest.h>

namespace
{

using Fields = FltWriter::Fields;

/// The first node of a database.
std::shared_ptr<FltVisualNode> firstOf(CompleteDatabase& database)
{
    std::shared_ptr<FltVisualNode> const root = database.see().root;
    return root->children.empty() ? nullptr : root->children[0];
}

std::string nameOf(char const* record, Fields const& fields)
{
    CompleteDatabase database;
    database.begin().add(record, fields);
    return firstOf(database)->name;
}

} // namespace

TEST(FltNodeWords, takeTheIdForAName)
{
    EXPECT_EQ(nameOf("Group", {{"idASCII", "eightlet"}}), "eightlet");
    EXPECT_EQ(nameOf("Group", {{"idASCII", "g"}}), "g");
    EXPECT_EQ(nameOf("InstanceReference", {{"instanceDefinitionNumber", 0x4142}}), "");
}

TEST(FltNodeWords, takeTheNameOfAFileWithoutItsDirectoryAndEnding)
{
    EXPECT_EQ(nameOf("ExternalReference", {{"asciiPath", "town/left.house.flt"}}), "left.house");
    EXPECT_EQ(nameOf("ExternalReference", {{"asciiPath", "C:\\town\\house.flt"}}), "house");
    EXPECT_EQ(nameOf("ExternalReference", {{"asciiPath", "house"}}), "house");
}

TEST(FltNodeWords, takeTheFirstLongIdForAName)
{
    CompleteDatabase database;
    database.begin().add("Group", {{"idASCII", "short"}}).add("LongID", {{"idASCII", "a_longer_name"}});
    database.writer.add("LongID", {{"idASCII", "another"}});
    EXPECT_EQ(firstOf(database)->name, "a_longer_name");
}

TEST(FltNodeWords, keepAllComments)
{
    CompleteDatabase database;
    database.begin().add("Group").add("Comment", {{"textDescription", "one"}});
    database.writer.add("Comment", {{"textDescription", "two"}});
    EXPECT_EQ(firstOf(database)->comments, (std::vector<std::string>{"one", "two"}));
}

TEST(FltNodeWords, takeTheFirstCommentOfATextForWhatItSays)
{
    CompleteDatabase database;
    database.begin().add("Text").add("Comment", {{"textDescription", "one"}});
    database.writer.add("Comment", {{"textDescription", "two"}});
    std::shared_ptr<FltVisualNode> const node = firstOf(database);
    EXPECT_TRUE(node->comments.empty());
    ASSERT_NE(node->as<FltVisualText>(), nullptr);
    EXPECT_EQ(node->as<FltVisualText>()->lines, std::vector<std::string>{"one"});
}
