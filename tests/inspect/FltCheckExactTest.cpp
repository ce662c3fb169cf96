#include "inspect/FltCheckExact.h"

#include "FamilyFindings.h"
#include "messages/FltFindingNumber.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>

namespace Number = FltFindingNumber;

namespace
{

using Found = FamilyFindings<FltCheckExact>;

std::vector<int> const nothing;

FltWriter switchOf(int children, FltWriter::Fields const& fields = {}, std::string const& longName = "")
{
    FltWriter flt;
    flt.push().add("Switch", fields);
    if (!longName.empty())
        flt.add("LongID", {{"idASCII", longName}});
    flt.push();
    for (int i = 0; i < children; ++i)
        flt.add("Group");
    return flt.pop().pop();
}

std::vector<int> const wrong = {Number::wrongChildren};

} // namespace

TEST(FltCheckExact, findsSwitchesWithMoreChildrenThanAMaskHasBits)
{
    EXPECT_EQ(Found::numbersIn(switchOf(32)), nothing);
    EXPECT_EQ(Found::numbersIn(switchOf(33)), wrong);
    EXPECT_EQ(Found::in(switchOf(33)).at(0).text, "33 children");
}

TEST(FltCheckExact, findsSwitchesWithTheTenthMaskOrALongName)
{
    for (int const mask : {0, 9, 11})
        EXPECT_EQ(Found::numbersIn(switchOf(1, {{"indexOfCurrentMask", mask}})), nothing) << mask;
    EXPECT_EQ(Found::in(switchOf(1, {{"indexOfCurrentMask", 10}})).at(0).text, "mask 10");
    EXPECT_EQ(Found::numbersIn(switchOf(1, {}, "12345678")), nothing);
    EXPECT_EQ(Found::in(switchOf(1, {}, "123456789")).at(0).text, "long id");
}

TEST(FltCheckExact, findsFacesOfOneOrTwoVerticesAndThoseThatTurn)
{
    auto const withFace = [](std::size_t vertices, FltWriter::Fields const& fields = {}) {
        FltWriter flt;
        flt.vertexPalette();
        std::vector<double> corners;
        for (int i = 0; corners.size() < vertices; ++i)
            corners.push_back(flt.vertex("VertexColor", i, i * i, 0));
        return Found::numbersIn(flt.push().add("Object").push().face(corners, fields).pop().pop());
    };
    EXPECT_EQ(withFace(1), std::vector<int>{Number::pointOrLine});
    EXPECT_EQ(withFace(2), std::vector<int>{Number::pointOrLine});
    EXPECT_EQ(withFace(3), nothing);
    for (int const turning : {2, 4})
        EXPECT_EQ(withFace(3, {{"templateBillboard", turning}}), std::vector<int>{Number::fixedBillboard});
    for (int const standing : {0, 1, 3})
        EXPECT_EQ(withFace(3, {{"templateBillboard", standing}}), nothing) << standing;
    EXPECT_EQ(withFace(3, {{"flags", 1 << 26}}), std::vector<int>{Number::drawnHiddenFace});
    EXPECT_EQ(withFace(3, {{"flags", 1 << 25}}), nothing);
}

TEST(FltCheckExact, findsFacesOfMixedVertices)
{
    auto const withFace = [](std::vector<char const*> const& forms) {
        FltWriter flt;
        flt.vertexPalette();
        std::vector<double> corners;
        for (char const* const form : forms)
            corners.push_back(flt.vertex(form, static_cast<double>(corners.size()), 0, 0));
        return Found::numbersIn(flt.push().add("Object").push().face(corners).pop().pop());
    };
    std::vector<int> const mixed = {Number::mixedVertices};
    EXPECT_EQ(withFace({"VertexColor", "VertexColor", "VertexColorNormal"}), mixed);
    EXPECT_EQ(withFace({"VertexColorNormalUv", "VertexColorUv", "VertexColorUv"}), nothing);
    EXPECT_EQ(withFace({"VertexColorNormal", "VertexColorUv", "VertexColorUv"}), mixed);
    EXPECT_EQ(withFace({"VertexColorNormal", "VertexColorNormal", "VertexColorNormal"}), nothing);
}

TEST(FltCheckExact, findsMoreThanAHundredThousandVerticesOfAForm)
{
    auto const with = [](char const* form, int vertices) {
        FltWriter flt;
        flt.vertexPalette();
        for (int i = 0; i < vertices; ++i)
            flt.vertex(form, 0, 0, 0);
        return Found::in(flt.push().pop());
    };
    EXPECT_TRUE(with("VertexColor", 100'000).empty());
    FltWriter lists;
    lists.push();
    for (int i = 0; i <= 100'000; ++i)
        lists.add("VertexList");
    EXPECT_EQ(Found::numbersIn(lists.pop()), nothing);
    for (char const* const form : {"VertexColor", "VertexColorUv"}) {
        std::vector<FltFinding> const findings = with(form, 100'001);
        ASSERT_EQ(findings.size(), 1U) << form;
        EXPECT_EQ(findings[0].kind->number, Number::tooManyVertices);
        EXPECT_EQ(findings[0].text, "100001 vertices");
    }
}

TEST(FltCheckExact, findsSubfacesThatHaveNoFaceOfTheirFormInTheObject)
{
    auto const with = [](char const* faceForm, char const* subfaceForm, bool isInOneObject = true) {
        FltWriter flt;
        flt.vertexPalette();
        std::vector<double> face, subface;
        for (int i = 0; i < 3; ++i) {
            face.push_back(flt.vertex(faceForm, i, i * i, 0));
            subface.push_back(flt.vertex(subfaceForm, i, i * i, 0));
        }
        flt.push().add("Object").push().face(face);
        if (!isInOneObject)
            flt.pop().add("Object").push();
        flt.add("PushSubface").face(subface).add("PopSubface").pop();
        return Found::numbersIn(flt.pop());
    };
    std::vector<int> const lost = {Number::lostSubfaces};
    EXPECT_EQ(with("VertexColor", "VertexColor"), nothing);
    EXPECT_EQ(with("VertexColor", "VertexColorNormal"), lost);
    EXPECT_EQ(with("VertexColor", "VertexColor", false), lost);
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> corners;
    for (int i = 0; i < 3; ++i)
        corners.push_back(flt.vertex("VertexColor", i, i * i, 0));
    flt.push().add("PushSubface").face(corners).add("PopSubface");
    EXPECT_EQ(Found::numbersIn(flt.pop()), lost) << "without an object";
}

TEST(FltCheckExact, findsReferencesThatAreNotAtTheTopOrStandBeforeTheirDefinition)
{
    auto const passedOver = [](FltWriter const& flt) {
        long count = 0;
        for (int const number : Found::numbersIn(flt))
            count += number == Number::passedOverInstance ? 1 : 0;
        return count;
    };
    FltWriter::Fields const one = {{"instanceDefinitionNumber", 1}};
    FltWriter after;
    after.push().add("InstanceDefinition", one).add("InstanceReference", one).pop();
    EXPECT_EQ(passedOver(after), 0);
    FltWriter before;
    before.push().add("InstanceReference", one).add("InstanceDefinition", one).pop();
    EXPECT_EQ(passedOver(before), 1);
    FltWriter below;
    below.push().add("InstanceDefinition", one).add("Group").push().add("InstanceReference", one).pop();
    EXPECT_EQ(passedOver(below.pop()), 1);
    FltWriter undefined;
    undefined.push().add("InstanceReference", one).pop();
    EXPECT_EQ(passedOver(undefined), 1);
}
