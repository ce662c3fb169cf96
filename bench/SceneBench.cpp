// Converts databases that have N of something, and 10 N: where the time for each grows, a step of the
// conversion is worse than linear.

#include "BenchOptions.h"
#include "BenchTime.h"
#include "plugin/Plugin.h"
#include "records/FltOpcode.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <Inventor/SoDB.h>
#include <Inventor/errors/SoDebugError.h>
#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

constexpr double mostGrowth = 3.0;

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

void instanceReferences(Scene& scene, int count)
{
    scene.flt.pop().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}});
    scene.flt.add("Group").push();
    scene.object();
    scene.flt.pop().push().add("Group").push();
    for (int i = 0; i < count; ++i)
        scene.flt.add("Group").push().add("InstanceReference", {{"instanceDefinitionNumber", 1}}).pop();
    scene.flt.pop();
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

struct Case {
    char const* name;
    void (*build)(Scene& scene, int count);
    int count; ///< The smaller of the two numbers.
};

constexpr Case cases[] = {
    {"vertices, unused", vertices, 20000},
    {"faces of one object", faces, 3000},
    {"faces with materials", facesWithMaterials, 3000},
    {"faces with textures, alternating", facesWithTextures, 3000},
    {"faces outside objects", facesOutsideObjects, 3000},
    {"sub-faces", subFaces, 2000},
    {"faces with promoted vertices", promotedFaces, 3000},
    {"objects", objects, 2000},
    {"groups, side by side", siblingGroups, 2000},
    {"groups, nested", nestedGroups, 100},
    {"children of a switch", switchChildren, 2000},
    {"children of a switch, faces between", switchChildrenBetweenFaces, 2000},
    {"replicas", replicas, 3000},
    {"comments of one group", comments, 3000},
    {"external references to one file", externalReferences, 1000},
    {"levels of detail without centre", levelsOfDetail, 2000},
    {"levels of detail in one another", nestedLevelsOfDetail, 1000},
    {"instance references", instanceReferences, 3000},
    {"damaged records", damagedRecords, 20000},
    {"records shorter than their layout", shortRecords, 300},
    {"references to missing files", referencesToMissingFiles, 3000},
    {"pops with no level open", popsWithNoLevelOpen, 10000},
    {"groups beyond the deepest level", groupsInOneAnother, 10000},
    {"groups without levels", groupsWithoutLevels, 10000},
};

/// Processor time of a conversion. Letting its scene go isn't in it: there the toolkit's list of the nodes of
/// one name takes longer with each of them.
double secondsOf(std::string const& path, int runs)
{
    return BenchTime::apart(runs,
                            [&path] {
                                Silence const silence;
                                if (convertFrom(path.c_str()) == nullptr)
                                    throw std::runtime_error("the conversion failed");
                            })
        .cpu;
}

double secondsOf(Case const& item, int count, std::string const& path, int runs)
{
    Scene scene;
    item.build(scene, count);
    scene.save(path);
    return secondsOf(path, runs);
}

} // namespace

int main(int argc, char** argv)
{
    BenchOptions const options(argc, argv, false);
    SoDB::init();
    SoDebugError::setHandlerCallback([](SoError const*, void*) {}, nullptr); // the textures don't exist
    ScratchFolder const folder;
    std::string const path = folder / "scene.flt";
    Scene other;
    other.object();
    other.save(folder / "other.flt");
    // What a conversion of nothing takes is no matter of the items.
    double const empty = secondsOf({"", [](Scene&, int) {}, 0}, 0, path, 3 * options.runs);

    if (options.json)
        std::printf("[");
    else
        std::printf("%-36s %9s %12s %12s %7s\n", "", "N", "us each, N", "us, 10 N", "ratio");
    bool isLinear = true;
    char const* separator = "";
    for (Case const& item : cases) {
        double const few = std::max(secondsOf(item, item.count, path, options.runs) - empty, 1e-6);
        double const many = std::max(secondsOf(item, 10 * item.count, path, options.runs) - empty, 1e-6);
        double const eachOfFew = few / item.count;
        double const eachOfMany = many / (10.0 * item.count);
        double const ratio = eachOfMany / eachOfFew;
        isLinear = isLinear && ratio <= mostGrowth;
        if (options.json)
            std::printf("%s\n  {\"name\": \"%s\", \"count\": %d, \"secondsEach\": %.9f, "
                        "\"secondsEachOfTenfold\": %.9f, \"ratio\": %.3f}",
                        separator, item.name, item.count, eachOfFew, eachOfMany, ratio);
        else
            std::printf("%-36s %9d %12.3f %12.3f %7.2f\n", item.name, item.count, eachOfFew * 1e6,
                        eachOfMany * 1e6, ratio);
        std::fflush(stdout);
        separator = ",";
    }
    if (options.json)
        std::printf("\n]\n");
    return options.check && !isLinear ? 1 : 0;
}
