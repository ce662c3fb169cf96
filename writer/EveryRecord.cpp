#include "writer/EveryRecord.h"

#include "writer/FltLayouts.h"

#include <algorithm>

namespace
{

using Fields = FltWriter::Fields;

/// A value that holds the opcode of its record and its offset in it.
double valueAt(FltKind kind, int opcode, int offset)
{
    switch (kind) {
    case FltKind::chars:
    case FltKind::bytes:
    case FltKind::i8:
    case FltKind::u8:
        return offset % 127 + 1;
    case FltKind::i16:
    case FltKind::u16:
        return opcode * 100 + offset;
    case FltKind::i32:
        return opcode * 1000 + offset;
    case FltKind::u32:
        return 0xa5c30000 + opcode * 256 + offset % 256;
    case FltKind::f32:
    case FltKind::f64:
        return opcode + offset / 1000.0;
    }
    return 0;
}

FltLayout const& layoutNamed(std::string_view name)
{
    auto const& layouts = fltLayouts();
    return *std::find_if(layouts.begin(), layouts.end(),
                         [&](FltLayout const& layout) { return layout.name == name; });
}

bool hasField(FltLayout const& layout, std::string_view name, int revision)
{
    return std::none_of(layout.fields.begin(), layout.fields.end(), [&](FltField const& field) {
        return field.name == name && (revision < field.fromRevision || revision >= field.belowRevision);
    });
}

/// A value for every field of a record at a revision but those that go on to the record's end.
Fields fieldsOf(std::string_view record, int revision, Fields const& given = {})
{
    FltLayout const& layout = layoutNamed(record);
    Fields fields;
    int offset = 4;
    for (FltField const& field : layout.fields) {
        if (revision < field.fromRevision || revision >= field.belowRevision)
            continue;
        if (field.count == FltField::rest)
            break;
        if (field.kind == FltKind::chars) {
            fields.emplace_back(field.name,
                                std::string(field.name.substr(0, static_cast<std::size_t>(field.count - 1))));
        } else if (!field.name.empty()) {
            std::vector<double> numbers;
            numbers.reserve(static_cast<std::size_t>(field.count));
            for (int i = 0; i < field.count; ++i)
                numbers.push_back(valueAt(field.kind, layout.opcode, offset + i * sizeOf(field.kind)));
            fields.emplace_back(field.name, numbers);
        }
        offset += sizeOf(field.kind) * field.count;
    }
    for (auto const& field : given)
        if (hasField(layout, field.first, revision))
            fields.push_back(field);
    return fields;
}

/// Writes the database topic by topic.
class Writing
{
public:
    Writing(int revision, bool isBrief) : flt(revision, headerFields(revision)), isBrief(isBrief) {}

    FltWriter write()
    {
        title();
        colorPalette();
        namePalette();
        materials();
        texturePatterns();
        textureMappings();
        otherPalettes();
        vertices();
        flt.push();
        instances();
        group();
        flt.push();
        object();
        oldVertices();
        levelsOfDetail();
        switches();
        otherNodes();
        replications();
        clipRegionWithLevel();
        flt.pop().pop();
        return flt;
    }

    using Topic = void (Writing::*)();

    /// A palette, vertices, and faces that may use it.
    FltTopic writePalette(char const* name, Topic topic)
    {
        writeOwn(topic);
        if (topic != &Writing::vertices)
            vertices();
        flt.push();
        facesOfAllForms();
        flt.pop();
        return {name, flt.bytes(), begin, end};
    }

    /// Nodes, what their faces use, and a node after them.
    FltTopic writeNodes(char const* name, Topic topic)
    {
        colorPalette();
        materials();
        texturePatterns();
        vertices();
        flt.push();
        writeOwn(topic);
        add("Group", {{"idASCII", "after"}});
        flt.push().pop().pop();
        return {name, flt.bytes(), begin, end};
    }

    static std::vector<FltTopic> writeTopics(int revision)
    {
        FltWriter const whole = Writing(revision, true).write();
        FltWriter const header(revision, headerFields(revision));
        std::vector<FltTopic> topics = {{"header", whole.bytes(), 0, header.bytes().size()}};
        auto const palette = [&](char const* name, Topic topic) {
            topics.push_back(Writing(revision, true).writePalette(name, topic));
        };
        auto const nodes = [&](char const* name, Topic topic) {
            topics.push_back(Writing(revision, true).writeNodes(name, topic));
        };
        palette("title", &Writing::title);
        palette("colorPalette", &Writing::colorPalette);
        palette("namePalette", &Writing::namePalette);
        palette("materials", &Writing::materials);
        palette("texturePatterns", &Writing::texturePatterns);
        palette("textureMappings", &Writing::textureMappings);
        palette("otherPalettes", &Writing::otherPalettes);
        palette("vertices", &Writing::vertices);
        nodes("instances", &Writing::instances);
        nodes("group", &Writing::group);
        nodes("object", &Writing::object);
        nodes("oldVertices", &Writing::oldVertices);
        nodes("levelsOfDetail", &Writing::levelsOfDetail);
        nodes("switches", &Writing::switches);
        nodes("otherNodes", &Writing::otherNodes);
        nodes("replications", &Writing::replications);
        nodes("clipRegionWithLevel", &Writing::clipRegionWithLevel);
        return topics;
    }

private:
    void writeOwn(Topic topic)
    {
        begin = flt.bytes().size();
        (this->*topic)();
        end = flt.bytes().size();
    }

    static Fields headerFields(int revision)
    {
        Fields fields = fieldsOf("Header", revision, {{"vertexCoordinateUnits", 4}, {"id", "db"}});
        fields.erase(std::find_if(fields.begin(), fields.end(),
                                  [](auto const& field) { return field.first == "formatRevisionLevel"; }));
        return fields;
    }

    FltWriter& add(std::string_view record, Fields const& fields = {})
    {
        return flt.add(record, fieldsOf(record, flt.getRevision(), fields));
    }

    FltWriter& addLong(std::string_view record, std::size_t brief, Fields const& fields = {})
    {
        add(record, fields);
        return isBrief ? flt.resizeLast(std::min(brief, flt.lastRecord().size())) : flt;
    }

    std::vector<double> corners(std::string_view form, double z, std::vector<unsigned> const& flags)
    {
        std::vector<double> offsets;
        for (std::size_t i = 0; i < flags.size(); ++i) {
            std::size_t const column = i % 2;
            std::size_t const row = i / 2;
            offsets.push_back(flt.vertex(form, static_cast<double>(column) + 0.125,
                                         static_cast<double>(row) + 0.25, z,
                                         vertexFields(form, flags[i], static_cast<int>(i))));
        }
        return offsets;
    }

    Fields vertexFields(std::string_view form, unsigned flags, int color) const
    {
        Fields fields = fieldsOf(form, flt.getRevision(), {{"flags", flags}});
        if (flt.getRevision() >= 1540)
            fields.emplace_back("vertexColorIndex", 128 * color + 100);
        return fields;
    }

    void title() { add("Comment", {{"textDescription", "Every record\nof the format"}}); }

    void colorPalette()
    {
        Fields fields;
        if (flt.getRevision() >= 1421) {
            auto const entry = [](int index, std::string const& name) {
                return FltWriter::big16(static_cast<long>(8 + name.size())) + FltWriter::big16(0) +
                       FltWriter::big16(index) + FltWriter::big16(0) + name;
            };
            fields.emplace_back("names", FltWriter::big32(2) + entry(7, std::string("signal red\0", 11)) +
                                             entry(3, "grass"));
        }
        addLong("ColorPalette", 160, fields);
    }

    void namePalette()
    {
        auto const entry = [](int index, std::string const& name) {
            return FltWriter::big32(static_cast<long>(6 + name.size())) + FltWriter::big16(index) + name;
        };
        add("NamePalette",
            {{"numberOfNames", 2}, {"entries", entry(11, std::string("runway\0", 7)) + entry(5, "taxiway")}});
    }

    void materials()
    {
        std::string entries;
        for (int entry = 0; entry < 64; ++entry)
            for (int word = 0; word < 46; ++word)
                entries += word < 14    ? FltWriter::bigFloat(entry + word / 100.0)
                           : word == 15 ? std::string("old ")
                           : word == 16 ? "mat" + std::string(1, static_cast<char>('0' + entry % 10))
                           : word == 17 ? std::string(4, '\0')
                                        : FltWriter::big32(entry * 100 + word);
        addLong("OLDMaterialPalette", 4 + 184 + 4, {{"entries", entries}});
        add("Material", {{"index", 0},
                         {"name", "concrete"},
                         {"ambient", {0.125, 0.25, 0.375}},
                         {"diffuse", {0.5, 0.625, 0.75}},
                         {"specular", {0.0625, 0.1875, 0.3125}},
                         {"emissive", {0.4375, 0.5625, 0.6875}},
                         {"shininess", 64},
                         {"alpha", 0.875}});
        add("Material", {{"index", 2}, {"alpha", 0.5}});
    }

    void texturePatterns()
    {
        add("TexturePattern", {{"fileName", "missing/asphalt.rgb"}, {"patternIndex", 0}});
        add("ShortTexturePattern", {{"fileName", "grass.rgb"}, {"patternIndex", 1}});
    }

    void textureMappings()
    {
        add("PutTextureMapping", {{"type", 1}, {"warpedFlag", 0}});
        add("PointPutTextureMapping", {{"type", 2}, {"warpedFlag", 0}});
        if (!isBrief)
            add("PointPutTextureMapping", {{"type", 2}, {"warpedFlag", 0}, {"lastWords", {112576, 112580}}});
        add("SphericalTextureMapping", {{"type", 4}, {"warpedFlag", 0}});
        add("RadialTextureMapping", {{"type", 5}, {"warpedFlag", 0}});
        add("WarpedTextureMapping", {{"type", 6}, {"warpedFlag", 1}});
        add("TextureMappingPalette", {{"type", 3}, {"warpedFlag", 0}, {"block", "a block of no type"}});
    }

    void otherPalettes()
    {
        add("LightSourcePalette", {{"lightType", 2}, {"paletteIndex", 0}});
        add("LineStylePalette", {{"lineStyleIndex", 1}, {"lineWidth", 3}});
        add("SoundPaletteTable", {{"maxNumber", 4},
                                  {"actualNumber", 2},
                                  {"totalLength", 15},
                                  {"subTypeWord", 1},
                                  {"entries", {1, 0, 0, 2, 0, 6}}});
        add("SoundPaletteNames",
            {{"dataLength", 15}, {"subTypeWord", 2}, {"packedData", std::string("a.wav\0brake.wav", 15)}});
        addLong("EyePointTrackPlane", 290);
        if (!isBrief)
            add("EyePointTrackPlaneAsTrackPlane", {{"activeFlag", -1}});
        flt.addRaw(90, "linkage palette of no class");
        flt.addRaw(115, "an opcode above the last");
    }

    void vertices()
    {
        flt.vertexPalette();
        unsigned const packed = 0x1000;
        unsigned const noColor = 0x2000;
        colored = corners("VertexColor", 0, {0, packed, noColor, 0, 0});
        normal = corners("VertexColorNormal", 1, {packed, 0, noColor, 0xc000});
        textured = corners("VertexColorUv", 2, {0, noColor, packed, 0});
        all = corners("VertexColorNormalUv", 3, {noColor, packed, 0, 0});
    }

    /// The group of all other nodes, with what may decorate it.
    void group()
    {
        add("Group", {{"idASCII", "db"}});
        add("LongID", {{"idASCII", "a name of more than eight characters"}});
        add("Comment", {{"textDescription", "one line\n\nand a third"}});
        add("Matrix", {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1}}});
        for (char const* const record :
             {"Vector", "OldBoundingBox", "BoundingBox", "RotateAboutEdge", "Translate", "ScaleNonUniform",
              "RotateAboutPoint", "PutTransform", "GeneralMatrix", "BoundingVolumeSphere",
              "BoundingVolumeCylinder", "BoundingVolumeCenter", "BoundingVolumeOrientation"})
            add(record);
        add("PushExtension");
        add("ExtensionAttribute", {{"extensionData", "bytes of a site"}});
        add("PopExtension");
    }

    /// A face with its vertices and what else stands in its level.
    template <class More>
    void face(std::vector<double> const& offsets, Fields const& fields, More const& more)
    {
        Fields all = {{"materialIndex", -1},
                      {"texturePatternIndex", -1},
                      {"detailTexturePatternIndex", -1},
                      {"transparency", 0},
                      {"flags", 0},
                      {"textureWhite", 0}};
        all.insert(all.end(), fields.begin(), fields.end());
        add("Face", all).push().add("VertexList", {{"offsets", offsets}});
        more();
        flt.pop();
    }
    void face(std::vector<double> const& offsets, Fields const& fields = {})
    {
        face(offsets, fields, [] {});
    }

    void object()
    {
        add("Object", {{"idASCII", "object"}, {"transparency", 16384}});
        add("Comment", {{"textDescription", "faces of all kinds"}});
        flt.push();
        face(colored);
        face(normal, {{"flags", 0x10000000U}, {"packedColor", {0, 10, 20, 30}}});
        face(textured, {{"texturePatternIndex", 0}, {"textureWhite", 1}});
        face(all, {{"texturePatternIndex", 1}, {"materialIndex", 2}});
        face(all, {{"materialIndex", 0}, {"transparency", 32768}, {"flags", 0x40000000U}});
        face({colored[0], textured[1], textured[2]});
        face(colored, {}, [&] {
            add("PushSubface");
            face(normal);
            face(textured, {{"texturePatternIndex", 0}});
            add("PopSubface");
        });
        face(all, {{"colorNameIndex", 7}}, [&] {
            flt.add("Multitexture",
                    {{"attributeMask", 0x5U}, {"layers", {521, 522, 523, 524, 525, 526, 527, 528}}});
            flt.add("UVList", {{"attributeMask", 0x1U}, {"values", {0.25, 0.5}}});
        });
        add("Face", {{"idField", "morph"}, {"flags", 0}});
        flt.push().add("MorphVertexList", {{"offsets", {normal[0], normal[1], normal[2], normal[3]}}}).pop();
        add("Face", {{"idField", "empty"}});
        flt.pop();
    }

    void facesOfAllForms()
    {
        add("Object", {{"idASCII", "forms"}, {"transparency", 0}});
        flt.push();
        face(colored, {{"primaryColorIndex", 300}});
        face(normal, {{"materialIndex", 0}});
        face(textured, {{"texturePatternIndex", 0}});
        face(all, {{"texturePatternIndex", 1}, {"materialIndex", 2}});
        face({colored[0], textured[1], textured[2]});
        flt.pop();
    }

    void oldVertices()
    {
        add("Object", {{"idASCII", "old"}});
        flt.push();
        for (char const* const form :
             {"OldVertex", "OldVertexTextured", "OldVertexColor", "OldVertexColorTextured",
              "OldVertexColorNormal", "OldVertexColorNormalTextured"}) {
            add("Face",
                {{"idField", "old"}, {"texturePatternIndex", 0}, {"materialIndex", -1}, {"flags", 0}});
            flt.push();
            for (int corner = 0; corner < 3; ++corner)
                add(form, {{"Xcoordinate", 100 + corner}, {"Ycoordinate", 200 + corner * corner}});
            flt.pop();
        }
        flt.pop();
    }

    void levelsOfDetail()
    {
        add("LOD", {{"idASCII", "far"}, {"switchInDistance", 900}, {"switchOutDistance", 100.5}});
        add("LongID", {{"idASCII", "a level of detail"}});
        flt.push();
        plainObject("farobj");
        flt.pop();
        add("LOD", {{"idASCII", "near"},
                    {"XcenterCoordinate", 0},
                    {"YcenterCoordinate", 0},
                    {"ZcenterCoordinate", 0}});
        flt.push();
        plainObject("nearobj");
        flt.pop();
        add("OLDLOD", {{"idASCII", "oldlod"}, {"switchInDistance", 400}, {"switchOutDistance", 0}});
        flt.push();
        plainObject("oldobj");
        flt.pop();
    }

    void plainObject(char const* name)
    {
        add("Object", {{"idASCII", name}, {"transparency", 0}});
        flt.push();
        face(colored);
        flt.pop();
    }

    void switches()
    {
        add("Switch", {{"idASCII", "sw"},
                       {"indexOfCurrentMask", 1},
                       {"numberOfMasks", 2},
                       {"numberOf32BitWordsPerMask", 1},
                       {"masks", {0xa5000001, 0x00000002}}});
        flt.push();
        add("Group", {{"idASCII", "off"}});
        flt.push().pop();
        add("Group", {{"idASCII", "on"}});
        flt.push();
        plainObject("onobj");
        flt.pop().pop();
    }

    void otherNodes()
    {
        add("DOF", {{"idASCII", "dof"}});
        flt.push();
        plainObject("dofobj");
        flt.pop();
        // The record after a clip region, a text or a reference that leads nowhere is passed over.
        add("ClipRegion", {{"idASCII", "clip"}, {"flags", {1, 0, 1, 0, 1, 0}}});
        add("Comment", {{"textDescription", "cuts"}});
        add("Sound", {{"idASCII", "sound"}});
        add("Text", {{"idASCII", "text"}});
        add("LongID", {{"idASCII", "a text node"}});
        add("LightSource", {{"idASCII", "light"}});
        add("LightPoint", {{"idASCII", "lights"}});
        flt.push().add("VertexList", {{"offsets", colored}}).pop();
        add("ExternalReference", {{"asciiPath", "./missing.flt"}});
        add("LongID", {{"idASCII", "a reference to another file"}});
        flt.addRaw(55, "a tree of planes, of no class");
    }

    void instances()
    {
        add("InstanceDefinition", {{"instanceDefinitionNumber", 1}});
        flt.push();
        plainObject("tree");
        flt.pop();
        add("InstanceReference", {{"instanceDefinitionNumber", 1}});
        add("InstanceReference", {{"instanceDefinitionNumber", 99}});
    }

    void replications()
    {
        add("Group", {{"idASCII", "copies"}});
        add("Replicate", {{"numberOfReplications", 2}});
        for (int matrix = 0; matrix < 4; ++matrix)
            add("Matrix", {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, matrix * 5.0, 0, 0, 1}}});
        flt.push();
        plainObject("copied");
        flt.pop();
    }

    void clipRegionWithLevel()
    {
        add("ClipRegion", {{"idASCII", "cliplast"}});
        flt.push();
        plainObject("clipobj");
        flt.pop();
    }

    FltWriter flt;
    bool isBrief;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::vector<double> colored;
    std::vector<double> normal;
    std::vector<double> textured;
    std::vector<double> all;
};

} // namespace

FltWriter everyRecord(int revision)
{
    return Writing(revision, false).write();
}

FltWriter everyRecordInBrief(int revision)
{
    return Writing(revision, true).write();
}

std::vector<FltTopic> everyTopicInBrief(int revision)
{
    return Writing::writeTopics(revision);
}
