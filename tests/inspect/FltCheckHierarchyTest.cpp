#include "inspect/FltCheckHierarchy.h"

#include "FamilyFindings.h"
#include "messages/FltFindingNumber.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace Number = FltFindingNumber;

namespace
{

using Found = FamilyFindings<FltCheckHierarchy>;

std::vector<int> const nothing;

/// Groups with these names beside each other, each with an object in it that has a face.
FltWriter groupsOf(std::vector<std::string> const& names)
{
    FltWriter flt;
    flt.push();
    for (std::string const& name : names)
        flt.add("Group", {{"idASCII", name}}).push().add("Object").push().add("Face").pop().pop();
    return flt.pop();
}

/// A definition of an instance, and those that it refers to.
struct Definition {
    int number;
    std::vector<int> references;
};

/// Definitions, and references to all of them beside these.
FltWriter instancesOf(std::vector<Definition> const& definitions)
{
    FltWriter flt;
    flt.push();
    for (Definition const& definition : definitions) {
        flt.add("InstanceDefinition", {{"instanceDefinitionNumber", definition.number}}).push();
        for (int const reference : definition.references)
            flt.add("InstanceReference", {{"instanceDefinitionNumber", reference}});
        flt.pop();
    }
    for (Definition const& definition : definitions)
        flt.add("InstanceReference", {{"instanceDefinitionNumber", definition.number}});
    return flt.pop();
}

std::vector<int> const circle = {Number::circularInstance};

} // namespace

TEST(FltCheckHierarchy, tellsOfTheFirstNameThatComesAgainAndCountsTheOthers)
{
    EXPECT_EQ(Found::numbersIn(groupsOf({"a", "b", "c"})), nothing);
    std::vector<FltFinding> const one = Found::in(groupsOf({"a", "b", "b", "b"}));
    ASSERT_EQ(one.size(), 1U);
    EXPECT_EQ(one[0].kind->number, Number::repeatedName);
    EXPECT_EQ(one[0].text, "\"b\"");
    EXPECT_EQ(Found::in(groupsOf({"a", "b", "b", "a"})).at(0).text, "\"b\" and one further name");
    EXPECT_EQ(Found::in(groupsOf({"a", "b", "c", "a", "c", "b"})).at(0).text, "\"a\" and 2 further names");
}

TEST(FltCheckHierarchy, takesNumbersAndPathsForNoNamesOfNodes)
{
    FltWriter flt;
    flt.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}});
    flt.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    flt.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    for (int i = 0; i < 2; ++i)
        flt.add("ExternalReference", {{"asciiPath", "tree.flt"}});
    EXPECT_EQ(Found::numbersIn(flt.pop()), nothing);
    EXPECT_EQ(Found::numbersIn(groupsOf({"", ""})), nothing) << "and nodes without one";
}

TEST(FltCheckHierarchy, findsNodesThatHoldNothingThoughTheyAreToHoldSomething)
{
    std::vector<int> const empty = {Number::emptyGroup};
    auto const with = [](std::string_view record, std::string_view below = "") {
        FltWriter flt;
        flt.push().add(record);
        if (!below.empty())
            flt.push().add(below).pop();
        return Found::numbersIn(flt.pop());
    };
    for (char const* const record : {"Group", "Object", "LOD", "Switch", "DOF"}) {
        EXPECT_EQ(with(record), empty) << record;
        EXPECT_EQ(with(record, "Face"), nothing) << record;
        EXPECT_EQ(with(record, "Sound"), nothing) << record;
    }
    for (char const* const record : {"Sound", "Text", "LightPoint"})
        EXPECT_EQ(with(record), nothing) << record;
}

TEST(FltCheckHierarchy, findsInstancesThatLeadToThemselvesOverAnyNumberOfOthers)
{
    EXPECT_EQ(Found::numbersIn(instancesOf({{0, {0}}})), circle);
    EXPECT_EQ(Found::numbersIn(instancesOf({{1, {1}}})), circle);
    EXPECT_EQ(Found::numbersIn(instancesOf({{0, {1}}, {1, {0}}})), circle);
    EXPECT_EQ(Found::numbersIn(instancesOf({{0, {1}}, {1, {2}}, {2, {3}}, {3, {1}}})), circle);
    EXPECT_EQ(Found::numbersIn(instancesOf({{5, {6}}, {6, {7, 5}}, {7, {}}})), circle);
    EXPECT_EQ(Found::numbersIn(instancesOf({{0, {0}}, {1, {1}}})),
              std::vector(2, int(Number::circularInstance)));
}

TEST(FltCheckHierarchy, tellsOfACircleOnce)
{
    std::vector<FltFinding> const findings =
        Found::in(instancesOf({{0, {1}}, {1, {2}}, {2, {0}}, {3, {0}}, {4, {1}}}));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].count, 1U);
}

TEST(FltCheckHierarchy, takesInstancesThatMeetAgainForNoCircle)
{
    EXPECT_EQ(Found::numbersIn(instancesOf({{0, {1, 2}}, {1, {3}}, {2, {3}}, {3, {}}})), nothing);
    EXPECT_EQ(Found::numbersIn(instancesOf({{3, {}}, {2, {3, 3}}, {1, {2}}, {0, {1, 2, 3}}})), nothing);
}

TEST(FltCheckHierarchy, looksForReferencesAnywhereBelowADefinition)
{
    FltWriter flt;
    flt.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 4}}).push();
    flt.add("Group").push().add("InstanceReference", {{"instanceDefinitionNumber", 4}}).pop().pop();
    EXPECT_EQ(Found::numbersIn(flt.pop()), circle);
    FltWriter beside;
    beside.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 4}}).push().add("Sound").pop();
    beside.add("Group").push().add("InstanceReference", {{"instanceDefinitionNumber", 4}}).pop();
    EXPECT_EQ(Found::numbersIn(beside.pop()), nothing);
}

TEST(FltCheckHierarchy, tellsOfEachDefinitionThatIsRepeatedOrUnusedOnce)
{
    FltWriter flt;
    flt.push();
    for (int const number : {1, 2, 2, 3, 2})
        flt.add("InstanceDefinition", {{"instanceDefinitionNumber", number}});
    for (int const number : {2, 3, 8})
        flt.add("InstanceReference", {{"instanceDefinitionNumber", number}});
    std::vector<std::pair<int, std::string>> found;
    for (FltFinding const& finding : Found::in(flt.pop()))
        found.emplace_back(finding.kind->number, finding.text);
    EXPECT_EQ(found, (std::vector<std::pair<int, std::string>>{
                         {Number::undefinedInstance, "instance 8"},
                         {Number::unusedDefinition, "instance 1"},
                         {Number::repeatedDefinition, "instance 2"},
                         {Number::repeatedDefinition, "instance 2"},
                     }));
}
