#include "inspect/FltCheckGeometry.h"

#include "inspect/FltCheckFaces.h"
#include "inspect/FltCheckPlaces.h"
#include "inspect/FltCheckVertices.h"
#include "messages/FltFindingNumber.h"
#include "model/FltVertex.h"
#include "records/FltOpcode.h"

#include <string>

namespace Number = FltFindingNumber;

namespace
{

constexpr std::uint32_t none = FltInventory::none;

bool hasTextureCoordinates(int vertexOpcode)
{
    // Old vertices have them or not by the length of their records: they count as having them.
    return vertexOpcode != FltOpcode::vertexColor && vertexOpcode != FltOpcode::vertexColorNormal;
}

} // namespace

void FltCheckGeometry::check()
{
    checkLostOffsets();
    for (FltInventory::Face const& face : inventory.faces)
        checkFace(face);
    for (FltInventory::Mesh const& mesh : inventory.meshes)
        checkMesh(mesh);
    checkDrawing();
    bool const isEmpty = inventory.faces.empty() && inventory.meshes.empty() &&
                         inventory.references.empty() && inventory.opcodes.count(FltOpcode::text) == 0 &&
                         inventory.opcodes.count(FltOpcode::lightPoint) == 0 &&
                         inventory.tooDeep.empty(); // which is told by itself
    if (isEmpty)
        findings.addHere(Number::nothingToSee, FltFinding::nowhere, 0,
                         "no face, mesh, text, light point or external reference");
}

/// What only those can say who read it as it is drawn.
void FltCheckGeometry::checkDrawing()
{
    if (inventory.nodes.empty())
        return;
    FltCheckedModel checked(inventory);
    FltCheckVertices(checked, findings).check();
    FltCheckFaces faces(checked, findings);
    faces.check();
    FltCheckPlaces(checked, faces.boxes(), findings).check();
}

void FltCheckGeometry::checkLostOffsets()
{
    for (FltInventory::LostOffset const& lost : inventory.lostOffsets)
        if (!transfer.hasTrace(lost.value))
            findings.add(Number::lostVertex, lost.record, FltOpcode::vertexList,
                         inventory.faces[lost.face].node, "offset " + std::to_string(lost.value));
}

void FltCheckGeometry::checkFace(FltInventory::Face const& face)
{
    if (face.vertexCount == 0)
        findings.add(Number::noVertices, face.offset, FltOpcode::face, face.node, "no vertices");
    else
        checkPlaces(face);
    checkTextureCoordinates(face);
}

/// The shape is judged as it is drawn, by FltCheckFaces.
void FltCheckGeometry::checkPlaces(FltInventory::Face const& face)
{
    for (std::uint32_t i = 0; i < face.vertexCount; ++i) {
        std::uint32_t const vertex = inventory.faceVertices[face.firstVertex + i];
        if (vertex == none)
            continue;
        std::array<double, 3> const place = inventory.position(vertex);
        if (inventory.vertices[vertex].isWhole && FltVertex::isUsable(place[0], place[1], place[2]))
            continue;
        findings.add(Number::unusablePlace, face.offset, FltOpcode::face, face.node, "a vertex of this face");
        return;
    }
}

void FltCheckGeometry::checkTextureCoordinates(FltInventory::Face const& face)
{
    if (face.texture < 0)
        return;
    for (std::uint32_t i = 0; i < face.vertexCount; ++i) {
        std::uint32_t const vertex = inventory.faceVertices[face.firstVertex + i];
        if (vertex != none && !hasTextureCoordinates(inventory.vertices[vertex].opcode)) {
            findings.add(Number::noTextureCoordinates, face.offset, FltOpcode::face, face.node,
                         "texture " + std::to_string(face.texture));
            return;
        }
    }
}

void FltCheckGeometry::checkMesh(FltInventory::Mesh const& mesh)
{
    if (mesh.poolVertices == 0 || mesh.primitives.empty())
        findings.add(Number::emptyMesh, mesh.offset, FltOpcode::mesh, mesh.node,
                     quoted(mesh.name) +
                         (mesh.poolVertices == 0 ? " has no vertex pool" : " has no primitives"));
    else if (mesh.wholeVertices < mesh.poolVertices)
        findings.add(Number::brokenPromise, mesh.offset, FltOpcode::mesh, mesh.node,
                     "the vertex pool of " + quoted(mesh.name) + " holds " +
                         std::to_string(mesh.wholeVertices) + " of " + std::to_string(mesh.poolVertices) +
                         " vertices");
    for (FltInventory::Primitive const& primitive : mesh.primitives)
        if (mesh.poolVertices != 0 && primitive.badIndices != 0)
            findings.add(Number::lostMeshVertex, primitive.offset, FltOpcode::mesh + 2, mesh.node,
                         std::to_string(primitive.badIndices) + " of " +
                             std::to_string(primitive.indexCount) + " indices");
}
