#include "vrml/FltVrmlWriter.h"

#include "visual/FltJointMotion.h"
#include "visual/FltNodeMatrix.h"
#include "vrml/FltVrmlPlace.h"
#include "vrml/FltVrmlShapes.h"
#include "vrml/VrmlNames.h"
#include "vrml/VrmlText.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace
{

constexpr double quarterTurn = 1.5707963267948966;

/// VRML97 has lights end somewhere.
constexpr double farAway = 1e9;

std::vector<std::string> linesOf(std::string const& text)
{
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin <= text.size();) {
        std::size_t const end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

SbDPMatrix scaleBy(double factor)
{
    SbDPMatrix matrix = SbDPMatrix::identity();
    matrix.setScale(factor);
    return matrix;
}

} // namespace

/// Goes through a visual once, and writes what it meets.
class FltVrmlWriter::Walk
{
public:
    Walk(FILE* stream, FltVrmlWriter& writer, AddressOf const& addressOf)
        : text(stream), writer(writer), addressOf(addressOf),
          shapes(text, names, *writer.allPictures,
                 [this](std::string_view kind, std::uint64_t count) { lose(kind, count); })
    {
    }

    void write() { writeNew(*writer.root, Place(), names.take("root")); }

private:
    using Node = std::shared_ptr<FltVisualNode>;
    using Place = FltVrmlPlace;

    void lose(std::string_view kind, std::uint64_t count = 1)
    {
        auto const known = writer.lost.find(kind);
        (known != writer.lost.end() ? known->second : writer.lost[std::string(kind)]) += count;
    }

    int begin(Place& place, SbDPMatrix matrix, std::string const& name = "")
    {
        if (!FltNodeMatrix::makeAffine(matrix))
            lose("transformations with perspective, or of no numbers");
        return place.begin(text, matrix, name);
    }

    /// Writes a node of the visual as one node of the file.
    /// @param isShared whether it stands at several places
    void writeNode(Node const& node, Place const& place, bool isShared)
    {
        if (node->isHidden)
            beginSwitch("-1");
        writeShown(node, place, isShared);
        Place::end(text, node->isHidden ? 1 : 0);
    }

    void beginSwitch(char const* choice)
    {
        text.begin("Switch");
        text.field("whichChoice", choice);
        text.beginList("choice");
    }

    void writeShown(Node const& node, Place const& place, bool isShared)
    {
        if (!isShared)
            return writeNew(*node, place, names.take(node->name));
        auto const [known, isNew] = shared.try_emplace({node.get(), place.isMirrored});
        if (!isNew)
            return use(known->second);
        known->second = names.take(node->name.empty() ? "part" : node->name);
        writeNew(*node, place, known->second);
    }

    /// Readers are known that take a list of nodes for one of uses if there is a single use in it.
    void use(std::string const& name)
    {
        text.begin("Group");
        text.field("children", "USE " + name);
        text.end();
    }

    void writeNew(FltVisualNode const& node, Place const& place, std::string const& name)
    {
        if (auto const* const turning = node.as<FltVisualTurning>())
            writeTurning(node, *turning, place, name);
        else if (auto const* const file = node.as<FltVisualFile>())
            writeFile(*file, name);
        else if (auto const* const light = node.as<FltVisualLight>())
            writeLightAlone(node, *light, place, name);
        else
            writeGroup(node, place, name);
    }

    void writeGroup(FltVisualNode const& node, Place place, std::string const& name)
    {
        SbDPMatrix matrix = SbDPMatrix::identity();
        int nodes = 0;
        if (auto const* const joint = node.as<FltVisualJoint>()) {
            nodes += Place::beginGroup(text, name);
            nodes += beginJoint(*joint, place);
        }
        if (auto const* const scale = node.as<FltVisualScale>())
            matrix = scaleBy(scale->factor);
        for (auto const& transform : node.transform)
            matrix.multLeft(SbDPMatrix(transform));
        int const ofMatrix = begin(place, matrix, nodes == 0 ? name : "");
        nodes += ofMatrix != 0 || nodes != 0 ? ofMatrix : Place::beginGroup(text, "");
        for (std::string const& comment : node.comments)
            writeComment(comment);
        writeContent(node, place);
        Place::end(text, nodes);
    }

    void writeContent(FltVisualNode const& node, Place const& place)
    {
        if (auto const* const copies = node.as<FltVisualCopies>())
            return writeCopies(node, *copies, place);
        if (auto const* const levels = node.as<FltVisualLevels>())
            return writeLevels(node, *levels, place);
        if (node.as<FltVisualLevel>() != nullptr)
            lose("significant sizes of levels of detail");
        if (auto const* const written = node.as<FltVisualText>())
            shapes.write(*written, place);
        if (auto const* const choice = node.as<FltVisualSwitch>())
            return writeSwitch(node, *choice, place);
        if (node.as<FltVisualFlipBook>() != nullptr)
            return writeFirstFrame(node, place);
        writeChildren(node, place);
    }

    /// The frames of a flip-book, of which the first shows.
    void writeFirstFrame(FltVisualNode const& node, Place const& place)
    {
        lose("flip-books that play");
        beginSwitch("0");
        for (std::size_t i = 0; i < node.children.size(); ++i)
            writeChoice(node, i, i + 1, place);
        Place::end(text, 1);
    }

    /// A light shines on what comes after it: what comes before it stands outside of its group.
    void writeChildren(FltVisualNode const& node, Place const& place)
    {
        int groups = 0;
        for (Node const& child : node.children) {
            if (child == nullptr)
                continue;
            if (auto const* const light = child->as<FltVisualLight>()) {
                if (&child != &node.children.front())
                    groups += Place::beginGroup(text, "");
                writeLight(*child, *light, place, true);
            } else {
                writeNode(child, place, child.use_count() > 1);
            }
        }
        for (FltMesh const& mesh : node.meshes)
            shapes.write(mesh, place);
        Place::end(text, groups);
    }

    void writeComment(std::string const& comment)
    {
        text.begin("WorldInfo");
        text.texts("info", linesOf(comment));
        text.end();
    }

    int beginJoint(FltVisualJoint const& joint, Place& place)
    {
        lose("limits of degrees of freedom");
        int nodes = 0;
        if (joint.frame)
            nodes += begin(place, SbDPMatrix(*joint.frame));
        nodes += begin(place, SbDPMatrix(FltJointMotion(joint).matrix()), names.take(joint.name));
        if (joint.frame)
            nodes += begin(place, SbDPMatrix(*joint.frame).inverse());
        return nodes;
    }

    void writeCopies(FltVisualNode const& node, FltVisualCopies const& copies, Place const& place)
    {
        for (auto const& matrix : copies.places) {
            Place own = place;
            int nodes = begin(own, SbDPMatrix(matrix));
            nodes += nodes == 0 ? Place::beginGroup(text, "") : 0;
            for (Node const& child : node.children)
                if (child != nullptr)
                    writeNode(child, own, true);
            Place::end(text, nodes);
        }
    }

    /// VRML97 has distances in the units of the node.
    void writeLevels(FltVisualNode const& node, FltVisualLevels const& levels, Place const& place)
    {
        text.begin("LOD");
        if (levels.center)
            text.field("center", place.written(*levels.center));
        text.beginList("range");
        for (double const distance : levels.distances)
            text.item(distance / place.scale);
        text.endList();
        text.beginList("level");
        for (std::size_t i = 0; i < node.children.size(); ++i)
            writeChoice(node, i, levels.endOfDrawn(i), place);
        text.endList();
        text.end();
    }

    /// Children that are drawn together where only one node may stand, the last first; or nothing.
    void writeChoice(FltVisualNode const& node, std::size_t begin, std::size_t end, Place const& place)
    {
        end = std::min(end, node.children.size());
        bool const isSingle = end == begin + 1 && node.children[begin] != nullptr;
        int const groups = isSingle ? 0 : Place::beginGroup(text, "");
        bool const hasStaying =
            node.as<FltVisualLevels>() != nullptr && !node.as<FltVisualLevels>()->nextStays.empty();
        for (std::size_t i = end; i > begin; --i)
            if (Node const& child = node.children[i - 1]; child != nullptr)
                writeNode(child, place, hasStaying || child.use_count() > 1);
        Place::end(text, groups);
    }

    /// Each child has a door, since VRML97 shows one child of a switch at the most. A light shines out of its
    /// own.
    void writeSwitch(FltVisualNode const& node, FltVisualSwitch const& choice, Place const& place)
    {
        if (choice.getMaskCount() > 1)
            lose("masks of switches", static_cast<std::uint64_t>(choice.getMaskCount() - 1));
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            Node const& child = node.children[i];
            if (child == nullptr)
                continue;
            bool const isShown = choice.shows(choice.currentMask, i);
            if (auto const* const light = child->as<FltVisualLight>()) {
                writeLight(*child, *light, place, isShown);
                continue;
            }
            beginSwitch(isShown ? "0" : "-1");
            writeNode(child, place, child.use_count() > 1);
            Place::end(text, 1);
        }
    }

    /// A Billboard turns its z to the eye, about its y or about its origin, and databases have z up.
    void writeTurning(FltVisualNode const& node, FltVisualTurning const& turning, Place const& place,
                      std::string const& name)
    {
        text.begin("Transform", name);
        text.field("translation", place.written(turning.foot));
        text.field("rotation", {1.0, 0.0, 0.0, quarterTurn});
        text.beginList("children");
        text.begin("Billboard");
        if (turning.isAboutPoint)
            text.field("axisOfRotation", SbVec3f(0, 0, 0));
        text.beginList("children");
        text.begin("Transform");
        text.field("rotation", {1.0, 0.0, 0.0, -quarterTurn});
        text.beginList("children");
        for (FltMesh const& mesh : node.meshes)
            shapes.write(mesh, place);
        Place::end(text, 3);
    }

    void writeLight(FltVisualNode const& node, FltVisualLight const& light, Place const& place, bool isOn)
    {
        bool const isInfinite = light.kind == FltVisualLight::Kind::infinite;
        bool const isSpot = light.kind == FltVisualLight::Kind::spot;
        if (!isInfinite)
            lose("ends of what local lights and spots shine on");
        text.begin(isInfinite ? "DirectionalLight"
                   : isSpot   ? "SpotLight"
                              : "PointLight",
                   names.take(node.name));
        if (!isOn)
            text.flag("on", false);
        text.field("color", light.color);
        if (!isInfinite) {
            text.field("location", place.written(light.position));
            text.field("attenuation", {light.attenuation[0], light.attenuation[1], light.attenuation[2]});
            text.field("radius", {farAway});
        }
        if (isInfinite || isSpot)
            text.field("direction", place.written(light.direction));
        if (isSpot) {
            double const cone = std::clamp(static_cast<double>(light.cutOffAngle), 0.0, quarterTurn);
            text.field("cutOffAngle", {cone});
            text.field("beamWidth", {cone * (1 - static_cast<double>(light.dropOffRate))});
        }
        text.end();
    }

    void writeLightAlone(FltVisualNode const& node, FltVisualLight const& light, Place const& place,
                         std::string const& name)
    {
        int const group = Place::beginGroup(text, name);
        writeLight(node, light, place, true);
        Place::end(text, group);
    }

    void writeFile(FltVisualFile const& file, std::string const& name)
    {
        int const group = Place::beginGroup(text, name);
        std::optional<std::string> const address = addressOf ? addressOf(file.path) : std::nullopt;
        if (address) {
            text.begin("Inline");
            text.texts("url", {*address});
            text.end();
        }
        Place::end(text, group);
    }

    VrmlText text;
    VrmlNames names;
    FltVrmlWriter& writer;
    AddressOf const& addressOf;
    FltVrmlShapes shapes;
    std::map<std::pair<FltVisualNode const*, bool>, std::string> shared; ///< Names, by whether mirrored.
};

FltVrmlWriter::FltVrmlWriter(std::shared_ptr<FltVisualNode const> root,
                             std::vector<FltTexture> const& textures)
    : root(std::move(root)), allPictures(std::make_unique<FltVrmlPictures>(*this->root, textures))
{
}

FltVrmlWriter::~FltVrmlWriter() = default;

std::vector<FltVrmlPicture>& FltVrmlWriter::pictures()
{
    return allPictures->list;
}

void FltVrmlWriter::write(FILE* stream, AddressOf const& addressOf)
{
    lost.clear();
    Walk(stream, *this, addressOf).write();
}

std::vector<FltOmission> FltVrmlWriter::omissions() const
{
    std::vector<FltOmission> list;
    for (auto const& [kind, count] : lost)
        list.push_back({kind, count});
    return list;
}
