#include "pictures/PictureDatabases.h"

#include "pictures/PictureStage.h"
#include "support/AnimatedGroup.h"
#include "support/MadeAttributes.h"
#include "support/SmallPictures.h"
#include "writer/FltMeshRecords.h"

#include <algorithm>
#include <array>
#include <ostream>

namespace
{

using Fields = FltWriter::Fields;
using Mesh = FltMeshRecords;

void save(PictureStage const& stage, ScratchFolder const& folder)
{
    stage.flt.save(folder / "model.flt");
}

/// A picture of four fields, in the SGI format: red, yellow, green, and clear at the upper right.
void saveImage(ScratchFolder const& folder)
{
    constexpr int side = 32;
    unsigned char const fields[2][2][4] = {{{220, 40, 40, 255}, {240, 240, 60, 255}},
                                           {{50, 170, 60, 255}, {0, 0, 0, 0}}};
    auto const pixel = [&](int x, int y) -> std::array<unsigned char, 4> {
        auto const& field = fields[y / (side / 2)][x / (side / 2)];
        return {field[0], field[1], field[2], field[3]};
    };
    static_cast<void>(folder.write("image.rgba", SmallPictures::clearSgi(side, pixel)));
}

std::vector<double> matrixWithMove(double x, double y, double z)
{
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

void meshes(ScratchFolder const& folder)
{
    PictureStage stage;
    stage.begin().add("Object").push();
    double left = -5;
    for (int const kind : {Mesh::triangleStrip, Mesh::triangleFan, Mesh::quadStrip, Mesh::polygon}) {
        std::string body = Mesh::mesh();
        body[18] = 1; // both sides
        body[48] = 1; // its vertices' colours
        std::string pool = Mesh::poolHead(6, Mesh::hasPlace | Mesh::hasPackedColor);
        for (int i = 0; i < 6; ++i) {
            int const row = i / 2;
            for (double const part : {left + i % 2 * 2.0, 0.0, row * 1.5})
                pool += FltWriter::bigDouble(part);
            pool += '\xff' + std::string(row == 0   ? "\x30\x30\xd0"
                                         : row == 1 ? "\x30\xc0\xd0"
                                                    : "\xd0\x60\x30");
        }
        bool const isRound = kind == Mesh::triangleFan || kind == Mesh::polygon;
        std::vector<int> const indices =
            isRound ? std::vector{0, 1, 3, 5, 4, 2} : std::vector{0, 1, 2, 3, 4, 5};
        stage.flt.addRaw(Mesh::meshOpcode, body).addRaw(Mesh::poolOpcode, pool).push();
        stage.flt.addRaw(Mesh::primitiveOpcode, Mesh::primitive(kind, 1, indices)).pop();
        left += 2.7;
    }
    save(stage, folder);
}

void pointsAndLines(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> posts, heads;
    for (double x = -5; x < 6; x += 2) {
        posts.push_back(stage.vertices({{x, 0, 0}, {x, 0, 2.5}}));
        heads.push_back(stage.vertices({{x, 0, 2.8}}));
    }
    std::vector<double> const panel = stage.panel(-1);
    stage.begin().add("Object").push();
    for (std::vector<double> const& post : posts)
        stage.flt.face(post, stage.face(stage.red));
    for (std::vector<double> const& head : heads)
        stage.flt.face(head, stage.face(stage.yellow));
    stage.flt.face(panel, stage.face(stage.blue));
    save(stage, folder);
}

void concaveFaces(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const dart = stage.vertices({{-5, 0, 0}, {-4, 0, 1.2}, {-3, 0, 0}, {-4, 0, 3}});
    std::vector<double> const comb = stage.vertices({{-2, 0, 0},
                                                     {2, 0, 0},
                                                     {2, 0, 3},
                                                     {1.2, 0, 3},
                                                     {1.2, 0, 1},
                                                     {0.4, 0, 1},
                                                     {0.4, 0, 3},
                                                     {-0.4, 0, 3},
                                                     {-0.4, 0, 1},
                                                     {-1.2, 0, 1},
                                                     {-1.2, 0, 3},
                                                     {-2, 0, 3}});
    std::vector<double> const bent = stage.vertices({{3, 0, 0}, {5, -1, 0}, {5, 0, 3}, {3, -1, 3}});
    stage.begin();
    stage.object(dart, stage.face(stage.red));
    stage.object(comb, stage.face(stage.green));
    stage.object(bent, stage.face(stage.blue));
    save(stage, folder);
}

void wrongOffsets(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> house = stage.vertices({{-2, 0, 0}, {2, 0, 0}, {2, 0, 2}, {0, 0, 3}, {-2, 0, 2}});
    stage.begin();
    house[3] += 2; // within a vertex
    stage.object(house, stage.face(stage.red));
    save(stage, folder);
}

void mixedVertices(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> panel = stage.panel(-3);
    std::vector<double> const other =
        stage.panel(-3, "VertexColorNormalUv", {{"vertexNormal", {0, -1, 0}}, {"texture", {1, 1}}});
    panel[1] = other[1];
    panel[2] = other[2];
    std::vector<double> const whole = stage.panel(1, "VertexColorNormal", {{"vertexNormal", {0, -1, 0}}});
    stage.begin();
    stage.object(panel, stage.face(stage.red));
    stage.object(whole, stage.face(stage.red));
    save(stage, folder);
}

void lightModes(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> panels;
    for (double x = -5; x < 5; x += 2.6)
        panels.push_back(stage.panel(
            x, "VertexColorNormal",
            {{"vertexNormal", {0.9, -0.3, 0.3}}, {"packedColor", stage.yellow}, {"flags", 0x1000}}));
    stage.begin();
    for (int mode = 0; mode < 4; ++mode)
        stage.object(panels[static_cast<std::size_t>(mode)], stage.face(stage.blue, {{"lightMode", mode}}));
    save(stage, folder);
}

void materials(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> const panels = {stage.panel(-5), stage.panel(-1), stage.panel(3)};
    stage.flt.add("Material", {{"index", 0}, {"diffuse", {0.9, 0.3, 0.2}}, {"alpha", 1}});
    stage.flt.add("Material",
                  {{"index", 1}, {"diffuse", {0.1, 0.1, 0.1}}, {"emissive", {0, 0.6, 0.1}}, {"alpha", 1}});
    stage.flt.add("Material", {{"index", 2}, {"diffuse", {0, 0, 0}}, {"alpha", 1}});
    stage.begin().add("Object").push();
    for (int i = 0; i < 3; ++i)
        stage.flt.face(panels[static_cast<std::size_t>(i)],
                       stage.face(stage.white, {{"materialIndex", i}, {"lightMode", i == 2 ? 0 : 2}}));
    save(stage, folder);
}

void drawTypes(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> panels;
    for (double x = -5.5; x < 5; x += 2.2)
        panels.push_back(
            stage.vertices({{x, 0, 0}, {x, 0, 3}, {x + 1.8, 0, 3}, {x + 1.8, 0, 0}})); // from behind
    stage.begin();
    for (int type = 0; type < 5; ++type)
        stage.object(panels[static_cast<std::size_t>(type)],
                     stage.face(stage.red, {{"drawType", type}, {"alternatePackedColor", stage.white}}));
    save(stage, folder);
}

void hiddenFaces(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const hidden = stage.panel(-3), shown = stage.panel(1);
    stage.begin();
    stage.object(hidden, stage.face(stage.red, {{"flags", 0x14000000}}));
    stage.object(shown, stage.face(stage.green));
    save(stage, folder);
}

void billboards(ScratchFolder const& folder)
{
    PictureStage stage;
    saveImage(folder);
    std::vector<double> const still = stage.texturedPanel(-5), upright = stage.texturedPanel(-1),
                              point = stage.texturedPanel(3);
    stage.flt.add("TexturePattern", {{"fileName", "image.rgba"}, {"patternIndex", 0}});
    stage.begin();
    for (auto const& [offsets, kind] : {std::pair{still, 1}, {upright, 2}, {point, 4}})
        stage.object(offsets, stage.face(stage.white, {{"templateBillboard", kind},
                                                       {"texturePatternIndex", 0},
                                                       {"lightMode", 0},
                                                       {"drawType", 1}}));
    save(stage, folder);
}

void transparency(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const half = stage.panel(-4, "VertexColor", {}, -1),
                              faint = stage.panel(2, "VertexColor", {}, -1);
    std::vector<double> const wall = stage.vertices({{-6, 1, 0.5}, {6, 1, 0.5}, {6, 1, 1.5}, {-6, 1, 1.5}});
    stage.begin();
    stage.object(half, stage.face(stage.red, {{"transparency", 0x8000}}));
    stage.object(faint, stage.face(stage.red, {{"transparency", 0x8000}}), {{"transparency", 0x8000}});
    stage.object(wall, stage.face(stage.blue));
    save(stage, folder);
}

void levelsOfDetail(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const near = stage.panel(-1), middle = stage.panel(-5), far = stage.panel(3);
    stage.begin();
    for (auto const& [offsets, out, in] : {std::tuple{near, 0, 12}, {middle, 12, 100}, {far, 100, 1000}}) {
        stage.flt.add("LOD", {{"switchOutDistance", out}, {"switchInDistance", in}, {"ZcenterCoordinate", 1}})
            .push();
        stage.object(offsets, stage.face(stage.green));
        stage.flt.pop();
    }
    save(stage, folder);
}

/// Near panels between two far ones, which stay.
void additiveLevels(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const near = stage.panel(-1), left = stage.panel(-5), right = stage.panel(3);
    stage.begin();
    for (auto const& [out, in] : {std::pair(0, 100), {100, 1000}}) {
        stage.flt.add("LOD", {{"switchOutDistance", out}, {"switchInDistance", in}, {"flags", 0x40000000}})
            .push();
        if (out == 0)
            stage.object(near, stage.face(stage.yellow));
        for (std::vector<double> const& panel : {left, right})
            if (out > 0)
                stage.object(panel, stage.face(stage.green));
        stage.flt.pop();
    }
    save(stage, folder);
}

/// Of three frames the first is shown.
void flipBooks(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> const panels = {stage.panel(-5), stage.panel(-1), stage.panel(3)};
    stage.begin();
    addAnimatedGroup(stage.flt, "flame", 0x40000000, 0, 1, 0).push();
    for (std::vector<double> const& panel : panels)
        stage.object(panel, stage.face(stage.yellow));
    save(stage, folder);
}

/// Three panels with smaller ones in their planes, which stand before them in the file: of faces, of Objects
/// and of groups. A yellow one with a low priority stays behind each.
void orderInAPlane(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> walls, signs;
    for (double const x : {-5.0, -1.0, 3.0}) {
        walls.push_back(stage.panel(x));
        signs.push_back(stage.vertices({{x + 0.5, 0, 1}, {x + 1.5, 0, 1}, {x + 1.5, 0, 2}, {x + 0.5, 0, 2}}));
    }
    FltWriter& flt = stage.begin();
    auto const priority = [](int value) { return Fields{{"relativePriority", value}}; };
    flt.add("Object").push();
    flt.face(signs[0], stage.face(stage.red, priority(2)));
    flt.face(signs[0], stage.face(stage.yellow, priority(-1)));
    flt.face(walls[0], stage.face(stage.blue, priority(1))).pop();
    stage.object(signs[1], stage.face(stage.red), priority(5));
    stage.object(signs[1], stage.face(stage.yellow), priority(3));
    stage.object(walls[1], stage.face(stage.blue), priority(4));
    for (auto const& [value, corners, color] :
         {std::tuple(7, signs[2], stage.red), {-7, signs[2], stage.yellow}, {0, walls[2], stage.blue}}) {
        flt.add("Group", priority(value)).push();
        stage.object(corners, stage.face(color));
        flt.pop();
    }
    save(stage, folder);
}

/// Objects that aren't illuminated, are flat shaded, and are hidden by day or at night.
void objectFlags(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> smooth, panels[3];
    for (auto const& [x, z, lean] :
         {std::tuple(-5.0, 0.0, -1.0), {-3.0, 0.0, 1.0}, {-3.0, 3.0, 1.0}, {-5.0, 3.0, -1.0}})
        smooth.push_back(stage.flt.vertex("VertexColorNormal", x, 0, z, {{"vertexNormal", {lean, -0.2, 0}}}));
    for (int i = 0; i < 3; ++i)
        panels[i] = stage.panel(-2 + 2.5 * i);
    stage.begin();
    stage.object(smooth, stage.face(stage.green), {{"flags", 0x08000000}});
    for (auto const& [panel, flags] : {std::pair(0, 0x10000000U), {1, 0x80000000U}, {2, 0x20000000U}})
        stage.object(panels[panel], stage.face(stage.green), {{"flags", flags}});
    save(stage, folder);
}

void degreesOfFreedom(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const panel = stage.panel(-1);
    stage.begin().add("DOF", {{"XOriginOfDOFLocalCoordinateSystem", -1},
                              {"XPointInXYPlaneOfDOFLocalCoordinateSystem", -1},
                              {"YPointInXYPlaneOfDOFLocalCoordinateSystem", 1},
                              {"currentPitch", 0},
                              {"currentYaw", -30},
                              {"currentRoll", -20},
                              {"ZCurrentValue", 0.7}});
    stage.flt.push();
    stage.object(panel, stage.face(stage.red, {{"drawType", 1}}));
    save(stage, folder);
}

void switches(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> const panels = {stage.panel(-5), stage.panel(-1), stage.panel(3)};
    stage.begin().add("Switch", {{"indexOfCurrentMask", 1},
                                 {"numberOfMasks", 2},
                                 {"numberOf32BitWordsPerMask", 1},
                                 {"masks", {2, 5}}});
    stage.flt.push();
    for (std::vector<double> const& panel : panels)
        stage.object(panel, stage.face(stage.yellow));
    save(stage, folder);
}

void instancesAndReplicas(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const post = stage.vertices({{0, 0, 0}, {0.6, 0, 0}, {0.6, 0, 3}, {0, 0, 3}});
    stage.begin().add("InstanceReference", {{"instanceDefinitionNumber", 3}});
    stage.flt.add("Matrix", {{"matrix", matrixWithMove(-5, 0, 0)}});
    stage.flt.add("InstanceDefinition", {{"instanceDefinitionNumber", 3}}).push();
    stage.object(post, stage.face(stage.red));
    stage.flt.pop().add("Group").add("Replicate", {{"numberOfReplications", 3}});
    stage.flt.add("Matrix", {{"matrix", matrixWithMove(1.5, 0, 0)}}).push();
    stage.object(post, stage.face(stage.blue));
    save(stage, folder);
}

void subfaces(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const wall = stage.vertices({{-4, 0, 0}, {4, 0, 0}, {4, 0, 3}, {-4, 0, 3}});
    std::vector<double> const window = stage.vertices({{-1, 0, 1}, {1, 0, 1}, {1, 0, 2}, {-1, 0, 2}});
    stage.begin().add("Object").push();
    stage.flt.face(wall, stage.face(stage.yellow)).add("PushSubface");
    stage.flt.face(window, stage.face(stage.blue)).add("PopSubface");
    save(stage, folder);
}

void references(ScratchFolder const& folder)
{
    constexpr int feet = 4;
    PictureStage other(1570, {{"vertexCoordinateUnits", feet}});
    std::vector<double> const panel = other.panel(0);
    other.flt.push();
    other.object(panel, other.face(other.red));
    other.flt.save(folder / "other.flt");
    PictureStage stage(1570, {{"vertexCoordinateUnits", feet}});
    std::vector<double> const beside = stage.panel(-3);
    stage.begin().add("ExternalReference", {{"asciiPath", "other.flt"}});
    stage.object(beside, stage.face(stage.red));
    save(stage, folder);
}

void lights(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const panel = stage.vertices({{-5, 1, 0}, {5, 1, 0}, {5, 1, 3}, {-5, 1, 3}});
    constexpr int infinite = 0;
    stage.flt.add("LightSourcePalette", {{"paletteIndex", 0}, {"diffuseGreen", 1}, {"lightType", infinite}});
    stage.begin().add("LightSource",
                      {{"indexIntoLightPalette", 0}, {"flags", {128, 0, 0, 0}}, {"infiniteOrSpotYaw", 0}});
    stage.object(panel, stage.face({255, 255, 255, 255}));
    save(stage, folder);
}

void lightPoints(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> lamps;
    std::vector<std::vector<double>> const colors = {stage.red, stage.yellow, stage.green, stage.white,
                                                     stage.blue};
    for (std::size_t i = 0; i < colors.size(); ++i)
        lamps.push_back(stage.flt.vertex("VertexColor", -4 + 2 * static_cast<double>(i), 0, 1.5,
                                         {{"packedColor", colors[i]}, {"flags", 0x1000}}));
    stage.begin().add("LightPoint", {{"actualPixelSize", 9}}).push();
    stage.flt.add("VertexList", {{"offsets", lamps}});
    save(stage, folder);
}

void texts(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const back = stage.vertices({{-5, 0.1, 0}, {5, 0.1, 0}, {5, 0.1, 3}, {-5, 0.1, 3}});
    stage.begin();
    stage.object(back, stage.face(stage.blue));
    stage.flt.add("Text", {{"XlowerLeftCorner", -4},
                           {"ZlowerLeftCorner", 0.5},
                           {"XupperRightCorner", 4},
                           {"ZupperRightCorner", 2.5},
                           {"color", 127}});
    stage.flt.add("Comment", {{"textDescription", "GATE 7"}});
    save(stage, folder);
}

/// Each line ends, or has its middle, where its panel does.
void justifiedTexts(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> panels;
    for (double const height : {0.0, 1.1, 2.2})
        panels.push_back(stage.vertices(
            {{-5, 0.1, height}, {5, 0.1, height}, {5, 0.1, height + 1}, {-5, 0.1, height + 1}}));
    stage.begin();
    for (std::vector<double> const& panel : panels)
        stage.object(panel, stage.face(stage.blue));
    for (int justification = 0; justification < 3; ++justification) {
        stage.flt.add("Text", {{"XlowerLeftCorner", -5},
                               {"ZlowerLeftCorner", 0.2 + 1.1 * justification},
                               {"XupperRightCorner", 5},
                               {"ZupperRightCorner", 1 + 1.1 * justification},
                               {"justification", justification},
                               {"color", 127}});
        stage.flt.add("Comment", {{"textDescription", "GATE 7"}});
    }
    save(stage, folder);
}

void lineStyles(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> lines;
    for (int i = 0; i < 5; ++i)
        lines.push_back(stage.vertices({{-5 + 2.5 * i, 0, 0}, {-4 + 2.5 * i, 0, 3}}));
    for (int i = 0; i < 5; ++i)
        stage.flt.add("LineStylePalette", {{"lineStyleIndex", i}, {"lineWidth", 1 + 3 * i}});
    stage.begin();
    for (int i = 0; i < 5; ++i)
        stage.object(lines[static_cast<std::size_t>(i)], stage.face(stage.red, {{"lineStyleIndex", i}}));
    save(stage, folder);
}

/// A local light of a palette, after its opcode and length.
std::string redLamp(int index, float quadraticFading)
{
    constexpr int local = 1;
    std::string body = FltWriter::big32(index) + std::string(232, '\0');
    auto const put = [&body](std::size_t at, std::string const& bytes) {
        body.replace(at - 4, bytes.size(), bytes);
    };
    put(56, FltWriter::bigFloat(1)); // of red
    put(88, FltWriter::big32(local));
    put(148, FltWriter::bigFloat(1) + FltWriter::bigFloat(0) + FltWriter::bigFloat(quadraticFading));
    return body;
}

/// A lamp that doesn't fade stands in front of the left half of a wall, one that does in front of the right.
void fadingLights(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> walls;
    for (double x = -5; x < 5; x += 0.5)
        for (double z = 0; z < 3; z += 0.5)
            walls.push_back(
                stage.vertices({{x, 1, z}, {x + 0.5, 1, z}, {x + 0.5, 1, z + 0.5}, {x, 1, z + 0.5}}));
    for (int const fading : {0, 1})
        stage.flt.addRaw(102, redLamp(fading, static_cast<float>(2 * fading)));
    stage.begin();
    for (int const fading : {0, 1}) {
        stage.flt.add("Group").push().add("LightSource",
                                          {{"indexIntoLightPalette", fading},
                                           {"flags", {128, 0, 0, 0}},
                                           {"localOrSpotPositionCoordinateX", fading == 0 ? -2.5 : 2.5},
                                           {"localOrSpotPositionCoordinateZ", 1.5}});
        std::size_t const half = walls.size() / 2, first = half * static_cast<std::size_t>(fading);
        for (std::size_t i = first; i < first + half; ++i)
            stage.object(walls[i], stage.face({255, 90, 90, 90}));
        stage.flt.pop();
    }
    save(stage, folder);
}

void transformations(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const panel = stage.panel(-1);
    stage.begin().add("Group").add("Translate", {{"deltaX", -3}});
    stage.flt.add("RotateAboutPoint", {{"JAxisOfRotation", 1}, {"angleToRotate", 30}}).push();
    stage.object(panel, stage.face(stage.red));
    stage.flt.pop().add("Group").add("ScaleNonUniform",
                                     {{"XScaleFactor", 2}, {"YScaleFactor", 1}, {"ZScaleFactor", 0.5}});
    stage.flt.add("Translate", {{"deltaX", 3}}).push();
    stage.object(panel, stage.face(stage.green));
    save(stage, folder);
}

void textures(ScratchFolder const& folder)
{
    PictureStage stage;
    saveImage(folder);
    std::vector<double> const plain = stage.texturedPanel(-5), tinted = stage.texturedPanel(-1),
                              whitened = stage.texturedPanel(3);
    stage.flt.add("TexturePattern", {{"fileName", "image.rgba"}, {"patternIndex", 0}});
    stage.begin();
    stage.object(plain, stage.face(stage.white, {{"texturePatternIndex", 0}}));
    stage.object(tinted, stage.face(stage.red, {{"texturePatternIndex", 0}}));
    stage.object(whitened, stage.face(stage.red, {{"texturePatternIndex", 0}, {"textureWhite", 1}}));
    save(stage, folder);
}

/// Leaves upon nothing: about half of the picture is clear, and black there.
void saveLeaves(ScratchFolder const& folder)
{
    auto const pixel = [](int x, int y) -> std::array<unsigned char, 4> {
        unsigned const mixed = static_cast<unsigned>(x / 2 * 31 + y / 2 * 57 + x / 2 * (y / 2) * 13) % 100;
        bool const isInCrown = (x - 31.5) * (x - 31.5) + (y - 31.5) * (y - 31.5) < 31 * 31;
        if (!isInCrown || mixed < 35)
            return {0, 0, 0, 0};
        return {static_cast<unsigned char>(40 + mixed), static_cast<unsigned char>(110 + mixed), 40, 255};
    };
    static_cast<void>(folder.write("leaves.rgba", SmallPictures::clearSgi(64, pixel)));
}

/// Crossed faces with leaves, and a wall behind: all of one Object, in one order or the other.
void trees(ScratchFolder const& folder, bool isTurned)
{
    PictureStage stage;
    saveLeaves(folder);
    std::vector<std::vector<double>> quads;
    for (double const x : {-4.0, 0.0, 4.0})
        for (bool const isAcross : {false, true}) {
            std::vector<double> offsets;
            for (std::vector<double> const& at : {std::vector<double>{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
                double const aside = 3 * at[0] - 1.5;
                offsets.push_back(stage.flt.vertex("VertexColorUv", x + (isAcross ? 0.4 * aside : aside),
                                                   isAcross ? aside : 0, 3 * at[1], {{"texture", at}}));
            }
            quads.push_back(offsets);
        }
    std::vector<double> const wall = stage.vertices({{-6, 2, 0}, {6, 2, 0}, {6, 2, 2}, {-6, 2, 2}});
    if (isTurned)
        std::reverse(quads.begin(), quads.end());
    stage.flt.add("TexturePattern", {{"fileName", "leaves.rgba"}, {"patternIndex", 0}});
    stage.begin().add("Object").push();
    for (std::vector<double> const& offsets : quads)
        stage.flt.face(offsets, stage.face(stage.white, {{"texturePatternIndex", 0},
                                                         {"templateBillboard", 1},
                                                         {"lightMode", 0},
                                                         {"drawType", 1}}));
    stage.flt.face(wall, stage.face(stage.yellow));
    save(stage, folder);
}

/// Panes of glass one behind the other, in one order or the other.
void glass(ScratchFolder const& folder, bool isTurned)
{
    PictureStage stage;
    std::vector<std::pair<std::vector<double>, std::vector<double>>> panes;
    for (auto const& [step, color] :
         {std::pair{-1.5, stage.red}, {-0.5, stage.yellow}, {0.5, stage.green}, {1.5, stage.blue}})
        panes.emplace_back(stage.vertices({{step - 2.5, step, 0},
                                           {step + 2.5, step, 0},
                                           {step + 2.5, step, 2.2},
                                           {step - 2.5, step, 2.2}}),
                           color);
    if (isTurned)
        std::reverse(panes.begin(), panes.end());
    stage.begin().add("Object").push();
    for (auto const& [offsets, color] : panes)
        stage.flt.face(offsets, stage.face(color, {{"transparency", 0x6000}, {"drawType", 1}}));
    save(stage, folder);
}

/// Two-sided walls of a building: on the left their corners go as their normals say, on the right not.
void sides(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> walls;
    for (auto const& [x, isTurned] : {std::pair{-3.0, false}, {3.0, true}})
        for (auto const& [nx, ny] : {std::pair{0.0, -1.0}, {1.0, 0.0}, {0.0, 1.0}, {-1.0, 0.0}}) {
            std::vector<std::vector<double>> corners;
            for (auto const& [along, z] : {std::pair{-1.5, 0.0}, {1.5, 0.0}, {1.5, 2.5}, {-1.5, 2.5}})
                corners.push_back({x + 1.5 * nx - along * ny, 1.5 * ny + along * nx, z});
            if (isTurned)
                std::reverse(corners.begin(), corners.end());
            walls.push_back(stage.vertices(corners, "VertexColorNormal", {{"vertexNormal", {nx, ny, 0.0}}}));
        }
    stage.begin().add("Object").push();
    for (std::vector<double> const& wall : walls)
        stage.flt.face(wall, stage.face(stage.yellow, {{"drawType", 1}}));
    save(stage, folder);
}

/// A house of one-sided faces as it is modelled, in a mirror, and in two. The last stand in a replication.
void mirrors(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const front =
        stage.vertices({{-1, -0.8, 0}, {0.6, -0.8, 0}, {0.6, -0.8, 1.4}, {-1, -0.8, 2}});
    std::vector<double> const side =
        stage.vertices({{0.6, -0.8, 0}, {0.6, 0.8, 0}, {0.6, 0.8, 1.4}, {0.6, -0.8, 1.4}});
    std::vector<double> const back =
        stage.vertices({{0.6, 0.8, 0}, {-1, 0.8, 0}, {-1, 0.8, 2}, {0.6, 0.8, 1.4}});
    auto const placed = [](double scale, double x) -> PictureStage::Fields {
        return {{"matrix", std::vector<double>{scale, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, 0, 0, 1}}};
    };
    stage.begin().add("InstanceDefinition", {{"instanceDefinitionNumber", 3}}).push().add("Object").push();
    stage.flt.face(front, stage.face(stage.red)).face(side, stage.face(stage.blue));
    stage.flt.face(back, stage.face(stage.green)).pop().pop();
    stage.flt.add("InstanceReference", {{"instanceDefinitionNumber", 3}}).add("Matrix", placed(1, -4.5));
    stage.flt.add("Group").add("Matrix", placed(-1, -1.5)).push();
    stage.flt.add("InstanceReference", {{"instanceDefinitionNumber", 3}}).pop();
    stage.flt.add("Group").add("Matrix", placed(-1, 3)).push();
    stage.flt.add("InstanceReference", {{"instanceDefinitionNumber", 3}});
    stage.flt.add("Matrix", placed(-1, 1.5)).add("Replicate", {{"numberOfReplications", 1}}).pop();
    save(stage, folder);
}

void bowTies(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const even = stage.vertices({{-5, 0, 0}, {-1, 0, 3}, {-1, 0, 0}, {-5, 0, 3}});
    std::vector<double> const uneven =
        stage.vertices({{1, 0, 0.5}, {5, 0, 0}, {5, 0, 3}, {1, 0, 0}}, "VertexColor");
    std::vector<double> const crossed = stage.vertices({{1, 0, 3}, {2.4, 0, 3}, {1, 0, 1.5}, {2.4, 0, 1.5}});
    stage.begin();
    stage.object(even, stage.face(stage.red));
    stage.object(uneven, stage.face(stage.green));
    stage.object(crossed, stage.face(stage.blue, {{"drawType", 1}}));
    save(stage, folder);
}

/// Twice as large as their picture: repeated, clamped in u, clamped and in place of the face's red.
void textureAttributes(ScratchFolder const& folder)
{
    PictureStage stage;
    saveImage(folder);
    std::string const image = contentsOf(folder / "image.rgba");
    constexpr std::size_t wrapU = 40, wrapV = 44, environment = 60;
    constexpr long clamp = 1, repeat = 0, asBoth = 3, replace = 3;
    folder.write("clamped.rgba", image);
    folder.write("clamped.rgba.attr", madeAttributes({{wrapU, clamp}, {wrapV, repeat}}));
    folder.write("replaced.rgba", image);
    folder.write("replaced.rgba.attr",
                 madeAttributes({{36, clamp}, {wrapU, asBoth}, {wrapV, asBoth}, {environment, replace}}));
    std::vector<std::vector<double>> panels;
    for (double const x : {-5.0, -1.0, 3.0}) {
        panels.emplace_back();
        for (std::vector<double> const& at : {PictureStage::Place{0, 0}, {2, 0}, {2, 2}, {0, 2}})
            panels.back().push_back(
                stage.flt.vertex("VertexColorUv", x + at[0], 0, 1.5 * at[1], {{"texture", at}}));
    }
    int index = 0;
    for (char const* const name : {"image.rgba", "clamped.rgba", "replaced.rgba"})
        stage.flt.add("TexturePattern", {{"fileName", name}, {"patternIndex", index++}});
    stage.begin();
    for (index = 0; index < 3; ++index)
        stage.object(panels[static_cast<std::size_t>(index)],
                     stage.face(stage.red, {{"texturePatternIndex", index}}));
    save(stage, folder);
}

/// Of a file with three panels the middle one alone, and of a group the one that stands in it.
void referencesToNodes(ScratchFolder const& folder)
{
    PictureStage other;
    std::vector<double> const left = other.panel(-5), middle = other.panel(-1), right = other.panel(0);
    other.flt.push();
    other.object(left, other.face(other.red), {{"idASCII", "left"}});
    other.object(middle, other.face(other.yellow), {{"idASCII", "middle"}});
    other.flt.add("Group", {{"idASCII", "moved"}}).add("Translate", {{"deltaX", 3}}).push();
    other.object(right, other.face(other.green), {{"idASCII", "right"}});
    other.flt.pop().pop().save(folder / "other.flt");
    PictureStage stage;
    stage.begin().add("ExternalReference", {{"asciiPath", "OTHER.FLT<middle>"}});
    stage.flt.add("ExternalReference", {{"asciiPath", "other.flt<moved>"}});
    save(stage, folder);
}

void oldVertices(ScratchFolder const& folder)
{
    FltWriter flt(13);
    flt.push().add("Object").push();
    for (int const x : {-5, -1, 3}) {
        flt.add("Face", {{"packedColor", PictureStage::red}}).push();
        for (auto const& [dx, z] : {std::pair{0, 0}, {2, 0}, {2, 3}, {0, 3}})
            flt.add("OldVertex", {{"Xcoordinate", x + dx}, {"Zcoordinate", z}});
        flt.pop();
    }
    flt.save(folder / "model.flt");
}

void damage(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> const panels = {stage.panel(-5), stage.panel(-1), stage.panel(3)};
    stage.begin();
    stage.object(panels[0], stage.face(stage.green));
    stage.flt.addBytes(std::string(50, '\0'));
    stage.object(panels[1], stage.face(stage.green));
    stage.object(panels[2], stage.face(stage.green));
    save(stage, folder);
}

void farAway(ScratchFolder const& folder)
{
    writeFarModel(folder, {4'027'894.006, 306'123.719, 4'919'499.338});
}

} // namespace

void writeFarModel(ScratchFolder const& folder, PictureStage::Place const& at)
{
    PictureStage stage(1570, {}, at);
    std::vector<std::vector<double>> stripes, steps;
    for (int i = 0; i < 20; ++i) {
        double const left = -5.5 + i * 0.2;
        stripes.push_back(
            stage.vertices({{left, 0, 0}, {left + 0.1, 0, 0}, {left + 0.1, 0, 3}, {left, 0, 3}}));
        double const near = -1.9 + i * 0.06, high = i * 0.03;
        steps.push_back(stage.vertices(
            {{-1, near, high}, {0.5, near, high}, {0.5, near, high + 0.03}, {-1, near, high + 0.03}}));
    }
    std::vector<double> const post = stage.vertices({{1, 0, 0}, {1.2, 0, 0}, {1.2, 0, 2}, {1, 0, 2}}),
                              turning = stage.panel(3.5),
                              door = stage.vertices({{2, 0, 0}, {3, 0, 0}, {3, 0, 2}, {2, 0, 2}});
    std::vector<double> const copied = stage.vertices({{0.6, 0, 0}, {0.8, 0, 0}, {0.8, 0, 2}, {0.6, 0, 2}});
    stage.begin().add("Object").push();
    for (std::vector<double> const& stripe : stripes)
        stage.flt.face(stripe, stage.face(stage.yellow));
    for (std::size_t i = 0; i < steps.size(); ++i)
        stage.flt.face(steps[i], stage.face(i % 2 == 0 ? stage.red : stage.white));
    stage.flt.pop().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    stage.object(post, stage.face(stage.green));
    stage.flt.pop().add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    stage.flt.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    stage.flt.add("Matrix", {{"matrix", matrixWithMove(0.3, 0, 0)}});
    stage.flt.add("Group").add("Replicate", {{"numberOfReplications", 1}});
    stage.flt.add("Matrix", {{"matrix", matrixWithMove(0, 0, 2.2)}}).push();
    stage.object(copied, stage.face(stage.red));
    stage.flt.pop().add("DOF", {{"XOriginOfDOFLocalCoordinateSystem", at[0] + 2},
                                {"YOriginOfDOFLocalCoordinateSystem", at[1]},
                                {"ZOriginOfDOFLocalCoordinateSystem", at[2]},
                                {"XPointOnXAxisOfDOFLocalCoordinateSystem", at[0] + 3},
                                {"YPointOnXAxisOfDOFLocalCoordinateSystem", at[1]},
                                {"ZPointOnXAxisOfDOFLocalCoordinateSystem", at[2]},
                                {"XPointInXYPlaneOfDOFLocalCoordinateSystem", at[0] + 2},
                                {"YPointInXYPlaneOfDOFLocalCoordinateSystem", at[1] + 1},
                                {"ZPointInXYPlaneOfDOFLocalCoordinateSystem", at[2]},
                                {"currentYaw", 40}});
    stage.flt.push();
    stage.object(door, stage.face(stage.blue, {{"drawType", 1}}));
    stage.flt.pop();
    stage.object(turning, stage.face(stage.green, {{"templateBillboard", 2}, {"drawType", 1}}));
    stage.flt.add("Text", {{"XlowerLeftCorner", at[0] - 5},
                           {"YlowerLeftCorner", at[1]},
                           {"ZlowerLeftCorner", at[2] + 3.2},
                           {"XupperRightCorner", at[0] - 1},
                           {"YupperRightCorner", at[1]},
                           {"ZupperRightCorner", at[2] + 4.2},
                           {"color", 127}});
    stage.flt.add("Comment", {{"textDescription", "FAR"}});
    save(stage, folder);
}

void PrintTo(PictureDatabase const& database, std::ostream* out)
{
    *out << database.name;
}

std::vector<PictureDatabase> const& pictureDatabases()
{
    static std::vector<PictureDatabase> const databases = {
        {"meshes", "--from 180,15", meshes},
        {"pointsAndLines", "--from 180,15", pointsAndLines},
        {"concaveFaces", "--from 180,15", concaveFaces},
        {"wrongOffsets", "--from 180,15", wrongOffsets},
        {"mixedVertices", "--from 180,15", mixedVertices},
        {"lightModes", "--from 180,15", lightModes},
        {"materials", "--from 180,15", materials},
        {"drawTypes", "--from 180,15", drawTypes},
        {"hiddenFaces", "--from 180,15", hiddenFaces},
        {"billboardsFromTheSouth", "--from 180,15", billboards},
        {"billboardsFromTheSouthEast", "--from 120,30", billboards},
        {"billboardsFromTheNorth", "--from 0,50", billboards},
        {"transparency", "--from 180,15", transparency},
        {"levelsOfDetailFromNear", "--from 180,15 --zoom 3", levelsOfDetail},
        {"levelsOfDetailFromFar", "--from 180,15", levelsOfDetail},
        {"additiveLevels", "--from 180,15", additiveLevels},
        {"flipBooks", "--from 180,15", flipBooks},
        {"orderInAPlane", "--from 200,25", orderInAPlane},
        {"objectFlagsByDay", "--from 180,15", objectFlags},
        {"objectFlagsAtNight", "--from 180,15 --time night", objectFlags},
        {"degreesOfFreedom", "--from 200,25", degreesOfFreedom},
        {"switches", "--from 180,15", switches},
        {"instancesAndReplicas", "--from 180,15", instancesAndReplicas},
        {"subfaces", "--from 180,15", subfaces},
        {"references", "--from 180,15", references},
        {"referencesToNodes", "--from 180,15", referencesToNodes},
        {"lights", "--from 180,15", lights},
        {"fadingLights", "--from 180,15", fadingLights},
        {"lightPoints", "--from 180,15", lightPoints},
        {"lineStyles", "--from 180,15", lineStyles},
        {"texts", "--from 180,15", texts},
        {"justifiedTexts", "--from 180,15", justifiedTexts},
        {"transformations", "--from 180,15", transformations},
        {"textures", "--from 180,15", textures},
        {"trees", "--from 180,15", [](ScratchFolder const& folder) { trees(folder, false); }},
        {"treesInAnotherOrder", "--from 180,15", [](ScratchFolder const& folder) { trees(folder, true); }},
        {"glass", "--from 180,15", [](ScratchFolder const& folder) { glass(folder, false); }},
        {"glassInAnotherOrder", "--from 180,15", [](ScratchFolder const& folder) { glass(folder, true); }},
        {"sidesFromTheSouthEast", "--from 140,25", sides},
        {"sidesFromTheNorthWest", "--from 320,25", sides},
        {"mirrors", "--from 200,15", mirrors},
        {"mirrorsFromBothSides", "--from 200,15 --two-sided", mirrors},
        {"bowTies", "--from 180,15", bowTies},
        {"textureAttributes", "--from 180,15", textureAttributes},
        {"oldVertices", "--from 180,15", oldVertices},
        {"damage", "--from 180,15", damage},
        {"farAway", "--from 180,15", farAway},
    };
    return databases;
}
