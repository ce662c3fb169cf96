#pragma once

#include "inspect/FltCheckFamily.h"
#include "inspect/FltCheckedModel.h"
#include "inspect/FltCoincidingFaces.h"
#include "inspect/FltNodeBoxes.h"
#include "inspect/FltSeenTogether.h"
#include "visual/FltFaceCollector.h"
#include "visual/FltFaceReader.h"

#include <cstdint>
#include <string>
#include <vector>

/// Faces as they are drawn, those of meshes included: their shapes, normals, texture coordinates and places.
class FltCheckFaces : private FltCheckFamily, private FltFaceReceiver
{
public:
    FltCheckFaces(FltCheckedModel& checked, FltFindingList& findings);

    void check();

    /// Around what is drawn below each node. Only after check().
    FltNodeBoxes const& boxes() const { return nodeBoxes; }

private:
    /// What of a vertex was judged already, since faces share vertices.
    enum Judged : std::uint8_t { judgedNormal = 1, judgedUv = 2 };

    void add(FltFaceInput const& input) override;
    void readAll();
    void forgetVertices();
    void judge(FltFaceInput const& input);
    void collect(FltFaceInput const& input);
    void checkOnePlace();
    void checkPlacesOfMesh(FltModelTree::Number mesh);
    void checkShape(FltFaceInput const& input);
    void checkNormals(FltFaceInput const& input);
    void checkSides(FltFaceInput const& input);
    void checkTextureCoordinates(FltFaceInput const& input);
    void checkSight(FltFaceInput const& input);
    void checkDetail();
    bool isFirstTime(std::uint32_t vertex, Judged what);
    bool repeatsACorner(FltFaceInput const& input) const;
    void tell(int number, FltFaceInput const& input, std::string const& text);

    FltCheckedModel& checked;
    std::vector<FltTexture> textures;
    FltLeftOut leftOut;
    FltMeshTools tools;
    FltFaceReader reader;
    FltFaceCollector drawer;
    FltSeenTogether seen;
    FltCoincidingFaces coinciding;
    FltNodeBoxes nodeBoxes;
    FltCoincidingFaces::Face face;   ///< That is judged.
    FltCoincidingFaces::Place place; ///< Of that face.
    std::vector<SbVec3d>& points;    ///< Its corners.
    SbVec3d normal;
    std::vector<std::uint8_t> judged; ///< By vertex.
};
