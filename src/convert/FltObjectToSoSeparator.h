#pragma once

#include "convert/FltMaterialSlots.h"
#include "convert/FltRecordDeclarations.h"
#include "convert/FltVertexPalette.h"
#include "records/FltVersion.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/SbColor.h>
#include <Inventor/SbName.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

class AbstractOldVertexRecord;
class FltToInventor;
class SoGroup;
class SoIndexedFaceSet;
class SoMaterial;
struct FltFaceResources;

/// Turns the records of one Object, or of one run of faces outside any Object, into geometry below one group.
///
/// The walk sorts every face into one of eight batches, by the form of its vertices and by its level: base,
/// or sub-face for a face that lies upon another one. A batch becomes one SoMaterial with a slot for each
/// face, and one SoIndexedFaceSet for each texture; the face sets index the four vertex properties that the
/// whole file shares. So an Object of thousands of faces becomes a few nodes.
///
/// Vertices of the obsolete forms stand in the records of the Object and get properties of their own.
///
/// One instance serves one Object: set the four inputs and the FltVersion part, call buildFinalSoSeparator(),
/// and let it go.
class FltObjectToSoSeparator : public FltVersion
{
public:
    /// A position in a vector of records that ends with a null entry.
    using RecordIterator = std::vector<FltRecord*>::const_iterator;

    /// The faces of one vertex form at one level.
    struct Batch {
        std::vector<int> indices;         ///< Positions in the shared property; -1 closes each face.
        std::vector<int> textureIndices;  ///< One for each face, -1 for no texture.
        std::vector<int> materialIndices; ///< One for each face: its slot in the material.
        int faceCounter = -1;             ///< The last face.
        FltMaterialSlots materialSlots;   ///< One for each face.
    };

    /// The vertices of one obsolete form.
    struct OldVertexSet {
        std::vector<int> indices;             ///< Running positions in the property; -1 closes a polygon.
        std::vector<SbVec3f> places;          ///< Of the vertices so far.
        std::vector<SbVec2f> texCoords;       ///< The same, where the form has any.
        SoNodeRef<SoVertexProperty> property; ///< Made with the first face set.
    };

    FltObjectToSoSeparator();
    virtual ~FltObjectToSoSeparator() = default;

    FltObjectToSoSeparator(FltObjectToSoSeparator const&) = delete;
    FltObjectToSoSeparator& operator=(FltObjectToSoSeparator const&) = delete;

    /// @name Inputs
    /// @{

    /// Where the Object's records begin. The caller's iterator stays where it is.
    void setCurrentIterator(RecordIterator& iterator);

    /// The Object's transparency in the file's units, 0 to 65535; 1 for faces outside any Object.
    void setCurrentFltObjectTransparency(float const& transparency);

    /// The group that receives the nodes; not owned.
    void setDestination(SoGroup*& group);

    /// The conversion whose vertices and palettes the faces use; not owned.
    void setFltToInventor(FltToInventor* converter);
    /// @}

    /// Does all the work. With an input missing it adds no node, and reports that to the console.
    void buildFinalSoSeparator();

    /// @name Walk
    /// @{

    /// Sorts all faces and adds the nodes of the batches.
    void traverseObjectPrimaryRecords();
    void visitAllFaces();

    /// Appends the records of the level at the iterator, its Push and Pop included. An opcode above
    /// FltOpcode::lastOfObject ends it.
    void getAllRecordsFromFltObject(RecordIterator& iterator, std::vector<FltRecord*>& records);

    /// Sorts one face into its batch, and leaves the iterator on the last of its records.
    /// @param subFaceLevel 0 for base, any other value for sub-face
    void visitFace(FltRecordFace const* face, RecordIterator& iterator, int subFaceLevel);

    /// Appends the vertices of the face at the iterator. Several lists below one face make one polygon.
    /// @param id set to the property id of the vertices, 1 to 4, or 5 for unknown ones; left alone if there
    /// are none
    void visitAllVertexList(RecordIterator& iterator, std::vector<int>& indices, int& id);

    /// Appends the records of the face at the iterator, and leaves the iterator on the last of them.
    void getFirstFaceFromIterator(RecordIterator& iterator, std::vector<FltRecord*>& records);

    /// Appends the vertices of a list. Where forms with and without normal are mixed and all have texture
    /// coordinates, those without get the average normal of the others; any other mixture is reported to
    /// the console and left out.
    void visitVertexList(FltRecordVertexList const* list, std::vector<int>& indices, int& id);

    /// Appends the second member of each entry. The first entry alone decides on the id.
    void visitMorphVertexList(FltRecordMorphVertexList const* list, std::vector<int>& indices, int& id);

    void addOldVertexToSoVertexProperty(FltRecordOldVertex const*& vertex);
    void addOldVertexColorToSoVertexProperty(FltRecordOldVertexColor const*& vertex);
    void addOldVertexColorNormalToSoVertexProperty(FltRecordOldVertexColorNormal const*& vertex);

    /// Adds a face to a batch: its indices, its texture, and a slot in the material.
    void addFaceToVector(FltRecordFace const* face, std::vector<int> const& faceIndices, Batch& batch);

    /// Adds a SoPolygonOffset, which holds for all later children of the destination.
    void addPolygonOffset(float first, float second);
    /// @}

    /// @name Appearance
    /// Each writes slot @p index of all six fields of @p material. Slots between the last one and this are
    /// filled with the defaults of a material; their shininess is 0.
    /// @{

    /// Takes the operation that fits the face's material, No Color and Packed Color.
    void addFltFaceMaterialToSoMaterial(FltRecordFace const* face, SoMaterial*& material, int const& index);
    void addFltFaceNoColorNoMaterialToSoMaterial(SoMaterial*& material, int const& index);
    void addFltFaceWithPackedColorNoMaterialToSoMaterial(FltRecordFace const* face, SoMaterial*& material,
                                                         int const& index);

    /// A colour index far outside of the palette leaves the slot alone and prints "bad color index" to
    /// std::cout.
    void addFltFaceWithColorPaletteIndexNoMaterialToSoMaterial(FltRecordFace const* face,
                                                               SoMaterial*& material, int const& index);
    void addFltFaceNoColorMaterialToSoMaterial(FltRecordFace const* face, SoMaterial*& material,
                                               int const& index);
    void addFltFaceWithPackedColorMaterialToSoMaterial(FltRecordFace const* face, SoMaterial*& material,
                                                       int const& index);
    void addFltFaceWithColorPaletteIndexMaterialToSoMaterial(FltRecordFace const* face, SoMaterial*& material,
                                                             int const& index);
    /// @}

    /// @name Face sets
    /// Each adds to the destination. Of the vectors of a batch, the indices hold one -1 for each entry of the
    /// others.
    /// @{

    /// Adds one face set, or one for each texture in ascending order of the texture index.
    void buildAndAddIndexedFaceSetFromIndicesVector(std::vector<int> const& indices,
                                                    std::vector<int> const& materials,
                                                    std::vector<int> const& textures,
                                                    SoVertexProperty*& property);

    /// Adds one face set; with a texture, in a separator "isolateTexturesNodes" that keeps the texture to
    /// itself.
    void buildAndAddIndexedFaceSetFromIndicesVectorOneTextureFile(std::vector<int> const& indices,
                                                                  std::vector<int> const& materials,
                                                                  std::vector<int> const& textures,
                                                                  SoVertexProperty*& property);
    void buildAndAddIndexedFaceSetFromIndicesVectorManyTextureFile(std::vector<int> const& indices,
                                                                   std::vector<int> const& materials,
                                                                   std::vector<int> const& textures,
                                                                   SoVertexProperty*& property);

    /// Copies one face with the -1 that closes it, which has to be there, and moves the iterator past it.
    void copyOneFaceVertexIndices(std::vector<int>& faceIndices, std::vector<int>::const_iterator& iterator);

    /// The first texture that isn't -1; -1 if there is none.
    int getTextureFileIndex(std::vector<int> const& textures);

    /// Whether the entries differ, -1 being a value like any other.
    bool isSoIndexedFaceSetNeedsManyTextureFiles(std::vector<int> const& textures) const;

    /// The name of the face sets of one of the four shared properties. Another one gives a name as well, and
    /// a message.
    char const* getSoIndexedFaceSetNameFromSoVertexProperty(SoVertexProperty*& property);

    void buildAndAddIndexedFaceSetFromOldVertexColorNormal();
    void buildAndAddIndexedFaceSetFromOldVertexColor();
    void buildAndAddIndexedFaceSetFromOldVertex();

    /// Adds a face set with coordinates of its own, copied from the shared properties.
    void addFaceSetFromVertexListNoGlobalSoVertexProperty(FltRecordVertexList const* list);
    /// @}

private:
    static constexpr int formCount = FltVertexPalette::formCount;

    Batch& batchOf(int id, int subFaceLevel);
    void promoteToColorNormalUV(std::vector<int>& indices, std::size_t begin);
    static void addOldVertex(OldVertexSet& set, AbstractOldVertexRecord const& vertex);
    void addOldVertexFaceSet(FltRecordFace const& face);
    static void finishProperty(OldVertexSet& set);

    /// @name The six values of a face, for each of the operations above
    /// None where the slot is to be left alone.
    /// @{
    std::optional<FltMaterialFields> materialOf(FltRecordFace const& face) const;
    std::optional<FltMaterialFields> colorPaletteIndexNoMaterial(FltRecordFace const& face) const;
    FltMaterialFields noColorMaterial(FltRecordFace const& face) const;
    FltMaterialFields packedColorMaterial(FltRecordFace const& face) const;
    FltMaterialFields colorPaletteIndexMaterial(FltRecordFace const& face) const;
    /// @}

    SbColor materialModulation(FltRecordFace const& face) const;
    FltMaterialFields paletteMaterial(FltRecordFace const& face) const;
    float paletteTransparency(FltRecordFace const& face, float transparency) const;

    SbName faceSetNameOf(SoVertexProperty const* property) const;
    void addBatch(Batch const& batch, SbName const& materialName, SoVertexProperty*& property);
    void addTexture(SoGroup& group, int textureIndex);
    void addFaceSetOf(OldVertexSet& set, char const* name);
    static void fillFaceSet(SoIndexedFaceSet& faceSet, SbName const& name, SoVertexProperty* property,
                            std::vector<int> const& indices);
    static SoIndexedFaceSet* makeOldVertexFaceSet(char const* name, OldVertexSet& set);

    bool isBuilt = false;
    bool iteratorIsSet = false;
    FltFaceResources const* resources = nullptr; ///< Of the conversion.
    SoGroup* destination = nullptr;
    float currentFltObjectTransparency = 0;
    RecordIterator currentIterator;
    Batch batches[2 * formCount]; ///< Those of base faces, then those of sub-faces.
    OldVertexSet oldVertexColorNormal;
    OldVertexSet oldVertexColor;
    OldVertexSet oldVertex;

    /// @name Buffers that every face reuses
    /// @{
    std::vector<FltRecord*> faceRecords;
    std::vector<int> faceIndices;
    std::vector<int> vertexIds;
    /// @}
};
