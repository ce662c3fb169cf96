#include "support/FaultyDatabases.h"

#include "support/MadeAttributes.h"
#include "support/SmallPictures.h"
#include "writer/FltMeshRecords.h"

#include <array>
#include <limits>

namespace
{

using Fields = FltWriter::Fields;
using Mesh = FltMeshRecords;

/// Begins a database: palettes, four corners of a square with normals and texture coordinates, the header's
/// level.
class Beginning
{
public:
    FltWriter flt;
    std::vector<double> square;

    explicit Beginning(std::function<void(FltWriter&)> const& addPalettes = {}, FltWriter start = FltWriter())
        : flt(std::move(start))
    {
        flt.add("ColorPalette");
        if (addPalettes)
            addPalettes(flt);
        flt.vertexPalette();
        for (auto const& [x, y] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}})
            square.push_back(vertex(x, y, 0));
        flt.endVertexPalette().push();
    }

    double vertex(double x, double y, double z, std::string_view form = "VertexColorNormalUv")
    {
        return flt.vertex(form, x, y, z);
    }

    Beginning& object(Fields const& face = {}, std::string const& name = "o1")
    {
        flt.add("Object", {{"idASCII", name}}).push().face(square, face).pop();
        return *this;
    }

    /// An object with a face of other corners.
    Beginning& objectOf(std::vector<double> const& corners)
    {
        square = corners;
        return object();
    }

    FltWriter& end() { return flt.pop(); }
};

std::string save(FltWriter const& flt, ScratchFolder const& folder)
{
    std::string const path = folder / "database.flt";
    flt.save(path);
    return path;
}

/// A database with corners of its own, all of one form.
FltWriter withCorners(std::vector<std::vector<double>> const& places, Fields const& face = {},
                      std::string_view form = "VertexColorNormalUv")
{
    FltWriter flt;
    flt.add("ColorPalette").vertexPalette();
    std::vector<double> corners;
    for (std::vector<double> const& place : places)
        corners.push_back(flt.vertex(form, place[0], place[1], place[2]));
    flt.endVertexPalette().push().add("Object", {{"idASCII", "o1"}}).push().face(corners, face).pop();
    return flt.pop();
}

/// A database with a node above an object.
FltWriter withNode(std::string_view record, Fields const& fields,
                   std::function<void(FltWriter&)> const& after = {})
{
    Beginning begun;
    begun.flt.add(record, fields);
    if (after)
        after(begun.flt);
    begun.flt.push();
    begun.object();
    begun.flt.pop();
    return begun.end();
}

FltWriter withFace(Fields const& face)
{
    return Beginning().object(face).end();
}

/// A mesh of one triangle, whose primitive names @p index last.
FltWriter withMesh(bool hasPool, int index)
{
    Beginning begun;
    begun.object();
    std::string body = Mesh::mesh("mesh1");
    body.replace(68, 4, "\xff\xff\xff\xff"); // no colours
    begun.flt.addRaw(Mesh::meshOpcode, body);
    if (hasPool) {
        begun.flt.addRaw(Mesh::poolOpcode, Mesh::pool({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}})).push();
        begun.flt.addRaw(Mesh::primitiveOpcode, Mesh::primitive(Mesh::triangleStrip, 2, {0, 1, index}));
        begun.flt.pop();
    }
    return begun.end();
}

FltWriter withReference(std::string const& name)
{
    return FltWriter().push().add("ExternalReference", {{"asciiPath", name}}).pop();
}

std::string referToGarbage(ScratchFolder const& folder)
{
    static_cast<void>(folder.write("notes.flt", "nothing of the kind"));
    return save(withReference("notes.flt"), folder);
}

/// Files that lead from one to the next, more than are followed.
std::string chainOfFiles(ScratchFolder const& folder)
{
    constexpr int files = 35;
    for (int i = 1; i <= files; ++i)
        (i < files ? withReference(std::to_string(i + 1) + ".flt") : faultlessDatabase())
            .save(folder / (std::to_string(i) + ".flt"));
    return save(withReference("1.flt"), folder);
}

Beginning withTexture(std::string const& name)
{
    return Beginning([&](FltWriter& flt) {
        flt.add("TexturePattern", {{"fileName", name}, {"patternIndex", 3}});
    });
}

std::string textureElsewhere(ScratchFolder const& folder)
{
    static_cast<void>(folder.write("tree.rgb", SmallPictures::plainSgi(4)));
    return save(withTexture("/far/away/tree.rgb").object({{"texturePatternIndex", 3}}).end(), folder);
}

std::string withAttributes(std::string const& bytes, ScratchFolder const& folder)
{
    static_cast<void>(folder.write("tree.rgb", SmallPictures::plainSgi(4)));
    static_cast<void>(folder.write("tree.rgb.attr", bytes));
    return save(withTexture("tree.rgb").object({{"texturePatternIndex", 3}}).end(), folder);
}

std::string referToTower(std::string const& name, ScratchFolder const& folder)
{
    faultlessDatabase().save(folder / "Tower.flt");
    return save(withReference(name), folder);
}

/// An offset with a line feed hits nothing, in a file without any carriage return.
FltWriter transferredAsText()
{
    Beginning begun;
    begun.square.back() = 0x0a0a;
    begun.object();
    return begun.end();
}

/// Two bytes after it a group begins.
FltWriter shorterThanItsHead()
{
    Beginning begun;
    begun.flt.addBytes(FltWriter::big16(31) + FltWriter::big16(2) + FltWriter::big16(32) +
                       std::string(28, '\0'));
    begun.flt.push();
    begun.object();
    begun.flt.pop();
    return begun.end();
}

/// It comes after the definition, but not at the top level.
FltWriter instanceInGroup()
{
    Beginning begun;
    begun.flt.add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    begun.object();
    begun.flt.pop().add("Group").push();
    begun.flt.add("InstanceReference", {{"instanceDefinitionNumber", 1}}).pop();
    return begun.end();
}

/// A matrix that scales along x.
std::vector<double> scaleBy(double x)
{
    return {x, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
}

FltWriter instances(std::vector<int> const& defined, std::vector<int> const& used)
{
    Beginning begun;
    for (int const number : defined) {
        begun.flt.add("InstanceDefinition", {{"instanceDefinitionNumber", number}}).push();
        begun.object({}, "o" + std::to_string(begun.flt.lastOffset()));
        begun.flt.pop();
    }
    for (int const number : used)
        begun.flt.add("InstanceReference", {{"instanceDefinitionNumber", number}});
    return begun.end();
}

/// Two instances that show each other.
FltWriter instanceOfItself()
{
    Beginning begun;
    for (int const number : {1, 2}) {
        begun.flt.add("InstanceDefinition", {{"instanceDefinitionNumber", number}}).push();
        begun.flt.add("InstanceReference", {{"instanceDefinitionNumber", 3 - number}}).pop();
    }
    begun.object();
    return begun.end();
}

FltWriter deepGroups()
{
    constexpr int levels = 1200;
    Beginning begun;
    for (int i = 0; i < levels; ++i)
        begun.flt.add("Group", {{"idASCII", "g" + std::to_string(i)}}).push();
    begun.object();
    for (int i = 0; i < levels; ++i)
        begun.flt.pop();
    return begun.end();
}

FltWriter nestedLevelsOfDetail()
{
    Beginning begun;
    begun.flt.add("LOD", {{"idASCII", "far"}, {"switchInDistance", 1000}, {"switchOutDistance", 100}}).push();
    begun.flt.add("LOD", {{"idASCII", "near"}, {"switchInDistance", 100}}).push();
    begun.object();
    begun.flt.pop().pop();
    return begun.end();
}

Fields switchOf(int current, std::vector<double> const& masks, std::string const& name = "sw")
{
    return {{"idASCII", name},
            {"indexOfCurrentMask", current},
            {"numberOfMasks", static_cast<int>(masks.size())},
            {"numberOf32BitWordsPerMask", 1},
            {"masks", masks}};
}

FltWriter manyVertices()
{
    FltWriter flt;
    flt.add("ColorPalette").vertexPalette();
    std::vector<double> corners;
    for (int i = 0; i < 100'002; ++i) {
        int const height = i / 3;
        corners.push_back(flt.vertex("VertexColor", i % 3 == 1, i % 3 == 2, height));
    }
    flt.endVertexPalette().push().add("Object", {{"idASCII", "o1"}}).push();
    for (std::size_t i = 0; i + 2 < corners.size(); i += 3)
        flt.face({corners[i], corners[i + 1], corners[i + 2]});
    return flt.pop().pop();
}

FltWriter subfaceAlone()
{
    Beginning begun;
    begun.flt.add("Object", {{"idASCII", "o1"}}).push().add("PushSubface").face(begun.square);
    begun.flt.add("PopSubface").pop();
    return begun.end();
}

FltWriter mixedVertices()
{
    FltWriter flt;
    flt.add("ColorPalette").vertexPalette();
    std::vector<double> const corners = {static_cast<double>(flt.vertex("VertexColor", 0, 0, 0)),
                                         static_cast<double>(flt.vertex("VertexColorNormal", 1, 0, 0)),
                                         static_cast<double>(flt.vertex("VertexColor", 0, 1, 0))};
    flt.endVertexPalette().push().add("Object", {{"idASCII", "o1"}}).push().face(corners).pop();
    return flt.pop();
}

FaultyDatabase database(int number, std::function<FltWriter()> const& make)
{
    return {number, [make](ScratchFolder const& folder) { return save(make(), folder); }};
}

/// With one like it that has no fault.
FaultyDatabase database(int number, std::function<FltWriter()> const& make,
                        std::function<FltWriter()> const& makeTwin)
{
    FaultyDatabase made = database(number, make);
    made.writeTwin = [makeTwin](ScratchFolder const& folder) { return save(makeTwin(), folder); };
    return made;
}

/// A lit square whose corners have these normals.
FltWriter withNormals(std::vector<double> const& normal, Fields face = {})
{
    FltWriter flt;
    flt.add("ColorPalette").vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}})
        corners.push_back(flt.vertex("VertexColorNormal", x, y, 0, {{"vertexNormal", normal}}));
    face.emplace_back("lightMode", 2);
    flt.endVertexPalette().push().add("Object", {{"idASCII", "o1"}}).push().face(corners, face).pop();
    return flt.pop();
}

/// A textured square, one of whose corners has this texture coordinate.
std::string withTextureCoordinate(double u, ScratchFolder const& folder)
{
    static_cast<void>(folder.write("tree.rgb", SmallPictures::plainSgi(4)));
    FltWriter flt;
    flt.add("ColorPalette").add("TexturePattern", {{"fileName", "tree.rgb"}}).vertexPalette();
    double const a = flt.vertex("VertexColorUv", 0, 0, 0);
    double const b = flt.vertex("VertexColorUv", 1, 0, 0, {{"texture", {u, 0}}});
    double const c = flt.vertex("VertexColorUv", 0, 1, 0, {{"texture", {0, 1}}});
    flt.endVertexPalette().push().add("Object").push().face({a, b, c}, {{"texturePatternIndex", 0}}).pop();
    return save(flt.pop(), folder);
}

/// Two faces of the same corners in an object.
FltWriter withTwoFaces(std::function<void(FltWriter&, std::vector<double>)> const& addSecond)
{
    Beginning begun;
    begun.flt.add("Object", {{"idASCII", "o1"}}).push().face(begun.square);
    addSecond(begun.flt, begun.square);
    begun.flt.pop();
    return begun.end();
}

FltWriter withSpareVertex(bool isUsed)
{
    FltWriter flt;
    flt.add("ColorPalette").vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}})
        corners.push_back(flt.vertex("VertexColor", x, y, 0));
    if (!isUsed)
        corners.pop_back();
    flt.endVertexPalette().push().add("Object", {{"idASCII", "o1"}}).push().face(corners).pop();
    return flt.pop();
}

/// A square far away, whose corners lie beside those that floats hold.
FltWriter farAway(double fraction)
{
    double const x = 4'500'000 + fraction;
    return withCorners({{x, 0, 0}, {x + 1, 0, 0}, {x + 1, 1, 0}, {x, 1, 0}});
}

/// A square in an object with a box.
FltWriter withBox(double highest)
{
    Beginning begun;
    begun.flt.add("Object", {{"idASCII", "o1"}})
        .add("BoundingBox", {{"XcoordinateHighestCorner", highest}, {"YcoordinateHighestCorner", 1}});
    begun.flt.push().face(begun.square).pop();
    return begun.end();
}

FltWriter withPaletteLength(unsigned length)
{
    FltWriter flt;
    flt.add("ColorPalette").vertexPalette(length);
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair{0, 0}, {1, 0}, {0, 1}})
        corners.push_back(flt.vertex("VertexColor", x, y, 0));
    flt.push().add("Object", {{"idASCII", "o1"}}).push().face(corners).pop();
    return flt.pop();
}

/// Two levels of detail beside each other, with the same square.
FltWriter withLevels(std::array<int, 2> const& near, std::array<int, 2> const& far, Fields const& more = {})
{
    Beginning begun;
    int number = 0;
    for (std::array<int, 2> const& range : {near, far}) {
        std::string const name = std::to_string(++number);
        Fields fields = {
            {"idASCII", "l" + name}, {"switchOutDistance", range[0]}, {"switchInDistance", range[1]}};
        fields.insert(fields.end(), more.begin(), more.end());
        begun.flt.add("LOD", fields).push();
        begun.object({}, "o" + name);
        begun.flt.pop();
    }
    return begun.end();
}

FltWriter withMatrix(double xScale)
{
    return withNode("Group", {}, [xScale](FltWriter& flt) {
        flt.add("Matrix", {{"matrix", scaleBy(xScale)}});
    });
}

/// A database whose texture is a file of these bytes.
std::string withPicture(std::string const& bytes, ScratchFolder const& folder)
{
    static_cast<void>(folder.write("tree.rgb", bytes));
    return save(withTexture("tree.rgb").object({{"texturePatternIndex", 3}}).end(), folder);
}

FltWriter withHeader(int revision, Fields const& header)
{
    return Beginning({}, FltWriter(revision, header)).object().end();
}

FltWriter with(std::function<void(FltWriter&)> const& change)
{
    FltWriter flt = faultlessDatabase();
    change(flt);
    return flt;
}

/// A record at the end of an object's level, where any may stand.
FltWriter inObject(std::function<void(FltWriter&)> const& add)
{
    Beginning begun;
    begun.object();
    add(begun.flt);
    return begun.end();
}

} // namespace

FltWriter faultlessDatabase()
{
    Beginning begun;
    begun.flt.add("Group", {{"idASCII", "g1"}}).push();
    begun.object();
    begun.flt.pop();
    return begun.end();
}

std::vector<FaultyDatabase> const& faultyDatabases()
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    static std::vector<FaultyDatabase> const databases = {
        database(101, [] { return with([](FltWriter& flt) { flt.addRaw(2).claimLength(0); }); }),
        database(102, [] { return with([](FltWriter& flt) { flt.addRaw(2).claimLength(100); }); }),
        database(103, [] { return with([](FltWriter& flt) { flt.addBytes("abc"); }); }),
        database(104, shorterThanItsHead),
        database(
            105,
            [] { return withNode("Group", {}, [](FltWriter& flt) { flt.add("Replicate").resizeLast(6); }); }),
        database(106,
                 [] {
                     return withNode("Switch", switchOf(0, {1}), [](FltWriter& flt) {
                         flt.add("NamePalette", {{"numberOfNames", 3}});
                     });
                 }),
        database(107, [] { return inObject([](FltWriter& flt) { flt.addRaw(777); }); }),
        database(108, transferredAsText),
        database(201,
                 [] {
                     Beginning begun;
                     begun.square.back() = 9;
                     begun.object();
                     return begun.end();
                 }),
        database(202,
                 [] {
                     return withCorners({{0, 0, 0}, {1, 1, 0}, {2, 2, 0}});
                 }),
        database(203, [] { return inObject([](FltWriter& flt) { flt.add("Face"); }); }),
        database(204,
                 [] {
                     return withCorners({{0, 0, 0}, {2, 0, 0}, {0.5, 0.5, 0}, {0, 2, 0}});
                 }),
        database(205,
                 [] {
                     return withCorners({{0, 0, 0}, {1, 0, 0}, {1, 1, 0.5}, {0, 1, 0}});
                 }),
        database(206,
                 [nan] {
                     return withCorners({{0, 0, 0}, {1, 0, 0}, {1, nan, 0}});
                 }),
        {207,
         [](ScratchFolder const& folder) {
             static_cast<void>(folder.write("tree.rgb", SmallPictures::plainSgi(4)));
             FltWriter flt;
             flt.add("ColorPalette").add("TexturePattern", {{"fileName", "tree.rgb"}}).vertexPalette();
             double const a = flt.vertex("VertexColor", 0, 0, 0), b = flt.vertex("VertexColor", 1, 0, 0),
                          c = flt.vertex("VertexColor", 0, 1, 0);
             flt.endVertexPalette()
                 .push()
                 .add("Object")
                 .push()
                 .face({a, b, c}, {{"texturePatternIndex", 0}})
                 .pop()
                 .pop();
             return save(flt, folder);
         }},
        database(208, [] { return withMesh(true, 3); }),
        database(209, [] { return withMesh(false, 0); }),
        database(210,
                 [] {
                     return FltWriter().push().add("Sound", {{"idASCII", "bell"}}).pop();
                 }),
        database(
            211,
            [] {
                return withNormals({0, 0, 0});
            },
            [] {
                return withNormals({0, 0, 1});
            }),
        database(
            212,
            [] {
                return withNormals({0, 0, 2});
            },
            [] {
                return withNormals({0, 0, 1.05});
            }),
        {213,
         [nan](ScratchFolder const& folder) { return withTextureCoordinate(nan, folder); },
         {},
         [](ScratchFolder const& folder) { return withTextureCoordinate(1, folder); }},
        database(
            214,
            [] {
                return withNormals({0, 0, -1});
            },
            [] {
                return withNormals({0, 0, -1}, {{"drawType", 1}});
            }),
        database(
            215,
            [] {
                return withTwoFaces([](FltWriter& flt, std::vector<double> const& corners) {
                    flt.face({corners[2], corners[3], corners[0], corners[1]});
                });
            },
            [] {
                return withTwoFaces([](FltWriter& flt, std::vector<double> const& corners) {
                    flt.face({corners.rbegin(), corners.rend()});
                });
            }),
        database(
            216, [] { return withSpareVertex(false); }, [] { return withSpareVertex(true); }),
        database(
            217,
            [] {
                return withFace({{"transparency", 65535}});
            },
            [] {
                return withFace({{"transparency", 65000}});
            }),
        database(
            218, [] { return farAway(0.1); }, [] { return farAway(0); }),
        database(
            219, [] { return withBox(2); }, [] { return withBox(1); }),
        database(301,
                 [] {
                     return withFace({{"texturePatternIndex", 5}});
                 }),
        database(302,
                 [] {
                     return withFace({{"materialIndex", 5}});
                 }),
        database(303,
                 [] {
                     return withFace({{"primaryColorIndex", 1024 * 128}});
                 }),
        database(304,
                 [] {
                     return withFace({{"lineStyleIndex", 5}});
                 }),
        database(305,
                 [] {
                     return withFace({{"textureMappingIndex", 5}});
                 }),
        database(306,
                 [] {
                     return inObject([](FltWriter& flt) {
                         flt.add("LightSource", {{"indexIntoLightPalette", 5}});
                     });
                 }),
        database(307,
                 [] {
                     return Beginning([](FltWriter& flt) {
                                flt.add("Material", {{"index", 1}}).add("Material", {{"index", 1}});
                            })
                         .object()
                         .end();
                 }),
        database(
            308, [] { return withPaletteLength(8); }, [] { return withPaletteLength(8 + 3 * 40); }),
        database(401,
                 [] {
                     return withTexture("tree.rgb").object({{"texturePatternIndex", 3}}).end();
                 }),
        database(402, [] { return withReference("nowhere.flt"); }),
        database(403, [] { return withReference("./database.flt"); }),
        {404, referToGarbage},
        {405, textureElsewhere},
        {406, chainOfFiles},
        {407,
         [](ScratchFolder const& folder) { return withPicture("pixels", folder); },
         {},
         [](ScratchFolder const& folder) { return withPicture(SmallPictures::plainSgi(4), folder); }},
        {408,
         [](ScratchFolder const& folder) { return withPicture(SmallPictures::plainSgi(6), folder); },
         {},
         [](ScratchFolder const& folder) { return withPicture(SmallPictures::plainSgi(8), folder); }},
        {420,
         [](ScratchFolder const& folder) { return withAttributes("short", folder); },
         {},
         [](ScratchFolder const& folder) {
             return withAttributes(madeAttributes({{24, 4}}), folder);
         }},
        {421,
         [](ScratchFolder const& folder) { return referToTower("tower.FLT", folder); },
         {},
         [](ScratchFolder const& folder) { return referToTower("Tower.flt", folder); }},
        {422,
         [](ScratchFolder const& folder) { return referToTower("Tower.flt<nobody>", folder); },
         {},
         [](ScratchFolder const& folder) { return referToTower("Tower.flt<o1>", folder); }},
        database(501, [] { return with([](FltWriter& flt) { flt.pop(); }); }),
        database(502,
                 [] {
                     Beginning begun;
                     begun.object();
                     return begun.flt;
                 }),
        database(503, [] { return inObject([](FltWriter& flt) { flt.push().push().pop().pop(); }); }),
        database(504, [] { return inObject([](FltWriter& flt) {
                               flt.add("Group", {{"idASCII", "g1"}});
                           }); }),
        database(505,
                 [] {
                     return withNode("Group", {{"idASCII", "o1"}});
                 }),
        database(506,
                 [] {
                     return inObject([](FltWriter& flt) {
                         flt.add("InstanceReference", {{"instanceDefinitionNumber", 5}});
                     });
                 }),
        database(507, [] { return instances({1}, {}); }),
        database(508,
                 [] {
                     return instances({1, 1}, {1});
                 }),
        database(509, instanceOfItself),
        database(510, deepGroups),
        database(511, [] { return inObject([](FltWriter& flt) { flt.add("Matrix"); }); }),
        database(601,
                 [] {
                     return withNode("LOD", {{"switchInDistance", 10}, {"switchOutDistance", 20}});
                 }),
        database(602, nestedLevelsOfDetail),
        database(603,
                 [] {
                     return withNode("Switch", switchOf(2, {1, 1}));
                 }),
        database(604, [] { return withNode("Switch", switchOf(0, {2})); }),
        database(605,
                 [] {
                     return withNode(
                         "DOF",
                         {{"minimumYaw", -10}, {"maxYaw", 10}, {"currentYaw", 20}, {"flags", 1 << 26}});
                 }),
        database(606, [] { return withNode("Group", {}, [](FltWriter& flt) { flt.add("Matrix"); }); }),
        database(607,
                 [nan] {
                     return withNode("LOD", {{"switchInDistance", nan}});
                 }),
        database(
            608,
            [] {
                return withLevels({0, 100}, {120, 500});
            },
            [] {
                return withLevels({0, 100}, {100, 500});
            }),
        database(
            609,
            [] {
                return withLevels({0, 120}, {100, 500});
            },
            [] {
                return withLevels({0, 120}, {100, 500}, {{"transitionRange", 20}});
            }),
        database(
            610, [] { return withMatrix(-1); }, [] { return withMatrix(2); }),
        database(
            611,
            [] {
                return withNode("Group", {}, [](FltWriter& flt) {
                    flt.add("Replicate", {{"numberOfReplications", 2}});
                });
            },
            [] {
                return withNode("Group", {}, [](FltWriter& flt) {
                    flt.add("Replicate", {{"numberOfReplications", 2}});
                    flt.add("Translate", {{"deltaX", 3}});
                });
            }),
        database(
            701,
            [] {
                return withHeader(1570, {{"vertexCoordinateUnits", 3}});
            },
            [] {
                return withHeader(1570, {{"vertexCoordinateUnits", 4}});
            }),
        database(
            702,
            [] {
                return withHeader(12, {{"multiplierDiviserUnit", 0}});
            },
            [] {
                return withHeader(12, {{"multiplierDiviserUnit", 1}});
            }),
        database(801, [] { return withMesh(true, 2); }),
        database(802, manyVertices),
        database(803, subfaceAlone),
        {804, [](ScratchFolder const& folder) { return save(instanceInGroup(), folder); }, {805}},
        database(805, [] { return instances({1}, {1}); }),
        database(806,
                 [] {
                     return withNode("Group", {}, [](FltWriter& flt) {
                         flt.add("Replicate", {{"numberOfReplications", 2}});
                         flt.add("Matrix", {{"matrix", scaleBy(2)}});
                     });
                 }),
        database(807,
                 [] {
                     return withNode("Switch", switchOf(0, {1}), [](FltWriter& flt) {
                         flt.add("LongID", {{"idASCII", "beacon_of_the_tower"}});
                     });
                 }),
        database(808, mixedVertices),
        database(809,
                 [] {
                     return withCorners({{0, 0, 0}, {1, 0, 0}});
                 }),
        database(810,
                 [] {
                     return withNode("DOF", {{"currentYaw", 20}});
                 }),
        database(811,
                 [] {
                     return Beginning([](FltWriter& flt) { flt.add("LightSourcePalette"); })
                         .object()
                         .flt.add("LightSource")
                         .pop();
                 }),
        database(812, [] { return inObject([](FltWriter& flt) { flt.add("LightPoint"); }); }),
        database(813,
                 [] {
                     return withFace({{"templateBillboard", 2}});
                 }),
        database(814,
                 [] {
                     return withFace({{"flags", 1 << 26}});
                 }),
        database(815, [] { return withNode("Group", {}, [](FltWriter& flt) { flt.add("Translate"); }); }),
        database(
            816, [] { return withNode("LOD", {}); },
            [] {
                return withNode("LOD", {{"switchInDistance", 100}});
            }),
    };
    return databases;
}
