#include "convert/FltObjectToSoSeparator.h"

#include "convert/FltFaceResources.h"
#include "convert/FltFieldValues.h"
#include "convert/FltGuardedFaceSet.h"
#include "convert/FltPalettes.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltRecordFace.h"

#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/elements/SoMaterialBindingElement.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <algorithm>
#include <map>

namespace
{

/// The faces of a batch that have one texture.
struct SoIndexedFaceSetToFinalize {
    std::vector<int> coordinateIndices;   ///< -1 closes each face.
    std::vector<int> faceMaterialIndices; ///< One for each face.
    int textureFileIndex = -1;            ///< -1 for none.
};

/// A face set without material indices. The material binding of the object wants one for each face, and the
/// toolkit would read them from a null pointer: these faces all take the first material.
class OldVertexFaceSet final : public SoIndexedFaceSet
{
public:
    void GLRender(SoGLRenderAction* action) override
    {
        OneMaterial const forAll(action, this);
        SoIndexedFaceSet::GLRender(action);
    }

    /// By default the toolkit makes copies by the name of the type, which is that of any face set.
    SoNode* addToCopyDict() const override
    {
        if (SoFieldContainer const* const copy = checkCopy(this))
            return static_cast<SoNode*>(const_cast<SoFieldContainer*>(copy));
        auto* const copy = new OldVertexFaceSet;
        addCopy(this, copy);
        return copy;
    }

protected:
    void generatePrimitives(SoAction* action) override
    {
        OneMaterial const forAll(action, this);
        SoIndexedFaceSet::generatePrimitives(action);
    }

private:
    class OneMaterial
    {
    public:
        OneMaterial(SoAction* action, SoNode* node) : state(action->getState())
        {
            state->push();
            SoMaterialBindingElement::set(state, node, SoMaterialBindingElement::OVERALL);
        }
        ~OneMaterial() { state->pop(); }

        OneMaterial(OneMaterial const&) = delete;
        OneMaterial& operator=(OneMaterial const&) = delete;

    private:
        SoState* state;
    };
};

} // namespace

void FltObjectToSoSeparator::traverseObjectPrimaryRecords()
{
    visitAllFaces();
    for (FltVertexPalette::Form const& form : resources->vertices.getForms()) {
        SoVertexProperty* property = form.property.get();
        Batch const& base = batches[form.id - 1];
        Batch const& subFace = batches[form.id - 1 + formCount];
        // Sub-faces lie upon base faces: without any, they have no place.
        if (base.indices.empty())
            continue;
        addBatch(base, form.materialSetName, property);
        if (subFace.indices.empty())
            continue;
        addPolygonOffset(-1.0F, -30.0F);
        addBatch(subFace, form.subFaceMaterialSetName, property);
    }
    // Vertices with colour alone are drawn beside vertices with colour and normal only.
    if (!oldVertexColorNormal.indices.empty()) {
        buildAndAddIndexedFaceSetFromOldVertexColorNormal();
        buildAndAddIndexedFaceSetFromOldVertexColor();
    }
}

void FltObjectToSoSeparator::addBatch(Batch const& batch, SbName const& materialName,
                                      SoVertexProperty*& property)
{
    auto* const material = new SoMaterial;
    material->setName(materialName);
    batch.materialSlots.writeTo(*material);
    destination->addChild(material);
    buildAndAddIndexedFaceSetFromIndicesVector(batch.indices, batch.materialIndices, batch.textureIndices,
                                               property);
}

void FltObjectToSoSeparator::buildAndAddIndexedFaceSetFromIndicesVector(std::vector<int> const& indices,
                                                                        std::vector<int> const& materials,
                                                                        std::vector<int> const& textures,
                                                                        SoVertexProperty*& property)
{
    if (isSoIndexedFaceSetNeedsManyTextureFiles(textures))
        buildAndAddIndexedFaceSetFromIndicesVectorManyTextureFile(indices, materials, textures, property);
    else
        buildAndAddIndexedFaceSetFromIndicesVectorOneTextureFile(indices, materials, textures, property);
}

void FltObjectToSoSeparator::buildAndAddIndexedFaceSetFromIndicesVectorOneTextureFile(
    std::vector<int> const& indices, std::vector<int> const& materials, std::vector<int> const& textures,
    SoVertexProperty*& property)
{
    SoIndexedFaceSet* const faceSet =
        FltGuardedFaceSet::isNeededFor(indices) ? new FltGuardedFaceSet : new SoIndexedFaceSet;
    fillFaceSet(*faceSet, faceSetNameOf(property), property, indices);
    setFieldValues(faceSet->materialIndex, materials);
    int const textureFileIndex = getTextureFileIndex(textures);
    if (textureFileIndex == -1) {
        destination->addChild(faceSet);
        return;
    }
    auto* const separator = new SoSeparator;
    static SbName const separatorName("isolateTexturesNodes");
    separator->setName(separatorName);
    addTexture(*separator, textureFileIndex);
    separator->addChild(faceSet);
    destination->addChild(separator);
}

void FltObjectToSoSeparator::buildAndAddIndexedFaceSetFromIndicesVectorManyTextureFile(
    std::vector<int> const& indices, std::vector<int> const& materials, std::vector<int> const& textures,
    SoVertexProperty*& property)
{
    std::map<int, SoIndexedFaceSetToFinalize> faceSets;
    auto iterator = indices.begin();
    for (std::size_t i = 0; i < textures.size(); ++i) {
        SoIndexedFaceSetToFinalize& faceSet = faceSets[textures[i]];
        copyOneFaceVertexIndices(faceSet.coordinateIndices, iterator);
        faceSet.faceMaterialIndices.push_back(materials[i]);
        faceSet.textureFileIndex = textures[i];
    }
    for (auto const& [textureIndex, faceSet] : faceSets)
        buildAndAddIndexedFaceSetFromIndicesVectorOneTextureFile(
            faceSet.coordinateIndices, faceSet.faceMaterialIndices, {faceSet.textureFileIndex}, property);
}

void FltObjectToSoSeparator::copyOneFaceVertexIndices(std::vector<int>& faceIndices,
                                                      std::vector<int>::const_iterator& iterator)
{
    for (; *iterator != -1; ++iterator)
        faceIndices.push_back(*iterator);
    faceIndices.push_back(-1);
    ++iterator;
}

int FltObjectToSoSeparator::getTextureFileIndex(std::vector<int> const& textures)
{
    auto const found =
        std::find_if(textures.begin(), textures.end(), [](int texture) { return texture != -1; });
    return found != textures.end() ? *found : -1;
}

bool FltObjectToSoSeparator::isSoIndexedFaceSetNeedsManyTextureFiles(std::vector<int> const& textures) const
{
    return std::any_of(textures.begin(), textures.end(),
                       [&textures](int texture) { return texture != textures.front(); });
}

char const* FltObjectToSoSeparator::getSoIndexedFaceSetNameFromSoVertexProperty(SoVertexProperty*& property)
{
    return faceSetNameOf(property).getString();
}

SbName FltObjectToSoSeparator::faceSetNameOf(SoVertexProperty const* property) const
{
    if (FltVertexPalette::Form const* const form = resources->vertices.findForm(property))
        return form->faceSetName;
    FltWarningMessageConsole::notifyMessage(
        "WARNING ! I can't give a name for a SoIndexedFaceSet\n"
        " since This SoVertexProperty doesn'fit with one of the 4 global SoVertexProperty\n"
        " SO_INDEXED_FACE_SET_WITH_UNDEFINED_VERTEX_NAME returned",
        1, true);
    return "SoIFSVertexUNDEFINED";
}

void FltObjectToSoSeparator::buildAndAddIndexedFaceSetFromOldVertexColorNormal()
{
    addFaceSetOf(oldVertexColorNormal, "OLD_VERTEX_COLOR_NORMAL");
}

void FltObjectToSoSeparator::buildAndAddIndexedFaceSetFromOldVertexColor()
{
    addFaceSetOf(oldVertexColor, "OLD_VERTEX_COLOR");
}

void FltObjectToSoSeparator::buildAndAddIndexedFaceSetFromOldVertex()
{
    addFaceSetOf(oldVertex, "OLD_VERTEX");
}

void FltObjectToSoSeparator::addFaceSetOf(OldVertexSet& set, char const* name)
{
    if (set.indices.empty())
        return;
    destination->addChild(makeOldVertexFaceSet(name, set));
    finishProperty(set);
}

void FltObjectToSoSeparator::addFaceSetFromVertexListNoGlobalSoVertexProperty(FltRecordVertexList const* list)
{
    auto const count = static_cast<int>(list->vertexOffsets.size());
    auto* const property = new SoVertexProperty;
    property->setName("localSoVertexProperty");
    property->materialBinding = SoVertexProperty::PER_FACE_INDEXED;
    property->vertex.setNum(count);
    SbVec3f* slot = property->vertex.startEditing();
    for (int const offset : list->vertexOffsets) {
        VertexEntry const entry = resources->vertices.entryAt(FltVertexPalette::offsetOf(offset));
        bool const known = entry.property != nullptr && entry.index < entry.property->vertex.getNum();
        *slot++ = known ? entry.property->vertex[entry.index] : SbVec3f(0, 0, 0);
    }
    property->vertex.finishEditing();
    auto* const faceSet = new SoFaceSet;
    faceSet->setName("irregularSoFaceSet");
    faceSet->numVertices = count;
    faceSet->vertexProperty = property;
    destination->addChild(faceSet);
}

/// For a texture that the palette doesn't define nothing is added.
void FltObjectToSoSeparator::addTexture(SoGroup& group, int textureIndex)
{
    if (SoTexture2* const texture = resources->palettes.findTexture(textureIndex))
        group.addChild(texture);
}

void FltObjectToSoSeparator::fillFaceSet(SoIndexedFaceSet& faceSet, SbName const& name,
                                         SoVertexProperty* property, std::vector<int> const& indices)
{
    faceSet.setName(name);
    faceSet.vertexProperty = property;
    setFieldValues(faceSet.coordIndex, indices);
}

SoIndexedFaceSet* FltObjectToSoSeparator::makeOldVertexFaceSet(char const* name, OldVertexSet& set)
{
    if (set.property.get() == nullptr) {
        set.property = SoNodeRef<SoVertexProperty>(new SoVertexProperty);
        set.property->setName(name);
        set.property->enableNotify(FALSE); // until the last face set in the scene holds it
    }
    auto* const faceSet = new OldVertexFaceSet;
    fillFaceSet(*faceSet, name, set.property.get(), set.indices);
    return faceSet;
}

void FltObjectToSoSeparator::finishProperty(OldVertexSet& set)
{
    if (set.property.get() == nullptr)
        return;
    setFieldValues(set.property->vertex, set.places);
    if (!set.texCoords.empty())
        setFieldValues(set.property->texCoord, set.texCoords);
    set.property->enableNotify(TRUE);
    set.property->touch();
}
