#include "inspect/FltCheckGeometry.h"

#include "FamilyFindings.h"
#include "messages/FltFindingNumber.h"
#include "writer/FltMeshRecords.h"
#include "writer/FltWriter.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace Number = FltFindingNumber;

namespace
{

using Found = FamilyFindings<FltCheckGeometry>;
using Mesh = FltMeshRecords;

/// How often a kind is found.
long countOf(int number, FltWriter const& flt)
{
    std::vector<int> const numbers = Found::numbersIn(flt);
    return std::count(numbers.begin(), numbers.end(), number);
}

/// An object with a face whose corners have these forms.
FltWriter withForms(std::vector<char const*> const& forms, int texture)
{
    FltWriter flt;
    flt.add("TexturePattern", {{"patternIndex", 0}}).vertexPalette();
    std::vector<double> corners;
    for (char const* const form : forms)
        corners.push_back(flt.vertex(form, static_cast<double>(corners.size()), corners.size() == 2, 0));
    flt.push().add("Object").push().face(corners, {{"texturePatternIndex", texture}}).pop();
    return flt.pop();
}

struct MadeMesh {
    unsigned vertices = 3; ///< As the pool says.
    unsigned whole = 3;    ///< That it holds.
    std::vector<int> indices = {0, 1, 2};
    bool hasPool = true;
    bool hasPrimitive = true;
};

FltWriter withMesh(MadeMesh const& mesh)
{
    FltWriter flt;
    flt.push().add("Object", {{"idASCII", "o1"}}).push().addRaw(Mesh::meshOpcode, Mesh::mesh("net"));
    if (mesh.hasPool) {
        std::string pool = Mesh::poolHead(mesh.vertices, Mesh::hasPlace);
        for (unsigned i = 0; i < mesh.whole; ++i)
            for (double const part : {i == 1 ? 1. : 0., i == 2 ? 1. : 0., 0.})
                pool += FltWriter::bigDouble(part);
        flt.addRaw(Mesh::poolOpcode, pool);
    }
    flt.push();
    if (mesh.hasPrimitive)
        flt.addRaw(Mesh::primitiveOpcode, Mesh::primitive(Mesh::triangleStrip, 1, mesh.indices));
    return flt.pop().pop().pop();
}

} // namespace

TEST(FltCheckGeometry, findsFacesWithACornerThatHasNoUsablePlace)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    for (int axis = 0; axis < 3; ++axis)
        for (int corner = 0; corner < 3; ++corner) {
            FltWriter flt;
            flt.vertexPalette();
            std::vector<double> corners;
            for (int i = 0; i < 3; ++i) {
                double place[3] = {i == 1 ? 1. : 0., i == 2 ? 1. : 0., 0};
                if (i == corner)
                    place[axis] = nan;
                corners.push_back(flt.vertex("VertexColor", place[0], place[1], place[2]));
            }
            flt.push().add("Object").push().face(corners).pop().pop();
            EXPECT_EQ(countOf(Number::unusablePlace, flt), 1) << axis << ' ' << corner;
        }
}

TEST(FltCheckGeometry, findsTexturedFacesWithACornerOfAFormWithoutTextureCoordinates)
{
    for (char const* const form : {"VertexColor", "VertexColorNormal"}) {
        EXPECT_EQ(countOf(Number::noTextureCoordinates, withForms({form, form, form}, 0)), 1) << form;
        EXPECT_EQ(
            countOf(Number::noTextureCoordinates, withForms({"VertexColorUv", "VertexColorUv", form}, 0)), 1)
            << form;
        EXPECT_EQ(
            countOf(Number::noTextureCoordinates, withForms({form, "VertexColorUv", "VertexColorUv"}, 0)), 1)
            << form;
        EXPECT_EQ(countOf(Number::noTextureCoordinates, withForms({form, form, form}, -1)), 0) << form;
    }
    for (char const* const form : {"VertexColorUv", "VertexColorNormalUv"})
        EXPECT_EQ(countOf(Number::noTextureCoordinates, withForms({form, form, form}, 0)), 0) << form;
}

TEST(FltCheckGeometry, asksForNoTextureCoordinatesOfCornersThatAreLost)
{
    FltWriter flt;
    flt.add("TexturePattern", {{"patternIndex", 0}}).vertexPalette();
    double const corner = flt.vertex("VertexColorUv", 0, 0, 0);
    flt.push().face({corner, 5, corner}, {{"texturePatternIndex", 0}}).pop();
    EXPECT_EQ(countOf(Number::noTextureCoordinates, flt), 0);
    EXPECT_EQ(countOf(Number::lostVertex, flt), 1);
}

TEST(FltCheckGeometry, takesEachThingThatIsSeenForSomething)
{
    EXPECT_EQ(countOf(Number::nothingToSee, FltWriter().push().add("Object").pop()), 1);
    for (char const* const record : {"Face", "ExternalReference", "Text", "LightPoint"})
        EXPECT_EQ(countOf(Number::nothingToSee, FltWriter().push().add(record).pop()), 0) << record;
    EXPECT_EQ(countOf(Number::nothingToSee, withMesh({})), 0);
}

TEST(FltCheckGeometry, tellsWhatAMeshLacks)
{
    auto const textsOf = [](MadeMesh const& mesh) {
        std::vector<std::string> texts;
        for (FltFinding const& finding : Found::in(withMesh(mesh)))
            texts.push_back(finding.kind->code() + " " + finding.text);
        return texts;
    };
    using Texts = std::vector<std::string>;
    EXPECT_EQ(textsOf({}), Texts{});
    EXPECT_EQ(textsOf({3, 3, {0, 1, 2}, false}), Texts{"FLT-209 \"net\" has no vertex pool"});
    EXPECT_EQ(textsOf({3, 3, {0, 1, 2}, true, false}), Texts{"FLT-209 \"net\" has no primitives"});
    EXPECT_EQ(textsOf({5, 4, {0, 1, 2}}), Texts{"FLT-106 the vertex pool of \"net\" holds 4 of 5 vertices"});
    EXPECT_EQ(textsOf({3, 3, {0, 1, 2, 3, 4}}).at(0), "FLT-208 2 of 5 indices");
}

TEST(FltCheckGeometry, tellsOfLostOffsetsAtTheListAndCountsThemByNode)
{
    FltWriter flt;
    flt.vertexPalette();
    double const corner = flt.vertex("VertexColor", 0, 0, 0);
    flt.push().add("Object", {{"idASCII", "o1"}}).push().face({corner, 5, 6}).pop().pop();
    std::vector<FltFinding> const findings = Found::in(flt);
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings[0].kind->number, Number::lostVertex);
    EXPECT_EQ(findings[0].opcode, 72);
    EXPECT_EQ(findings[0].text, "offset 5");
    EXPECT_EQ(findings[0].count, 2U);
    EXPECT_EQ(findings[0].node, "o1");
}
