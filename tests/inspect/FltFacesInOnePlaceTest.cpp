#include "inspect/FltFacesInOnePlace.h"

#include "inspect/FltCheckedModel.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <utility>

namespace
{

using Pair = FltCoincidingFaces::Pair;

/// After the root and the Object. A list of vertices follows each.
constexpr FltModelTree::Number firstFace = 2;
constexpr FltModelTree::Number secondFace = 4;
constexpr FltModelTree::Number faceOnIt = 6;

/// A face, and another one, on which a face with the corners of the first one lies.
std::string saved(ScratchFolder const& folder)
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> corners;
    for (double const x : {0, 1, 2})
        corners.push_back(flt.vertex("VertexColor", x, x * x, 0));
    std::vector<double> others = corners;
    others.push_back(flt.vertex("VertexColor", 0, 5, 0));
    flt.push().add("Object").push().face(corners).face(others);
    flt.add("PushSubface").face(corners).add("PopSubface").pop().pop();
    flt.save(folder / "database.flt");
    return folder / "database.flt";
}

class Reading
{
public:
    using Numbers = std::vector<std::pair<FltModelTree::Number, std::uint64_t>>;

    /// What is told of pairs: the face, and where the earlier one begins.
    Numbers tellOf(std::vector<Pair> const& pairs)
    {
        Numbers told;
        FltFacesInOnePlace again(
            reader, checked.model.tree,
            [this](FltFaceInput const& input) -> FltCoincidingFaces::Face const& {
                face.corners.clear();
                for (std::uint32_t const vertex : input.vertices)
                    face.corners.emplace_back(checked.model.vertices.placeOf(vertex).data());
                return face;
            },
            [&told](FltFaceInput const& input, std::uint64_t earlier) {
                told.emplace_back(input.number, earlier);
            });
        again.compare(pairs);
        return told;
    }

    std::uint64_t offsetOf(FltModelTree::Number number) const { return checked.recordOf(number).offset; }

private:
    ScratchFolder const folder;
    FltInventory const inventory{saved(folder)};
    FltCheckedModel checked{inventory};
    std::vector<FltTexture> textures;
    FltLeftOut leftOut;
    FltMeshTools tools{checked.model, textures, leftOut};
    FltFaceReader reader{tools};
    FltCoincidingFaces::Face face;
};

} // namespace

TEST(FltFacesInOnePlace, tellsOfAFaceThatLiesOnAnotherOne)
{
    Reading reading;
    EXPECT_EQ(reading.tellOf({{{secondFace, 1}, {firstFace, 0}, false}}),
              (Reading::Numbers{{faceOnIt, reading.offsetOf(firstFace)}}));
}

TEST(FltFacesInOnePlace, passesOverFacesWhoseHashesMeetByChance)
{
    EXPECT_EQ(Reading().tellOf({{{secondFace, 0}, {firstFace, 0}, false}}), Reading::Numbers{});
}

TEST(FltFacesInOnePlace, tellsOfAFaceOnceWhereBothSidesMeetOthers)
{
    Reading reading;
    EXPECT_EQ(reading.tellOf({{{secondFace, 1}, {secondFace, 0}, false},
                              {{secondFace, 1}, {firstFace, 0}, false},
                              {{secondFace, 1}, {firstFace, 0}, true}}),
              (Reading::Numbers{{faceOnIt, reading.offsetOf(firstFace)}}));
}

TEST(FltFacesInOnePlace, readsNothingWithoutPairs)
{
    EXPECT_EQ(Reading().tellOf({}), Reading::Numbers{});
}
