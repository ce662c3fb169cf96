// Scenes of databases that lie far from their zero, read back in doubles.

#include "support/CompleteDatabase.h"
#include "support/ExactPoints.h"
#include "visual/FltVisualWalk.h"

#include <gtest/gtest.h>

namespace
{

using Place = std::vector<double>;
using Options = FltVisualConversion::Options;

// Numbers that floats don't hold.
Place const onAMap = {4'500'000.123, 5'300'000.456, 120.789};
Place const onTheGlobe = {4'027'894.006, 306'123.719, 4'919'499.338};

/// The visual of a database, and its scene.
struct Loaded {
    FltVisualConversion::Result visual;
    SoNodeRef<SoSeparator> root;

    explicit Loaded(CompleteDatabase& database, Options const& options = {}) : visual(database.see(options))
    {
        bool const isInMetres = options.units == FltVisualOptions::Units::metres;
        root = FltSceneMaker::makeOfKept(visual.root, visual.textures, isInMetres ? 1 : visual.metresPerUnit)
                   .root;
    }
};

double extentOf(std::vector<SbVec3d> const& places)
{
    SbBox3d box;
    for (SbVec3d const& place : places)
        box.extendBy(place);
    SbVec3d const size = box.getSize();
    return std::max({size[0], size[1], size[2]});
}

/// All vertices stand where the visual has them, within a millionth of the extent of their mesh. A scale is a
/// number of floats, which makes everything larger or smaller by as little as they differ.
void expectRight(Loaded const& loaded, bool isScaled)
{
    ExactPoints const exact(loaded.root.get());
    SbBox3d all;
    for (std::vector<SbVec3d> const& places : exact.shapes)
        for (SbVec3d const& place : places)
            all.extendBy(place);
    double const ofScale = isScaled ? 2e-8 * all.getSize().length() : 0;
    std::size_t shape = 0;
    for (FltVisualWalk walk(loaded.visual.root, FltVisualWalk::LevelsOfDetail::all); walk.next(); ++shape) {
        ASSERT_LT(shape, exact.shapes.size());
        std::vector<SbVec3d> wanted;
        for (SbVec3f const& position : walk.mesh().positions) {
            SbVec3d place;
            walk.matrix().multVecMatrix(walk.mesh().origin + SbVec3d(position), place);
            wanted.push_back(place);
        }
        ASSERT_EQ(exact.shapes[shape].size(), wanted.size());
        double const allowed = 1e-6 * extentOf(wanted) + ofScale;
        for (std::size_t i = 0; i < wanted.size(); ++i)
            EXPECT_LE((exact.shapes[shape][i] - wanted[i]).length(), allowed) << shape << ' ' << i;
    }
    EXPECT_EQ(shape, exact.shapes.size());
    EXPECT_GT(shape, 0U);
}

/// How many translations and matrices of a scene are longer than a hundred kilometres.
long countLong(Loaded const& loaded)
{
    std::vector<double> const moves = ExactPoints(loaded.root.get()).movesByLength();
    return std::count_if(moves.begin(), moves.end(), [](double length) { return length > 1e5; });
}

FltValue matrix(double x, double y, double z, double turned = 0)
{
    double const cosine = std::cos(turned), sine = std::sin(turned);
    return std::vector<double>{cosine, sine, 0, 0, -sine, cosine, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

/// A square with one side of ten centimetres.
std::vector<double> stripe(CompleteDatabase& database, Place const& at, double x = 0)
{
    return database.polygon({{at[0] + x, at[1], at[2]},
                             {at[0] + x + 0.1, at[1], at[2]},
                             {at[0] + x + 0.1, at[1] + 1, at[2]},
                             {at[0] + x, at[1] + 1, at[2]}});
}

using FillDatabase = void (*)(CompleteDatabase& database, Place const& at);

void objects(CompleteDatabase& database, Place const& at)
{
    std::vector<double> const near = stripe(database, at), beside = stripe(database, at, 0.2),
                              distant = stripe(database, at, 50000);
    database.begin();
    database.object(near).object(beside).object(distant);
}

void turnedBack(CompleteDatabase& database, Place const& at)
{
    std::vector<double> const here = stripe(database, at);
    database.begin().add("Group").add("Matrix", {{"matrix", matrix(-at[0], -at[1], -at[2], 0)}}).push();
    database.object(here);
}

/// Turned about the far place, and moved back from there.
void belowItsInverse(CompleteDatabase& database, Place const& at)
{
    constexpr double turn = 0.5;
    double const x = at[0] * std::cos(turn) - at[1] * std::sin(turn);
    double const y = at[0] * std::sin(turn) + at[1] * std::cos(turn);
    std::vector<double> const here = stripe(database, {1, 2, 3});
    database.begin().add("Group").add("Matrix", {{"matrix", matrix(-x, -y, -at[2], turn)}}).push();
    database.writer.add("Group").add("Matrix", {{"matrix", matrix(at[0], at[1], at[2])}}).push();
    database.object(here);
}

void instances(CompleteDatabase& database, Place const& at)
{
    std::vector<double> const here = stripe(database, at), own = stripe(database, at, 7);
    database.begin().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    database.object(here).writer.pop();
    database.object(own).writer.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    database.writer.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    database.writer.add("Matrix", {{"matrix", matrix(20, 0, 0)}});
    // This one is brought to the zero of the database.
    database.writer.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    database.writer.add("Matrix", {{"matrix", matrix(-at[0], -at[1], -at[2])}});
}

void replicas(CompleteDatabase& database, Place const& at)
{
    std::vector<double> const here = stripe(database, at);
    database.begin().add("Group").add("Replicate", {{"numberOfReplications", 3}});
    database.writer.add("RotateAboutPoint", {{"XCenterOfRotation", at[0]},
                                             {"YCenterOfRotation", at[1]},
                                             {"KAxisOfRotation", 1},
                                             {"angleToRotate", 10}});
    database.writer.push();
    database.object(here);
}

void joint(CompleteDatabase& database, Place const& at)
{
    std::vector<double> const here = stripe(database, at);
    database.begin().add("DOF", {{"XOriginOfDOFLocalCoordinateSystem", at[0]},
                                 {"YOriginOfDOFLocalCoordinateSystem", at[1]},
                                 {"ZOriginOfDOFLocalCoordinateSystem", at[2]},
                                 {"XPointOnXAxisOfDOFLocalCoordinateSystem", at[0] + 1},
                                 {"YPointOnXAxisOfDOFLocalCoordinateSystem", at[1]},
                                 {"ZPointOnXAxisOfDOFLocalCoordinateSystem", at[2]},
                                 {"XPointInXYPlaneOfDOFLocalCoordinateSystem", at[0]},
                                 {"YPointInXYPlaneOfDOFLocalCoordinateSystem", at[1] + 1},
                                 {"ZPointInXYPlaneOfDOFLocalCoordinateSystem", at[2]},
                                 {"currentYaw", 30}});
    database.writer.push();
    database.object(here);
}

void placedBySteps(CompleteDatabase& database, Place const& at)
{
    std::vector<double> const here = stripe(database, {0, 0, 0});
    database.begin().add("Group");
    database.writer.add("Translate", {{"deltaX", at[0]}, {"deltaY", at[1]}, {"deltaZ", at[2]}}).push();
    database.object(here);
}

void references(CompleteDatabase& database, Place const& at)
{
    constexpr int feet = 4;
    CompleteDatabase other(1570, {{"vertexCoordinateUnits", feet}});
    std::vector<double> const there = stripe(other, at);
    other.begin();
    other.object(there);
    database.folder.write("other.flt", other.writer.bytes());
    database.begin().add("ExternalReference", {{"asciiPath", "other.flt"}});
    database.writer.add("ExternalReference", {{"asciiPath", "other.flt"}});
    database.writer.add("Matrix", {{"matrix", matrix(9, 0, 0)}});
}

void levelsAndSwitches(CompleteDatabase& database, Place const& at)
{
    std::vector<double> const fine = stripe(database, at), coarse = stripe(database, at, 1),
                              chosen = stripe(database, at, 2);
    database.begin().add("LOD", {{"switchInDistance", 10}}).push();
    database.object(fine).writer.pop();
    database.writer.add("LOD", {{"switchInDistance", 90}, {"switchOutDistance", 10}}).push();
    database.object(coarse).writer.pop();
    database.writer.add("Switch", {{"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1}}});
    database.writer.push();
    database.object(chosen);
}

struct Case {
    char const* name;
    FillDatabase fill;
};

class FarPlaces : public testing::TestWithParam<Case>
{
};

} // namespace

TEST_P(FarPlaces, areReadBackAsTheyAreStored)
{
    constexpr int feet = 4;
    for (Place const& at : {onAMap, onTheGlobe})
        for (int const unit : {0, feet})
            for (auto const origin : {FltVisualOptions::Origin::stored, FltVisualOptions::Origin::centre})
                for (auto const units : {FltVisualOptions::Units::metres, FltVisualOptions::Units::stored}) {
                    SCOPED_TRACE(testing::Message()
                                 << at[0] << " unit " << unit << " origin " << static_cast<int>(origin)
                                 << " units " << static_cast<int>(units));
                    CompleteDatabase database(1570, {{"vertexCoordinateUnits", unit}});
                    GetParam().fill(database, at);
                    Options options;
                    options.origin = origin;
                    options.units = units;
                    bool const isInMetres = units == FltVisualOptions::Units::metres;
                    bool const isReferring = GetParam().fill == references;
                    expectRight(Loaded(database, options), (unit == feet && isInMetres) || isReferring);
                }
}

INSTANTIATE_TEST_SUITE_P(Each, FarPlaces,
                         testing::Values(Case{"objects", objects}, Case{"turnedBack", turnedBack},
                                         Case{"belowItsInverse", belowItsInverse},
                                         Case{"instances", instances}, Case{"replicas", replicas},
                                         Case{"joint", joint}, Case{"placedBySteps", placedBySteps},
                                         Case{"references", references},
                                         Case{"levelsAndSwitches", levelsAndSwitches}),
                         [](auto const& instance) { return instance.param.name; });

TEST(FarPlacesTest, haveOneLongTranslationAndAtTheCentreNone)
{
    for (FillDatabase const fill : {objects, replicas, joint, placedBySteps, references, levelsAndSwitches}) {
        CompleteDatabase database;
        fill(database, onAMap);
        EXPECT_EQ(countLong(Loaded(database)), 1);
        Options options;
        options.origin = FltVisualOptions::Origin::centre;
        EXPECT_EQ(countLong(Loaded(database, options)), 0);
    }
    for (FillDatabase const fill : {turnedBack, belowItsInverse}) {
        CompleteDatabase database;
        fill(database, onAMap);
        EXPECT_EQ(countLong(Loaded(database)), 0) << "what cancels isn't there";
    }
}

TEST(FarPlacesTest, areWhereTheDatabaseHasThem)
{
    CompleteDatabase database;
    objects(database, onAMap);
    SbVec3d const first = ExactPoints(Loaded(database).root.get()).shapes.at(0).at(0);
    EXPECT_LT((first - SbVec3d(onAMap.data())).length(), 1e-6);

    Options options;
    options.origin = FltVisualOptions::Origin::centre;
    Loaded const centred(database, options);
    SbVec3d const moved = ExactPoints(centred.root.get()).shapes.at(0).at(0);
    EXPECT_LT(std::abs(moved[0]), 25001) << "half of the extent";
    EXPECT_LT((moved + centred.visual.offset - SbVec3d(onAMap.data())).length(), 1e-6);
}

TEST(FarPlacesTest, turnAboutThemselves)
{
    CompleteDatabase database;
    joint(database, onAMap);
    SbVec3d const hinge = ExactPoints(Loaded(database).root.get()).shapes.at(0).at(0);
    EXPECT_LT((hinge - SbVec3d(onAMap.data())).length(), 1e-6);
}

TEST(FarPlacesTest, areCountedInTheUnitOfTheScene)
{
    constexpr int feet = 4;
    CompleteDatabase database(1570, {{"vertexCoordinateUnits", feet}});
    objects(database, onAMap);
    Options options;
    options.origin = FltVisualOptions::Origin::centre;
    double const inMetres = database.see(options).offset[1];
    options.units = FltVisualOptions::Units::stored;
    double const stored = database.see(options).offset[1];
    EXPECT_NEAR(stored, onAMap[1], 1);
    EXPECT_DOUBLE_EQ(inMetres, stored * 0.3048);
}

TEST(FarPlacesTest, changeNothingWhereFloatsHoldAllPlaces)
{
    // Whole numbers, and what is so wide that its rounding isn't seen.
    for (Place const& at : {Place{0, 0, 0}, {1000.123, -700.456, 30}, {4'500'000, 5'300'000, 120}}) {
        CompleteDatabase database;
        std::vector<double> const here =
            database.polygon({{at[0], at[1], at[2]}, {at[0] + 2, at[1], at[2]}, {at[0], at[1] + 2, at[2]}});
        database.begin();
        database.object(here);
        Loaded const loaded(database);
        EXPECT_TRUE(ExactPoints(loaded.root.get()).movesByLength().empty()) << at[0];
        Options options;
        options.origin = FltVisualOptions::Origin::centre;
        bool const isFar = at[0] > 1e6;
        EXPECT_EQ(database.see().offset, SbVec3d(0, 0, 0));
        EXPECT_EQ(database.see(options).offset != SbVec3d(0, 0, 0), isFar);
        EXPECT_EQ(database.see(options).root->transform.empty(), !isFar);
        if (isFar)
            expectRight(Loaded(database, options), false);
    }
}
