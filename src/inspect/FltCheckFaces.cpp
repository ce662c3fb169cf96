#include "inspect/FltCheckFaces.h"

#include "inspect/FltFacesInOnePlace.h"
#include "messages/FltFindingNumber.h"
#include "records/FltOpcode.h"
#include "visual/FltLocalOrigin.h"
#include "visual/FltObjectReader.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace Number = FltFindingNumber;

namespace
{

/// Normals between these lengths count as of length 1: others make a face too dark or too bright where they
/// are taken as they are.
constexpr float shortestNormal = 0.9F;
constexpr float longestNormal = 1.1F;

/// Normals stand against the winding from this mean of their cosines on. Those that stand upright on purpose,
/// as on trees, are near zero.
constexpr double against = -0.05;

float lengthOf(float const (&vector)[3])
{
    return std::sqrt(vector[0] * vector[0] + vector[1] * vector[1] + vector[2] * vector[2]);
}

std::string componentsOf(float const (&vector)[3])
{
    char text[64];
    std::snprintf(text, sizeof text, "(%.3g, %.3g, %.3g)", static_cast<double>(vector[0]),
                  static_cast<double>(vector[1]), static_cast<double>(vector[2]));
    return text;
}

std::string vertexCountOf(FltFaceInput const& input)
{
    return std::to_string(input.vertices.size()) + " vertices";
}

} // namespace

FltCheckFaces::FltCheckFaces(FltCheckedModel& checked, FltFindingList& findings)
    : FltCheckFamily(checked.inventory, findings), checked(checked), tools(checked.model, textures, leftOut),
      reader(tools), drawer(tools), seen(checked), coinciding(checked.inventory.faces.size()),
      nodeBoxes(checked), points(face.corners)
{
}

void FltCheckFaces::check()
{
    readAll();
    checkOnePlace();
    checkDetail();
    nodeBoxes.join();
}

/// Has each face and mesh read with all that lies on it, as the drawer does.
void FltCheckFaces::readAll()
{
    std::vector<FltObjectLook> looks(inventory.nodes.size());
    std::vector<bool> isDrawn(static_cast<std::size_t>(checked.model.tree.getCount()), true);
    for (FltModelTree::Number number = 1; number < checked.model.tree.getCount(); ++number) {
        FltRecordView const& record = checked.recordOf(number);
        FltModelTree::Number const above = checked.parentOf(number);
        bool const isBelowFace =
            above != FltModelTree::root && (checked.recordOf(above).opcode == FltOpcode::face ||
                                            checked.recordOf(above).opcode == FltOpcode::mesh);
        if (isBelowFace || !isDrawn[static_cast<std::size_t>(above)]) {
            isDrawn[static_cast<std::size_t>(number)] = false; // the face reads what belongs to it
            continue;
        }
        std::uint32_t const node = checked.nodeOf(number);
        if (record.opcode == FltOpcode::object)
            looks[node] = FltObjectReader::lookOf(record);
        else if (checked.numberOf(node) == number && inventory.nodes[node].parent != FltInventory::none)
            looks[node] = looks[inventory.nodes[node].parent];
        if (record.opcode == FltOpcode::mesh)
            checkPlacesOfMesh(number);
        if (FltFaceReader::reads(record.opcode)) {
            place = {number, 0};
            reader.read(number, *this, looks[node]);
            forgetVertices();
        }
    }
}

/// Vertices that stand in a face or a mesh are of no use to another one, and others get their numbers.
void FltCheckFaces::forgetVertices()
{
    reader.forgetVertices();
    judged.resize(std::min<std::size_t>(judged.size(), checked.paletteVertices));
}

void FltCheckFaces::checkPlacesOfMesh(FltModelTree::Number mesh)
{
    FltRecordView const& record = checked.recordOf(mesh);
    for (SbVec3d const& point : reader.pointsOf(mesh))
        if (!FltVertex::isUsable(point[0], point[1], point[2]))
            findings.add(Number::unusablePlace, record.offset, FltOpcode::mesh, checked.nodeOf(mesh),
                         "a vertex of this mesh");
}

void FltCheckFaces::add(FltFaceInput const& input)
{
    judge(input);
    ++place.number;
}

/// Takes what is compared of a face.
void FltCheckFaces::collect(FltFaceInput const& input)
{
    face.layer = {seen.scopeOf(checked.nodeOf(input.number)), input.level, input.record.relativePriority};
    face.isTwoSided = FltFaceCollector::isTwoSided(input);
    points.clear();
    for (std::uint32_t const vertex : input.vertices)
        points.emplace_back(checked.model.vertices.placeOf(vertex).data());
}

void FltCheckFaces::judge(FltFaceInput const& input)
{
    collect(input);
    for (SbVec3d const& point : points)
        nodeBoxes.add(checked.nodeOf(input.number), point);
    if (points.empty() || FltFaceCollector::kindOf(input) != FltMesh::Kind::faces)
        return;
    normal = FltPolygonCutter::normalOf(points);
    checkTextureCoordinates(input);
    if (FltPolygonCutter::hasArea(points, normal)) {
        checkShape(input);
        checkNormals(input);
        checkSight(input);
    } else if (!repeatsACorner(input)) {
        tell(Number::noArea, input, vertexCountOf(input));
    }
}

/// Strips of triangles go on elsewhere by triangles that repeat a corner.
bool FltCheckFaces::repeatsACorner(FltFaceInput const& input) const
{
    auto const& corners = input.vertices;
    return checked.recordOf(input.number).opcode == FltOpcode::mesh && corners.size() == 3 &&
           (corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0]);
}

void FltCheckFaces::checkShape(FltFaceInput const& input)
{
    if (points.size() == 3)
        return;
    if (!tools.cutter.isConvex(points, normal))
        tell(Number::concaveFace, input, vertexCountOf(input));
    else if (!FltPolygonCutter::isFlat(points, normal))
        tell(Number::unevenFace, input, vertexCountOf(input));
}

void FltCheckFaces::checkNormals(FltFaceInput const& input)
{
    if (!FltFaceCollector::isLit(input) || input.object.isFlatShaded)
        return;
    for (std::uint32_t const number : input.vertices) {
        FltVertex const& vertex = checked.model.vertices[number];
        if (!vertex.has(FltVertex::hasNormal) || !isFirstTime(number, judgedNormal))
            continue;
        float const length = lengthOf(vertex.normal);
        if (!std::isfinite(length) || length == 0)
            tell(Number::unusableNormal, input, componentsOf(vertex.normal));
        else if (length < shortestNormal || length > longestNormal)
            tell(Number::unevenNormal, input,
                 componentsOf(vertex.normal) + " is " + textOf(static_cast<double>(length), 3) + " long");
    }
    checkSides(input);
}

void FltCheckFaces::checkSides(FltFaceInput const& input)
{
    if (FltFaceCollector::isTwoSided(input))
        return;
    SbVec3d unit = normal;
    unit.normalize();
    double sum = 0;
    for (std::uint32_t const number : input.vertices) {
        FltVertex const& vertex = checked.model.vertices[number];
        auto const length = static_cast<double>(lengthOf(vertex.normal));
        if (!vertex.has(FltVertex::hasNormal) || !(length > 0) || !std::isfinite(length))
            return;
        sum += unit.dot(SbVec3d(vertex.normal[0], vertex.normal[1], vertex.normal[2])) / length;
    }
    if (sum < against * static_cast<double>(input.vertices.size()))
        tell(Number::opposedNormals, input, vertexCountOf(input));
}

void FltCheckFaces::checkTextureCoordinates(FltFaceInput const& input)
{
    if (!tools.textures.has(input.record.texturePatternIndex))
        return;
    for (std::uint32_t const number : input.vertices) {
        FltVertex const& vertex = checked.model.vertices[number];
        if (vertex.has(FltVertex::hasUv) && isFirstTime(number, judgedUv) &&
            !(std::isfinite(vertex.uv[0]) && std::isfinite(vertex.uv[1])))
            tell(Number::unusableTextureCoordinates, input,
                 "texture " + std::to_string(input.record.texturePatternIndex));
    }
}

/// Whether anything is seen of a face. Where that is so, others may be in its place.
void FltCheckFaces::checkSight(FltFaceInput const& input)
{
    if (FltFaceCollector::isHidden(input))
        return;
    if (drawer.alphaOf(input) == 0) {
        tell(Number::transparentFace, input, vertexCountOf(input));
        return;
    }
    if (reader.turningOf(input.number) != FltFaceReader::Turning::none || repeatsACorner(input))
        return;
    coinciding.add(face, place);
}

void FltCheckFaces::checkOnePlace()
{
    FltFacesInOnePlace again(
        reader, checked.model.tree,
        [this](FltFaceInput const& input) -> FltCoincidingFaces::Face const& {
            collect(input);
            return face;
        },
        [this](FltFaceInput const& input, std::uint64_t earlier) {
            tell(Number::coincidingFaces, input,
                 "it lies where the one at byte " + std::to_string(earlier) + " does");
        });
    again.compare(coinciding.takePairs());
}

/// One finding for all nodes whose faces lie too far from the origin, at the one that loses most.
void FltCheckFaces::checkDetail()
{
    double most = 0;
    std::uint32_t worst = 0;
    std::uint64_t count = 0;
    for (std::uint32_t node = 0; node < inventory.nodes.size(); ++node) {
        double const error = nodeBoxes.errorOf(node);
        SbVec3d const size = error > 0 ? SbVec3d(nodeBoxes.boxOf(node).getSize()) : SbVec3d(0, 0, 0);
        double const extent = std::max({size[0], size[1], size[2]});
        if (error <= FltLocalOrigin::allowedError(extent, checked.model.metresPerUnit))
            continue;
        ++count;
        if (error > most) {
            most = error;
            worst = node;
        }
    }
    if (count == 0)
        return;
    FltInventory::Node const& node = inventory.nodes[worst];
    FltFinding* const finding =
        findings.addHere(Number::lostDetail, static_cast<std::int64_t>(node.offset), node.opcode,
                         "up to " + textOf(most, 2) + " of a unit is lost", count);
    if (finding != nullptr)
        finding->node = inventory.pathOf(worst);
}

bool FltCheckFaces::isFirstTime(std::uint32_t vertex, Judged what)
{
    if (vertex >= judged.size())
        judged.resize(checked.model.vertices.size());
    bool const isFirst = (judged[vertex] & what) == 0;
    judged[vertex] |= what;
    return isFirst;
}

void FltCheckFaces::tell(int number, FltFaceInput const& input, std::string const& text)
{
    FltRecordView const& record = checked.recordOf(input.number);
    findings.add(number, record.offset, static_cast<int>(record.opcode), checked.nodeOf(input.number), text);
}
