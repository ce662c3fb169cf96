#include "model/FltTransformation.h"

#include "model/FltModelRecordReader.h"
#include "writer/FltWriter.h"

#include <Inventor/SbVec3f.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace
{

using Fields = FltWriter::Fields;

using Records = std::vector<std::pair<char const*, Fields>>;

/// The transformation of a group with some records after it.
class Transformed
{
public:
    explicit Transformed(Records const& records)
    {
        FltWriter flt;
        flt.add("Group");
        for (auto const& [name, fields] : records)
            flt.add(name, fields);
        bytes = flt.bytes();
        FltModelRecordReader reader(bytes.data(), bytes.size(), false);
        FltRecordView record;
        reader.next(record);
        while (reader.next(record))
            tree.add(record);
    }

    FltTransformation get() const { return {tree, 1}; }

    /// Where the only matrix moves a point.
    SbVec3f moved(SbVec3f const& from) const
    {
        FltTransformation const transformation = get();
        EXPECT_EQ(transformation.getMatrices().size(), 1U);
        SbVec3d to;
        transformation.getMatrices().at(0).multVecMatrix(SbVec3d(from), to);
        return SbVec3f(to);
    }

private:
    std::string bytes;
    FltModelTree tree{0};
};

void expectNear(SbVec3f const& is, SbVec3f const& wanted)
{
    EXPECT_TRUE(is.equals(wanted, 1e-8F)) << is[0] << ' ' << is[1] << ' ' << is[2] << " for " << wanted[0]
                                          << ' ' << wanted[1] << ' ' << wanted[2];
}

FltValue matrixBy(double x, double y, double z, double w = 1)
{
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, w};
}

TEST(FltTransformation, isNothingWithoutARecordOfIt)
{
    Transformed const none(Records{{"Comment", {}}});
    EXPECT_TRUE(none.get().getMatrices().empty());
    EXPECT_EQ(none.get().getReplications(), 0);
}

TEST(FltTransformation, movesByAllMatricesInTheirOrder)
{
    FltTransformation const both = Transformed(Records{{"Matrix", {{"matrix", matrixBy(1, 0, 0)}}},
                                                       {"Matrix", {{"matrix", matrixBy(2, 0, 0)}}}})
                                       .get();
    ASSERT_EQ(both.getMatrices().size(), 2U);
    EXPECT_EQ(both.getMatrices()[0][3][0], 1);
    EXPECT_EQ(both.getMatrices()[1][3][0], 2);
}

TEST(FltTransformation, takesStepsOnlyWhereThereIsNoMatrix)
{
    std::pair<char const*, Fields> const step("Translate", {{"deltaX", 1}, {"deltaY", 2}, {"deltaZ", 3}});
    expectNear(Transformed(Records{step}).moved({1, 1, 1}), {2, 3, 4});
    expectNear(Transformed(Records{step, {"Matrix", {{"matrix", matrixBy(9, 0, 0)}}}}).moved({1, 1, 1}),
               {10, 1, 1});
}

TEST(FltTransformation, takesStepsOneAfterTheOther)
{
    Transformed const steps(
        {{"Translate", {{"deltaX", 1}}},
         {"ScaleNonUniform", {{"XScaleFactor", 2}, {"YScaleFactor", 3}, {"ZScaleFactor", 4}}},
         {"GeneralMatrix", {{"matrix", matrixBy(0, 0, 5)}}}});
    expectNear(steps.moved({1, 1, 1}), {4, 3, 9});
}

TEST(FltTransformation, scalesAboutACentre)
{
    Transformed const scale(Records{{"ScaleNonUniform",
                                     {{"XCenter", 1},
                                      {"YCenter", 2},
                                      {"ZCenter", 3},
                                      {"XScaleFactor", 2},
                                      {"YScaleFactor", 2},
                                      {"ZScaleFactor", 2}}}});
    expectNear(scale.moved({1, 2, 3}), {1, 2, 3});
    expectNear(scale.moved({2, 2, 3}), {3, 2, 3});
}

TEST(FltTransformation, turnsAboutAPointByDegreesAgainstTheClock)
{
    Transformed const turn(
        {{"RotateAboutPoint", {{"XCenterOfRotation", 1}, {"KAxisOfRotation", 2}, {"angleToRotate", 90}}}});
    expectNear(turn.moved({2, 0, 7}), {1, 1, 7});
}

TEST(FltTransformation, turnsAboutAnEdge)
{
    Transformed const turn(
        {{"RotateAboutEdge", {{"XCenter1", 1}, {"XCenter2", 1}, {"ZCenter2", 5}, {"angleToRotate", 90}}}});
    expectNear(turn.moved({2, 0, 7}), {1, 1, 7});
}

TEST(FltTransformation, doesNotTurnAboutNoAxis)
{
    expectNear(Transformed(Records{{"RotateAboutPoint", {{"angleToRotate", 90}}}}).moved({1, 2, 3}),
               {1, 2, 3});
}

TEST(FltTransformation, putsOneFrameOnAnother)
{
    Transformed const put(Records{{"PutTransform",
                                   {{"XFromOrigin", 1},
                                    {"XFromAlign", 2},
                                    {"XFromTrack", 1},
                                    {"YFromTrack", 1},
                                    {"ZToOrigin", 4},
                                    {"YToAlign", 3},
                                    {"ZToAlign", 4},
                                    {"XToTrack", -2},
                                    {"ZToTrack", 4}}}});
    expectNear(put.moved({1, 0, 0}), {0, 0, 4});
    expectNear(put.moved({2, 0, 0}), {0, 1, 4});
    expectNear(put.moved({1, 1, 0}), {-1, 0, 4});
    expectNear(put.moved({1, 0, 1}), {0, 0, 5});
}

TEST(FltTransformation, leavesOutWhatNumbersCantTell)
{
    constexpr double endless = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(
        Transformed(Records{{"Matrix", {{"matrix", matrixBy(endless, 0, 0)}}}}).get().getMatrices().empty());
    EXPECT_TRUE(
        Transformed(Records{{"Matrix", {{"matrix", matrixBy(0, 0, 0, 2e30)}}}}).get().getMatrices().empty());
    EXPECT_EQ(Transformed(Records{{"Matrix", {{"matrix", matrixBy(9e29, 0, 0)}}}}).get().getMatrices().size(),
              1U);
    EXPECT_TRUE(Transformed(Records{{"Translate", {{"deltaX", endless}}}}).get().getMatrices().empty());
}

TEST(FltTransformation, repeatsOnlyWhatIsMoved)
{
    std::pair<char const*, Fields> const replicate("Replicate", {{"numberOfReplications", 3}});
    EXPECT_EQ(Transformed(Records{replicate}).get().getReplications(), 0);
    FltTransformation const moved =
        Transformed(Records{replicate, {"Matrix", {{"matrix", matrixBy(2, 0, 0)}}}}).get();
    EXPECT_EQ(moved.getReplications(), 3);
    EXPECT_EQ(moved.getStep()[3][0], 2);
}

TEST(FltTransformation, placesTheFirstPartAndItsCopies)
{
    SbDPMatrix step;
    step.setTranslate({2, 0, 0});
    std::vector<SbDPMatrix> const places = FltTransformation::placesOf(step, 2);
    ASSERT_EQ(places.size(), 3U);
    EXPECT_EQ(places[0], SbDPMatrix::identity());
    EXPECT_EQ(places[1][3][0], 2);
    EXPECT_EQ(places[2][3][0], 4);
    SbDPMatrix far;
    far.setTranslate({6e29, 0, 0});
    EXPECT_EQ(FltTransformation::placesOf(far, 5).size(), 2U);
}

TEST(FltTransformation, tellsStepsInDoublesWhereFloatsWouldMoveThem)
{
    Transformed const near(Records{{"Translate", {{"deltaX", 0.1}}}});
    EXPECT_EQ(near.get().getMatrices().at(0)[3][0], static_cast<double>(0.1F));
    Transformed const far(Records{{"Translate", {{"deltaX", 4500000.123}}}});
    EXPECT_EQ(far.get().getMatrices().at(0)[3][0], 4500000.123);
}

TEST(FltTransformation, turnsAFarPointAboutItself)
{
    Fields const turn = {{"XCenterOfRotation", 4500000.3},
                         {"YCenterOfRotation", 5300000.7},
                         {"KAxisOfRotation", 1},
                         {"angleToRotate", 30}};
    SbVec3d const center(4500000.3, 5300000.7, 0);
    SbDPMatrix const step = Transformed(Records{{"RotateAboutPoint", turn}}).get().getMatrices().at(0);
    for (SbDPMatrix const& place : FltTransformation::placesOf(step, 12)) {
        SbVec3d turned;
        place.multVecMatrix(center, turned);
        EXPECT_LT((turned - center).length(), 1e-6);
    }
}

TEST(FltTransformation, takesTheStepsForAMatrixThatIsTheirRounding)
{
    Fields const step = {{"deltaX", 4500000.123}};
    auto const placeBy = [&](double x) {
        return Transformed(Records{{"Matrix", {{"matrix", matrixBy(x, 0, 0)}}}, {"Translate", step}})
            .get()
            .getMatrices()
            .at(0)[3][0];
    };
    EXPECT_EQ(placeBy(4500000), 4500000.123);
    EXPECT_EQ(placeBy(4500100), 4500100) << "another matrix";
    for (std::size_t const i : {3, 7, 11}) {
        std::vector<double> matrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 4500000, 0, 0, 1};
        matrix[i] = 0.5; // also another matrix
        EXPECT_EQ(Transformed(Records{{"Matrix", {{"matrix", matrix}}}, {"Translate", step}})
                      .get()
                      .getMatrices()
                      .at(0)[3][0],
                  4500000)
            << i;
    }
}

TEST(FltTransformation, takesNoMatrixForARoundingThatIsTurnedOrMovedByMore)
{
    auto const takes = [](double scale, double x, double scaleOfMatrix, double xOfMatrix) {
        std::vector<double> const matrix = {scaleOfMatrix, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0,
                                            xOfMatrix,     0, 0, 1};
        Transformed const both(
            Records{{"Matrix", {{"matrix", matrix}}},
                    {"ScaleNonUniform", {{"XScaleFactor", scale}, {"YScaleFactor", 1}, {"ZScaleFactor", 1}}},
                    {"Translate", {{"deltaX", x}}}});
        return both.get().getMatrices().at(0)[3][0] != xOfMatrix;
    };
    EXPECT_TRUE(takes(1, 4500000.123, 1.000009, 4500000)) << "by a hundred thousandth";
    EXPECT_FALSE(takes(1, 4500000.123, 1.000015, 4500000));
    EXPECT_TRUE(takes(100000, 4500000.123, 99999, 4500000)) << "of the largest";
    EXPECT_FALSE(takes(100000, 4500000.123, 99998.5, 4500000));
    EXPECT_TRUE(takes(1, 4500000.123, 1, 4500005)) << "by eight times the error and a millionth of the way";
    EXPECT_FALSE(takes(1, 4500000.123, 1, 4500006));
    EXPECT_TRUE(takes(1, 4000000, 1, 4000004));
    EXPECT_FALSE(takes(1, 4000000, 1, 4000004.25));
}

TEST(FltTransformation, putsFramesOfPointsInOneLineByTheirOrigins)
{
    Transformed const put(Records{{"PutTransform",
                                   {{"XFromOrigin", 1},
                                    {"XFromAlign", 2},
                                    {"XFromTrack", 3},
                                    {"ZToOrigin", 4},
                                    {"YToAlign", 3},
                                    {"ZToAlign", 4},
                                    {"YToTrack", -2},
                                    {"ZToTrack", 4}}}});
    expectNear(put.moved({1, 2, 3}), {0, 2, 7});
}

} // namespace
