#include "visual/FltFaceCollector.h"

#include "visual/FltLocalOrigin.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

namespace
{

constexpr std::uint32_t noColorFlag = 0x40000000;
constexpr std::uint32_t noAlternateColorFlag = 0x20000000;
constexpr std::uint32_t packedColorFlag = 0x10000000;
constexpr std::uint32_t hiddenFlag = 0x04000000;

constexpr float lightPointSize = 3;

enum DrawType : std::int8_t {
    bothSides = 1,
    closedOutline = 2,
    openOutline = 3,
    solidWithOutline = 4,
    omnidirectionalLight = 8,
    bidirectionalLight = 10,
};

enum LightMode : std::uint8_t { faceColor = 0, vertexColor = 1, litFaceColor = 2, litVertexColor = 3 };

std::uint32_t wordOf(std::uint8_t const (&packed)[4])
{
    return std::uint32_t(packed[3]) << 24 | std::uint32_t(packed[2]) << 16 | std::uint32_t(packed[1]) << 8 |
           0xffU;
}

float clamped(float value)
{
    return value >= 0 ? std::min(value, 1.0F) : 0.0F;
}

float channelOf(std::uint32_t color, int channel)
{
    return static_cast<float>(color >> (24 - 8 * channel) & 0xff) / 255.0F;
}

std::uint32_t multiplied(std::uint32_t color, float const (&factors)[3])
{
    std::uint32_t result = color & 0xff;
    for (int i = 0; i < 3; ++i)
        result |= static_cast<std::uint32_t>(std::lround(channelOf(color, i) * clamped(factors[i]) * 255))
                  << (24 - 8 * i);
    return result;
}

SbColor ambientOf(std::uint32_t color, FltMaterialValues const* material)
{
    SbColor ambient;
    for (int i = 0; i < 3; ++i)
        ambient[i] = channelOf(color, i) * (material != nullptr ? clamped(material->ambient[i]) : 1.0F);
    return ambient;
}

SbVec3f narrow(SbVec3d const& point)
{
    return {static_cast<float>(point[0]), static_cast<float>(point[1]), static_cast<float>(point[2])};
}

SbVec3d wide(SbVec3f const& vector)
{
    return {static_cast<double>(vector[0]), static_cast<double>(vector[1]), static_cast<double>(vector[2])};
}

/// The vector of length 1 that a vertex has for a normal; none for one without a direction.
std::optional<SbVec3f> normalOf(FltVertex const& vertex, FltFaceInput const& input)
{
    if (!vertex.has(FltVertex::hasNormal))
        return std::nullopt;
    SbVec3f normal(vertex.normal);
    if (input.placement != nullptr)
        normal = narrow(input.placement->turn(wide(normal)));
    if (!(normal.normalize() > 0))
        return std::nullopt;
    return normal;
}

} // namespace

void FltFaceCollector::add(FltFaceInput const& input)
{
    FltRecordFace const& record = input.record;
    collectPoints(input);
    Look const look = lookOf(input);
    FltMesh::Kind const kind = kindOf(input);
    if (points.empty()) {
        ++tools.leftOut["face without vertices"];
    } else if (kind == FltMesh::Kind::points) {
        addPoints(input, look);
    } else if (kind == FltMesh::Kind::lines) {
        addLines(input, lineLookOf(look, input, false),
                 points.size() > 2 && record.drawType == closedOutline);
    } else {
        addFaces(input, look);
        if (record.drawType == solidWithOutline)
            addLines(input, lineLookOf(look, input, true), true);
    }
}

FltMesh::Kind FltFaceCollector::kindOf(FltFaceInput const& input)
{
    std::int8_t const drawType = input.record.drawType;
    bool const isLights = drawType >= omnidirectionalLight && drawType <= bidirectionalLight;
    if (input.isLightPoints || isLights || input.vertices.size() == 1)
        return FltMesh::Kind::points;
    bool const isOutline = drawType == closedOutline || drawType == openOutline;
    return isOutline || input.vertices.size() == 2 ? FltMesh::Kind::lines : FltMesh::Kind::faces;
}

bool FltFaceCollector::isLit(FltFaceInput const& input)
{
    return !input.object.isUnlit &&
           (input.record.lightMode == litFaceColor || input.record.lightMode == litVertexColor);
}

bool FltFaceCollector::isTwoSided(FltFaceInput const& input)
{
    return input.record.drawType == bothSides;
}

bool FltFaceCollector::isHidden(FltFaceInput const& input)
{
    return (input.record.flags & hiddenFlag) != 0;
}

/// What counts of the palette; null if nothing does.
FltMaterialValues const* FltFaceCollector::materialOf(FltFaceInput const& input) const
{
    std::int32_t const index = input.record.materialIndex;
    auto const& materials = *tools.model.palettes.materials;
    auto const found = isLit(input) && index >= 0 ? materials.find(index) : materials.end();
    return found != materials.end() ? &found->second : nullptr;
}

std::uint32_t FltFaceCollector::alphaOf(FltFaceInput const& input) const
{
    FltMaterialValues const* const material = materialOf(input);
    float const alpha = (1 - static_cast<float>(input.record.transparency) / 65535.0F) *
                        (1 - input.object.transparency) *
                        (material != nullptr ? clamped(material->alpha) : 1);
    return static_cast<std::uint32_t>(std::lround(clamped(alpha) * 255));
}

void FltFaceCollector::collectPoints(FltFaceInput const& input)
{
    points.clear();
    for (std::uint32_t const number : input.vertices) {
        SbVec3d const point(tools.model.vertices.placeOf(number).data());
        points.push_back(input.placement != nullptr ? input.placement->place(point) : point);
    }
    normal = FltPolygonCutter::normalOf(points);
    SbVec3d unit = normal;
    unitNormal = unit.normalize() > 0 ? narrow(unit) : SbVec3f(0, 0, 1);
}

FltFaceCollector::Look FltFaceCollector::lookOf(FltFaceInput const& input) const
{
    FltRecordFace const& record = input.record;
    Look look;
    FltAppearance& appearance = look.appearance;
    appearance.isLit = isLit(input);
    appearance.isTwoSided = isTwoSided(input);
    appearance.isHidden = isHidden(input);
    appearance.isOutlined = record.drawType == solidWithOutline;
    appearance.level = static_cast<std::uint8_t>(std::min(input.level, 100));
    if (tools.textures.has(record.texturePatternIndex))
        appearance.texture = record.texturePatternIndex;
    bool const isTextured = appearance.texture != FltAppearance::none;
    if (isTextured && !input.layers.empty())
        appearance.layers = tools.textures.layersNumber(input.layers);

    look.material = materialOf(input);
    if (look.material != nullptr)
        appearance.material = record.materialIndex;
    look.color = (faceColor(record, isTextured) & ~0xffU) | alphaOf(input);
    look.usesVertexColors = (record.lightMode == vertexColor || record.lightMode == litVertexColor) &&
                            !(isTextured && record.textureWhite != 0);
    bool const usesTextureAlpha = isTextured && record.templateBillboard != 0;
    appearance.isTranslucent = (look.color & 0xff) != 0xff;
    appearance.isBlended = appearance.isTranslucent || usesTextureAlpha;
    appearance.ignoresTextureAlpha = isTextured && !appearance.isBlended;
    return look;
}

std::uint32_t FltFaceCollector::faceColor(FltRecordFace const& record, bool isTextured) const
{
    if ((record.flags & noColorFlag) != 0 || (isTextured && record.textureWhite != 0))
        return FltColors::white;
    if ((record.flags & packedColorFlag) != 0)
        return wordOf(record.packedColor);
    return tools.model.palettes.colors->atIndex(record.primaryColorIndex);
}

std::uint32_t FltFaceCollector::alternateColor(FltRecordFace const& record) const
{
    if ((record.flags & noAlternateColorFlag) != 0)
        return FltColors::white;
    if ((record.flags & packedColorFlag) != 0)
        return wordOf(record.alternatePackedColor);
    return tools.model.palettes.colors->atIndex(record.alternateColorIndex);
}

/// The width of a face's lines; 0 for the usual one.
float FltFaceCollector::lineWidthOf(FltRecordFace const& record) const
{
    constexpr std::int32_t usual = 1, widest = 64;
    std::map<std::int32_t, std::int32_t> const& widths = *tools.model.palettes.lineWidths;
    auto const found = widths.find(record.lineStyleIndex);
    return found != widths.end() && found->second > usual
               ? static_cast<float>(std::min(found->second, widest))
               : 0;
}

/// Lines have no side and no normal: they show their colour.
FltFaceCollector::Look FltFaceCollector::lineLookOf(Look const& look, FltFaceInput const& input,
                                                    bool isAlternate) const
{
    Look line;
    line.color = look.color;
    line.usesVertexColors = look.usesVertexColors;
    line.material = look.material;
    line.appearance.kind = FltAppearance::Kind::lines;
    line.appearance.isLit = false;
    line.appearance.isHidden = look.appearance.isHidden;
    line.appearance.isBlended = (look.color & 0xff) != 0xff;
    line.appearance.size = lineWidthOf(input.record);
    if (isAlternate) {
        line.color = (alternateColor(input.record) & ~0xffU) | (look.color & 0xff);
        line.usesVertexColors = false;
        line.material = nullptr;
    }
    return line;
}

void FltFaceCollector::addFaces(FltFaceInput const& input, Look const& look)
{
    if (points.size() == 4)
        if (auto const shape = FltBowTie::find({points[0], points[1], points[2], points[3]}))
            return addBowTie(input, look, *shape);
    if (!FltPolygonCutter::hasArea(points, normal)) {
        ++tools.leftOut["degenerate face"];
        return;
    }
    std::vector<int> const& pieces = tools.cutter.cut(points, normal);
    bool const isTurned = look.appearance.isTwoSided && look.appearance.isLit && doNormalsOppose(input);
    if (isTurned)
        unitNormal.negate();
    Batch& batch = batchOf(look);
    corners.clear();
    for (std::size_t i = 0; i < input.vertices.size(); ++i)
        corners.push_back(cornerOf(batch, input, i, look));
    auto const addCorner = [&](int piece) { batch.mesh.addIndex(corners[static_cast<std::size_t>(piece)]); };
    for (auto first = pieces.begin(); first != pieces.end();) {
        auto const last = std::find(first, pieces.end(), FltPolygonCutter::end);
        addCorner(*first); // from which the toolkit cuts
        if (isTurned)
            std::for_each(std::make_reverse_iterator(last), std::make_reverse_iterator(first + 1), addCorner);
        else
            std::for_each(first + 1, last, addCorner);
        batch.mesh.addIndex(FltMesh::end);
        first = last + 1;
    }
}

/// Whether the normals of the vertices look to the other side than the face, all in all. The toolkit lights
/// the side that a face is seen from by its normals, or by their opposites if that is the back.
bool FltFaceCollector::doNormalsOppose(FltFaceInput const& input) const
{
    double sum = 0;
    for (std::uint32_t const number : input.vertices)
        if (std::optional<SbVec3f> const own = normalOf(tools.model.vertices[number], input))
            sum += static_cast<double>(own->dot(unitNormal));
    return sum < 0;
}

/// Adds both triangles of a face whose outline crosses itself, with a vertex where it does.
void FltFaceCollector::addBowTie(FltFaceInput const& input, Look const& look, FltBowTie const& shape)
{
    FltVertexStore& vertices = tools.model.vertices;
    auto const corner = [&](int after) { return static_cast<std::size_t>((shape.first + after) % 4); };
    auto const vertex = [&](int after) { return vertices[input.vertices[corner(after)]]; };
    FltVertex const middle =
        FltVertex::between(FltVertex::between(vertex(0), vertex(1), shape.alongFirst),
                           FltVertex::between(vertex(2), vertex(3), shape.alongOther), 0.5);
    FltFaceInput whole = input;
    whole.vertices.push_back(vertices.add(middle));
    for (std::vector<SbVec2f>& uvs : whole.layerUvs) {
        uvs.resize(input.vertices.size(), SbVec2f(0, 0));
        auto const uv = [&](int after, double along) {
            auto const part = static_cast<float>(along);
            return uvs[corner(after)] * (1 - part) + uvs[corner(after + 1)] * part;
        };
        uvs.push_back((uv(0, shape.alongFirst) + uv(2, shape.alongOther)) / 2);
    }
    for (std::array<int, 3> const& places : shape.triangles) {
        FltFaceInput triangle = whole;
        for (std::size_t i = 0; i < places.size(); ++i) {
            auto const from = static_cast<std::size_t>(places[i]);
            triangle.vertices[i] = whole.vertices[from];
            for (std::size_t layer = 0; layer < whole.layerUvs.size(); ++layer)
                triangle.layerUvs[layer][i] = whole.layerUvs[layer][from];
        }
        triangle.vertices.resize(places.size());
        collectPoints(triangle);
        addFaces(triangle, look);
    }
    collectPoints(input);
}

void FltFaceCollector::addLines(FltFaceInput const& input, Look const& look, bool isClosed)
{
    Batch& batch = batchOf(look);
    std::int32_t first = 0;
    for (std::size_t i = 0; i < input.vertices.size(); ++i) {
        std::int32_t const corner = cornerOf(batch, input, i, look);
        first = i == 0 ? corner : first;
        batch.mesh.addIndex(corner);
    }
    if (isClosed)
        batch.mesh.addIndex(first);
    batch.mesh.addIndex(FltMesh::end);
}

void FltFaceCollector::addPoints(FltFaceInput const& input, Look const& faceLook)
{
    bool const isLights = input.isLightPoints || input.record.drawType >= omnidirectionalLight;
    Look look = lineLookOf(faceLook, input, false);
    look.appearance.kind = FltAppearance::Kind::points;
    look.appearance.size = input.pointSize > 0 ? input.pointSize : isLights ? lightPointSize : 0;
    Batch& batch = batchOf(look);
    for (std::size_t i = 0; i < input.vertices.size(); ++i) {
        // Each point is drawn as often as it is there, so none is shared.
        tools.stampOf(input.vertices[i]).batch = 0;
        cornerOf(batch, input, i, look);
    }
}

FltFaceCollector::Batch& FltFaceCollector::batchOf(Look const& look)
{
    if (!batches.empty() && batches.back().mesh.getAppearance() == look.appearance)
        return batches.back();
    auto const [place, isNew] = numbers.emplace(look.appearance, batches.size());
    if (isNew) {
        batches.emplace_back(look.appearance, ++tools.batchCount);
        batches.back().material = look.material;
    }
    return batches[place->second];
}

/// The number of a vertex in a batch. A vertex that several faces share becomes one corner, as long as it
/// looks the same in them.
std::int32_t FltFaceCollector::cornerOf(Batch& batch, FltFaceInput const& input, std::size_t which,
                                        Look const& look)
{
    std::uint32_t const number = input.vertices[which];
    FltVertex const& vertex = tools.model.vertices[number];
    FltMeshBuilder::Corner corner;
    std::uint32_t color = look.color;
    if (look.usesVertexColors && vertex.has(FltVertex::hasColor))
        color = (vertex.color & ~0xffU) | (look.color & 0xff);
    SbColor const ambient = ambientOf(color, look.material);
    corner.color = look.material != nullptr ? multiplied(color, look.material->diffuse) : color;
    corner.uv = SbVec2f(vertex.uv);
    if (look.appearance.isLit)
        corner.normal = input.object.isFlatShaded ? unitNormal : normalOf(vertex, input).value_or(unitNormal);
    FltMeshTools::Stamp& stamp = tools.stampOf(number);
    bool const hasLayers = look.appearance.layers != FltAppearance::none;
    if (stamp.batch == batch.stamp && !hasLayers && batch.mesh.looksAlike(stamp.corner, corner))
        return stamp.corner;
    corner.position = points[which];
    stamp = {batch.stamp, batch.mesh.addCorner(corner, ambient)};
    for (std::size_t layer = 0; hasLayers && layer < input.layerUvs.size(); ++layer)
        batch.mesh.addLayerUv(layer, which < input.layerUvs[layer].size() ? input.layerUvs[layer][which]
                                                                          : SbVec2f(0, 0));
    return stamp.corner;
}

void FltFaceCollector::finish(FltNodeBuilder& node)
{
    for (Batch& batch : batches) {
        FltAppearance const appearance = batch.mesh.getAppearance();
        FltMesh mesh = batch.mesh.finish(batch.material, FltLocalOrigin::unitOf(tools.model));
        tools.textures.nameThem(mesh, appearance);
        node.addMesh(std::move(mesh));
    }
    batches.clear();
    numbers.clear();
}
