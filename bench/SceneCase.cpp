#include "SceneCase.h"

#include "BenchDatabase.h"
#include "records/FltOpcode.h"
#include "writer/FltWriter.h"

#include <iterator>
#include <vector>

namespace
{

using Fields = FltWriter::Fields;

/// A database with one triangle's vertices in its palette, and its first level open.
struct Scene {
    FltWriter flt;
    std::vector<double> triangle;

    explicit Scene(std::string_view form = "VertexColorNormal")
    {
        flt.add("ColorPalette");
        for (int i = 0; i < 8; ++i)
            flt.add("TexturePattern", {{"fileName", "t.rgb"}, {"patternIndex", i}});
        for (int i = 0; i < 8; ++i)
            flt.add("Material", {{"index", i}, {"alpha", 1}});
        flt.vertexPalette();
        for (int i = 0; i < 3; ++i)
            triangle.push_back(flt.vertex(form, i, i % 2, 0));
        flt.push();
    }

    void face(Fields const& fields = {}) { flt.face(triangle, fields); }

    /// A node with one face in an Object below it.
    void nodeWithFace(std::string_view node, Fields const& fields = {})
    {
        flt.add(node, fields).push();
        object();
        flt.pop();
    }

    void object(std::string_view name = "o")
    {
        flt.add("Object", {{"idASCII", std::string(name)}}).push();
        face();
        flt.pop();
    }

    void save(std::string const& path)
    {
        flt.pop();
        flt.save(path);
    }
};

void facesOfFields(Scene& scene, int count, Fields (*fieldsOf)(int))
{
    scene.flt.add("Object").push();
    for (int i = 0; i < count; ++i)
        scene.face(fieldsOf(i));
    scene.flt.pop();
}

void faces(Scene& scene, int count)
{
    facesOfFields(scene, count, [](int) { return Fields{}; });
}

void facesWithMaterials(Scene& scene, int count)
{
    facesOfFields(scene, count, [](int i) { return Fields{{"materialIndex", i % 8}}; });
}

void facesWithTextures(Scene& scene, int count)
{
    facesOfFields(scene, count, [](int i) { return Fields{{"texturePatternIndex", i % 8}}; });
}

void facesOutsideObjects(Scene& scene, int count)
{
    scene.flt.add("Group").push();
    for (int i = 0; i < count; ++i)
        scene.face();
    scene.flt.pop();
}

void subFaces(Scene& scene, int count)
{
    scene.flt.add("Object").push();
    for (int i = 0; i < count; ++i) {
        scene.face();
        scene.flt.add("PushSubface");
        scene.face();
        scene.flt.add("PopSubface");
    }
    scene.flt.pop();
}

/// Each face mixes vertices with and without normal, so those without get copies.
void promotedFaces(Scene& scene, int count)
{
    scene.flt.pop();
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> const mixed = {static_cast<double>(flt.vertex("VertexColorUv", 0, 0, 0)),
                                       static_cast<double>(flt.vertex("VertexColorNormalUv", 1, 0, 0)),
                                       static_cast<double>(flt.vertex("VertexColorUv", 0, 1, 0))};
    flt.push().add("Object").push();
    for (int i = 0; i < count; ++i)
        flt.face(mixed);
    flt.pop();
    scene.flt = flt;
}

void objects(Scene& scene, int count)
{
    scene.flt.add("Group").push();
    for (int i = 0; i < count; ++i)
        scene.object("o" + std::to_string(i));
    scene.flt.pop();
}

void siblingGroups(Scene& scene, int count)
{
    for (int i = 0; i < count; ++i)
        scene.nodeWithFace("Group", {{"idASCII", "g" + std::to_string(i)}});
}

void nestedGroups(Scene& scene, int count)
{
    for (int i = 0; i < count; ++i)
        scene.flt.add("Group").push();
    scene.object();
    for (int i = 0; i < count; ++i)
        scene.flt.pop();
}

void switchChildren(Scene& scene, int count)
{
    int const words = count / 32 + 1;
    scene.flt
        .add("Switch", {{"idASCII", "s"},
                        {"numberOfMasks", 1},
                        {"numberOf32BitWordsPerMask", words},
                        {"masks", std::vector<double>(static_cast<std::size_t>(words), 0x55555555)}})
        .push();
    for (int i = 0; i < count; ++i)
        scene.nodeWithFace("Group");
    scene.flt.pop();
}

/// The children of a switch are counted once, whatever stands between them.
void switchChildrenBetweenFaces(Scene& scene, int count)
{
    scene.flt.add("Switch", {{"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1}}}).push();
    for (int i = 0; i < count; ++i) {
        scene.flt.add("Group").push().pop();
        scene.face();
    }
    scene.flt.pop();
}

void replicas(Scene& scene, int count)
{
    Fields const matrix = {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1}}};
    scene.flt.add("Group").add("Replicate", {{"numberOfReplications", count}});
    for (int i = 0; i < 2 * count; ++i)
        scene.flt.add("Matrix", matrix);
    scene.flt.push();
    scene.object();
    scene.flt.pop();
}

void comments(Scene& scene, int count)
{
    scene.flt.add("Group");
    for (int i = 0; i < count; ++i)
        scene.flt.add("Comment", {{"textDescription", "Surveyed in spring."}});
    scene.flt.push();
    scene.object();
    scene.flt.pop();
}

void externalReferences(Scene& scene, int count)
{
    scene.flt.add("Group").push();
    for (int i = 0; i < count; ++i)
        scene.flt.add("ExternalReference", {{"asciiPath", "other.flt"}});
    scene.flt.pop();
}

void levelsOfDetail(Scene& scene, int count)
{
    for (int i = 0; i < count; ++i)
        scene.nodeWithFace("LOD", {{"switchInDistance", 1000}});
}

/// The box of an outer level of detail is made of those of the inner ones, not of all faces anew.
void nestedLevelsOfDetail(Scene& scene, int count)
{
    int const levels = count / 10;
    for (int i = 0; i < levels; ++i)
        scene.flt.add("LOD").push();
    faces(scene, count);
    for (int i = 0; i < levels; ++i)
        scene.flt.pop();
}

/// References count directly below the header's level; inside of groups they are passed over.
void instanceReferences(Scene& scene, int count)
{
    scene.flt.add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    scene.object();
    scene.flt.pop();
    for (int i = 0; i < count; ++i)
        scene.flt.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
}

void vertices(Scene& scene, int count)
{
    scene.flt.pop();
    FltWriter flt;
    flt.vertexPalette();
    for (int i = 0; i < count; ++i)
        flt.vertex("VertexColorNormal", i, 0, 0);
    flt.push();
    scene.flt = flt;
}

/// @name What broken files have many of
/// @{
void damagedRecords(Scene& scene, int count)
{
    for (int i = 0; i < count; ++i)
        scene.flt.add("NamePalette", {{"numberOfNames", 1}});
}

void shortRecords(Scene& scene, int count)
{
    for (int i = 0; i < count; ++i)
        scene.flt.addRaw(FltOpcode::textureMappingPalette);
}

void referencesToMissingFiles(Scene& scene, int count)
{
    for (int i = 0; i < count; ++i)
        scene.flt.add("ExternalReference", {{"asciiPath", "missing" + std::to_string(i) + ".flt"}})
            .addRaw(55);
}

void popsWithNoLevelOpen(Scene& scene, int count)
{
    for (int i = 0; i < count; ++i)
        scene.flt.pop();
}

void groupsInOneAnother(Scene& scene, int count)
{
    for (int i = 0; i < count; ++i)
        scene.flt.add("Group").push();
}

void groupsWithoutLevels(Scene& scene, int count)
{
    for (int i = 0; i < count; ++i)
        scene.flt.add("Group");
}
/// @}

template <void (*build)(Scene&, int)>
void built(std::string const& path, int count)
{
    Scene scene;
    build(scene, count);
    scene.save(path);
}

/// @name Those that would take too long to write field by field
/// @{
void sharedTerrain(std::string const& path, int count)
{
    BenchDatabase::writeTerrain(path, count, BenchDatabase::Vertices::shared);
}

void randomTerrain(std::string const& path, int count)
{
    BenchDatabase::writeTerrain(path, count, BenchDatabase::Vertices::random);
}

void oldTerrain(std::string const& path, int count)
{
    BenchDatabase::writeTerrain(path, count, BenchDatabase::Vertices::old);
}

void changingTerrain(std::string const& path, int count)
{
    BenchDatabase::writeTerrain(path, count, BenchDatabase::Vertices::shared,
                                BenchDatabase::Appearance::changesAtEachFace);
}

void equalObjects(std::string const& path, int count)
{
    BenchDatabase::writeObjects(path, count, BenchDatabase::Names::equal);
}

void tiles(std::string const& path, int count)
{
    BenchDatabase::writeTiles(path, count, 50);
}
/// @}

constexpr SceneCase cases[] = {
    {"vertices, unused", built<vertices>, 20000},
    {"vertices, shared by faces", sharedTerrain, 3000},
    {"vertices, in random order", randomTerrain, 3000},
    {"vertices of the obsolete form", oldTerrain, 20000},
    {"faces with both, changing", changingTerrain, 3000},
    {"faces of one object", built<faces>, 3000},
    {"faces with materials", built<facesWithMaterials>, 3000},
    {"faces with textures, alternating", built<facesWithTextures>, 3000},
    {"faces outside objects", built<facesOutsideObjects>, 3000},
    {"sub-faces", built<subFaces>, 2000},
    {"faces with promoted vertices", built<promotedFaces>, 3000},
    {"objects", built<objects>, 2000},
    {"objects of one name", equalObjects, 2000},
    {"groups, side by side", built<siblingGroups>, 2000},
    {"groups, nested", built<nestedGroups>, 100},
    {"children of a switch", built<switchChildren>, 2000},
    {"children of a switch, faces between", built<switchChildrenBetweenFaces>, 2000},
    {"replicas", built<replicas>, 3000},
    {"comments of one group", built<comments>, 3000},
    {"external references to one file", built<externalReferences>, 1000},
    {"external files", tiles, 50},
    {"levels of detail without centre", built<levelsOfDetail>, 2000},
    {"levels of detail in one another", built<nestedLevelsOfDetail>, 1000},
    {"instance references", built<instanceReferences>, 3000},
    {"damaged records", built<damagedRecords>, 20000},
    {"records shorter than their layout", built<shortRecords>, 3000},
    {"references to missing files", built<referencesToMissingFiles>, 3000},
    {"pops with no level open", built<popsWithNoLevelOpen>, 10000},
    {"groups beyond the deepest level", built<groupsInOneAnother>, 10000},
    {"groups without levels", built<groupsWithoutLevels>, 10000},
};

} // namespace

std::vector<SceneCase> const& SceneCase::all()
{
    static std::vector<SceneCase> const all(std::begin(cases), std::end(cases));
    return all;
}

void SceneCase::writeEmpty(std::string const& path)
{
    Scene().save(path);
}

void SceneCase::writeOther(std::string const& path)
{
    Scene other;
    other.object();
    other.save(path);
}
