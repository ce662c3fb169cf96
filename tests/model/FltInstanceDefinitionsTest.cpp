#include "model/FltInstanceDefinitions.h"

#include "support/CompleteDatabase.h"

#include <gtest/gtest.h>

namespace
{

void define(CompleteDatabase& database, int number, char const* content)
{
    database.writer.add("InstanceDefinition", {{"instanceDefinitionNumber", number}}).push();
    database.writer.add("Group", {{"idASCII", content}}).pop();
}

/// What the only reference of a database shows.
std::string shown(CompleteDatabase& database)
{
    std::shared_ptr<FltVisualNode> const root = database.see().root;
    if (root->children.size() != 1 || root->children[0]->children.empty())
        return "nothing";
    return root->children[0]->children[0]->children.at(0)->name;
}

} // namespace

TEST(FltInstanceDefinitions, areFoundByTheirNumbers)
{
    CompleteDatabase database;
    database.begin();
    define(database, 1, "one");
    define(database, -2, "minus");
    database.writer.add("InstanceReference", {{"instanceDefinitionNumber", -2}});
    EXPECT_EQ(shown(database), "minus");
}

TEST(FltInstanceDefinitions, meanTheLastOneOfTheNumberBeforeTheReference)
{
    CompleteDatabase database;
    database.begin();
    define(database, 1, "first");
    define(database, 1, "second");
    database.writer.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    define(database, 1, "later");
    EXPECT_EQ(shown(database), "second");
}

TEST(FltInstanceDefinitions, meanTheFirstOneAfterAReferenceThatHasNoneBefore)
{
    CompleteDatabase database;
    database.begin().add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    define(database, 2, "other");
    define(database, 1, "first");
    define(database, 1, "second");
    EXPECT_EQ(shown(database), "first");
}

TEST(FltInstanceDefinitions, areMissedWhereThereIsNone)
{
    CompleteDatabase database;
    database.begin().add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    EXPECT_EQ(shown(database), "nothing");
    EXPECT_NE(database.messages.find("An instance refers to a definition that isn't there"),
              std::string::npos);
}
