#include "robustness/StructuralFile.h"

#include "writer/EveryRecord.h"
#include "writer/FltMeshRecords.h"

#include "records/FltOpcode.h"

#include <map>
#include <utility>

namespace
{

constexpr char const* vertexForms[] = {"VertexColor", "VertexColorNormal", "VertexColorUv",
                                       "VertexColorNormalUv"};
constexpr char const* oldVertexForms[] = {"OldVertex",
                                          "OldVertexTextured",
                                          "OldVertexColor",
                                          "OldVertexColorTextured",
                                          "OldVertexColorNormal",
                                          "OldVertexColorNormalTextured"};
constexpr char const* transformations[] = {"Matrix",          "RotateAboutEdge",  "Translate",
                                           "ScaleNonUniform", "RotateAboutPoint", "PutTransform",
                                           "GeneralMatrix"};
constexpr char const* ancillaries[] = {"Comment",
                                       "LongID",
                                       "Vector",
                                       "OldBoundingBox",
                                       "BoundingBox",
                                       "BoundingVolumeSphere",
                                       "BoundingVolumeCylinder",
                                       "BoundingVolumeCenter",
                                       "BoundingVolumeOrientation",
                                       "ExtensionAttribute"};
constexpr int opcodesWithoutLayout[] = {FltOpcode::continuation,
                                        FltOpcode::separatingPlane,
                                        FltOpcode::rotateScaleToPoint,
                                        FltOpcode::roadSegment,
                                        FltOpcode::roadZone,
                                        FltOpcode::linkagePalette,
                                        FltOpcode::roadPath,
                                        FltOpcode::cat,
                                        FltOpcode::catData,
                                        FltOpcode::boundingConvexHull,
                                        FltOpcode::pushAttribute,
                                        FltOpcode::popAttribute,
                                        FltOpcode::boundingHistogram,
                                        FltOpcode::curve,
                                        FltOpcode::roadConstruction,
                                        FltOpcode::indexedLightPoint,
                                        FltOpcode::lightPointSystem,
                                        FltOpcode::indexedString,
                                        FltOpcode::shaderPalette,
                                        FltOpcode::lightPointAppearancePalette};

std::vector<FltTopic> const& topicsOf(int revision)
{
    static std::map<int, std::vector<FltTopic>> made;
    auto const [place, isNew] = made.try_emplace(revision);
    if (isNew)
        place->second = everyTopicInBrief(revision);
    return place->second;
}

} // namespace

StructuralFile::StructuralFile(RandomValues& random, int revision, std::vector<std::string> references,
                               Extent extent)
    : random(random), references(std::move(references)), extent(std::move(extent)),
      flt(revision, {{"multiplierDiviserUnit", random.oneIn(8) ? random.wholeNumber(16) : 1.0},
                     {"vertexCoordinateUnits", random.oneIn(2) ? 0.0 : random.wholeNumber(8)},
                     {"flags", random.oneIn(3) ? 0x40000000U : 0U},
                     {"id", random.name(8)}})
{
}

std::string StructuralFile::write()
{
    addPalettes();
    addVertices();
    flt.push();
    for (unsigned level = 0; level < extent.nest; ++level) {
        static constexpr char const* nested[] = {"Group", "Group", "Group", "LOD", "DOF"};
        add(random.oneOf(nested));
        flt.push();
    }
    if (!extent.next.empty())
        add("ExternalReference", {{"asciiPath", extent.next}});
    addLevel(0);
    for (unsigned level = 0; level < extent.nest; ++level)
        flt.pop();
    flt.pop();
    return flt.bytes();
}

FltWriter& StructuralFile::add(std::string_view record, Fields const& given)
{
    return flt.add(record, random.fieldsOf(record, flt.getRevision(), given));
}

void StructuralFile::addPalettes()
{
    for (FltTopic const& topic : topicsOf(flt.getRevision())) {
        // The first is the header, and from the vertices on there are nodes.
        if (topic.name == "vertices")
            return;
        if (topic.name != "header" && random.oneIn(2))
            flt.addBytes(topic.bytes.substr(topic.begin, topic.end - topic.begin));
    }
}

void StructuralFile::addVertices()
{
    static constexpr unsigned flags[] = {0, 0x1000, 0x2000, 0xc000};
    flt.vertexPalette();
    for (unsigned count = 3 + random.below(40); count > 0; --count) {
        char const* const form = random.oneOf(vertexForms);
        double const place[] = {random.number(), random.number(), random.number()};
        vertices.push_back(
            flt.vertex(form, place[0], place[1], place[2],
                       random.fieldsOf(form, flt.getRevision(), {{"flags", random.oneOf(flags)}})));
    }
}

std::vector<double> StructuralFile::corners()
{
    std::vector<double> offsets;
    for (unsigned count = random.oneIn(10) ? random.below(12) : 3 + random.below(3); count > 0; --count)
        offsets.push_back(random.oneIn(100) ? random.wholeNumber(16) : random.oneOf(vertices));
    return offsets;
}

void StructuralFile::addLevel(unsigned depth)
{
    for (unsigned count = 1 + random.below(5); count > 0 && extent.nodes > 0; --count)
        addNode(depth);
}

void StructuralFile::addNode(unsigned depth)
{
    enum class Level { none, nodes, faces };
    struct Kind {
        char const* record; ///< Null for a node that is made by a function.
        void (StructuralFile::*make)();
        Level level;
    };
    static constexpr Kind kinds[] = {
        {"Group", nullptr, Level::nodes},
        {"Group", nullptr, Level::nodes},
        {"Object", nullptr, Level::faces},
        {"Object", nullptr, Level::faces},
        {"Object", nullptr, Level::faces},
        {"LOD", nullptr, Level::nodes},
        {"OLDLOD", nullptr, Level::nodes},
        {"DOF", nullptr, Level::nodes},
        {"ClipRegion", nullptr, Level::nodes},
        {"Text", nullptr, Level::none},
        {"Sound", nullptr, Level::none},
        {"LightSource", nullptr, Level::none},
        {nullptr, &StructuralFile::addSwitch, Level::nodes},
        {nullptr, &StructuralFile::addInstance, Level::nodes},
        {nullptr, &StructuralFile::addReference, Level::none},
        {nullptr, &StructuralFile::addLightPoints, Level::none},
        {nullptr, &StructuralFile::addRecordWithoutLayout, Level::nodes},
    };
    --extent.nodes;
    Kind const& kind = random.oneOf(kinds);
    if (kind.record != nullptr)
        add(kind.record);
    else
        (this->*kind.make)();
    addDecoration();
    bool const isOpened = kind.level != Level::none && depth < extent.levels;
    if (!isOpened || random.oneIn(12))
        return;
    flt.push();
    if (kind.level == Level::faces)
        addFaces(depth + 1);
    else
        addLevel(depth + 1);
    flt.pop();
}

void StructuralFile::addDecoration()
{
    while (random.oneIn(3))
        add(random.oneOf(ancillaries));
    if (random.oneIn(4))
        addTransformations();
    if (random.oneIn(8))
        addReplicate();
    if (random.oneIn(12))
        addExtension();
    if (random.oneIn(20))
        addRecordWithoutLayout();
}

void StructuralFile::addTransformations()
{
    for (unsigned count = 1 + random.below(3); count > 0; --count)
        add(random.oneOf(transformations));
}

void StructuralFile::addReplicate()
{
    // Those of one level multiply with those of the next.
    static constexpr double few[] = {0, 1, 2, 3, -1};
    static constexpr double many[] = {7, 20, 300, 2147483647};
    add("Replicate", {{"numberOfReplications", random.oneIn(60) ? random.oneOf(many) : random.oneOf(few)}});
    addTransformations();
}

void StructuralFile::addExtension()
{
    add("PushExtension");
    for (unsigned count = random.below(3); count > 0; --count)
        add("ExtensionAttribute");
    add("PopExtension");
}

void StructuralFile::addSwitch()
{
    double const masks = random.below(4);
    double const words = random.below(3);
    std::vector<double> values;
    for (double count = masks * words; count > 0; --count)
        values.push_back(random.oneIn(4) ? 4294967295.0 : random.below(1U << 16));
    // One in some claims another number than there is.
    add("Switch", {{"numberOfMasks", random.oneIn(20) ? random.wholeNumber(16) : masks},
                   {"numberOf32BitWordsPerMask", words},
                   {"masks", values}});
}

void StructuralFile::addInstance()
{
    char const* const record = random.oneIn(2) ? "InstanceDefinition" : "InstanceReference";
    add(record, {{"instanceDefinitionNumber", random.below(6)}});
}

void StructuralFile::addReference()
{
    add("ExternalReference", {{"asciiPath", random.oneOf(references)}});
}

void StructuralFile::addRecordWithoutLayout()
{
    flt.addRaw(random.oneOf(opcodesWithoutLayout), random.bytes(random.below(120)));
}

void StructuralFile::addFaces(unsigned depth)
{
    for (unsigned count = 1 + random.below(6); count > 0; --count) {
        if (random.oneIn(6))
            addMesh();
        else if (random.oneIn(8))
            addOldFace();
        else
            addFace(depth);
    }
}

void StructuralFile::addFace(unsigned depth)
{
    add("Face", {{"texturePatternIndex", random.below(4) - 1.0}, {"materialIndex", random.below(4) - 1.0}});
    if (random.oneIn(4))
        add("Comment");
    if (random.oneIn(5)) {
        add("Multitexture");
        add("UVList");
    }
    flt.push();
    flt.add(random.oneIn(10) ? "MorphVertexList" : "VertexList", {{"offsets", corners()}});
    if (random.oneIn(8))
        add("UVList");
    if (random.oneIn(6) && depth < extent.levels) {
        add("PushSubface");
        addFaces(depth + 1);
        add("PopSubface");
    }
    flt.pop();
}

std::string StructuralFile::vertexPool(unsigned count, unsigned mask)
{
    std::string pool = FltMeshRecords::poolHead(count, mask);
    auto const isThere = [mask](int bit) { return (mask & 0x80000000U >> bit) != 0; };
    for (; count > 0; --count) {
        for (int i = 0; isThere(0) && i < 3; ++i) // a place
            pool += FltWriter::bigDouble(random.number());
        for (int bit = 1; bit <= 2; ++bit) // colours by index and packed
            if (isThere(bit))
                pool += FltWriter::big32(static_cast<long>(random.wholeNumber(16)));
        for (int bit = 3; bit < 12; ++bit) // the normal, and texture coordinates of eight layers
            for (int i = 0; isThere(bit) && i < (bit == 3 ? 3 : 2); ++i)
                pool += FltWriter::bigFloat(random.number());
    }
    return pool;
}

void StructuralFile::addMesh()
{
    static constexpr unsigned masks[] = {0x80000000, 0xa0000000, 0xc8000000, 0xd8000000,
                                         0xff800000, 0x10000000, 0};
    unsigned const vertexCount = random.below(12);
    std::string body = random.bytes(80);
    body.replace(26, 4, std::string(4, random.oneIn(2) ? '\xff' : '\0')); // texture and material
    flt.addRaw(FltOpcode::mesh, body);
    if (!random.oneIn(8))
        flt.addRaw(FltOpcode::localVertexPool, vertexPool(vertexCount, random.oneOf(masks)));
    flt.push();
    for (unsigned primitives = 1 + random.below(3); primitives > 0; --primitives)
        addPrimitive(vertexCount);
    flt.pop();
}

void StructuralFile::addPrimitive(unsigned vertexCount)
{
    static constexpr unsigned sizes[] = {1, 2, 4, 1, 2, 4, 3};
    unsigned const size = random.oneOf(sizes);
    unsigned const indexCount = random.below(16);
    auto const type = static_cast<int>(random.below(6));
    std::string body = FltMeshRecords::primitiveHead(type, static_cast<int>(size),
                                                     random.oneIn(20) ? 0xffffffU : indexCount);
    for (unsigned index = 0; index < indexCount; ++index)
        // One more than there are, now and then.
        body += FltWriter::big32(static_cast<long>(random.below(vertexCount + 1))).substr(4 - size);
    flt.addRaw(FltOpcode::meshPrimitive, body);
}

void StructuralFile::addOldFace()
{
    add("Face", {{"texturePatternIndex", random.below(4) - 1.0}});
    flt.push();
    for (unsigned count = random.below(6); count > 0; --count)
        add(random.oneOf(oldVertexForms));
    flt.pop();
}

void StructuralFile::addLightPoints()
{
    add("LightPoint");
    flt.push().add("VertexList", {{"offsets", corners()}}).pop();
}
