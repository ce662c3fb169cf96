#include "toolkit/SceneWriter.h"

#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <unordered_set>

namespace
{

bool hasMaterialIndices(SoIndexedFaceSet const& faces)
{
    return faces.materialIndex.getNum() > 0 && faces.materialIndex[0] >= 0;
}

/// Takes indices that lie after the end of what they point into for the last one.
void keepBelow(SoMFInt32& indices, int count)
{
    int const number = indices.getNum();
    std::int32_t const* const values = indices.getValues(0);
    if (count == 0 || std::all_of(values, values + number, [count](std::int32_t i) { return i < count; }))
        return;
    std::int32_t* const changed = indices.startEditing();
    std::replace_if(
        changed, changed + number, [count](std::int32_t i) { return i >= count; }, count - 1);
    indices.finishEditing();
}

template <class Number>
Number readable(Number number)
{
    Number const most = std::numeric_limits<Number>::max();
    return std::isnan(number) ? 0 : std::clamp(number, -most, most);
}

/// Goes through a scene once, whatever is shared in it.
class PlainScene
{
public:
    void visit(SoGroup& group, bool wantsMaterialIndices)
    {
        if (!visited.insert(&group).second)
            return;
        for (int i = 0; i < group.getNumChildren(); ++i) {
            SoNode* const child = group.getChild(i);
            if (child->isOfType(SoMaterialBinding::getClassTypeId()))
                wantsMaterialIndices = wantsIndices(static_cast<SoMaterialBinding&>(*child));
            else if (child->isOfType(SoIndexedFaceSet::getClassTypeId()))
                visitFaces(group, i, static_cast<SoIndexedFaceSet&>(*child), wantsMaterialIndices);
            else if (child->isOfType(SoGroup::getClassTypeId()))
                visit(static_cast<SoGroup&>(*child), wantsMaterialIndices);
        }
    }

private:
    static bool wantsIndices(SoMaterialBinding const& binding)
    {
        return binding.value.getValue() != SoMaterialBinding::OVERALL;
    }

    void visitFaces(SoGroup& group, int index, SoIndexedFaceSet& faces, bool wantsMaterialIndices)
    {
        SoNode* const node = faces.vertexProperty.getValue();
        if (node == nullptr || !node->isOfType(SoVertexProperty::getClassTypeId()))
            return;
        auto const& property = static_cast<SoVertexProperty&>(*node);
        keepBelow(faces.coordIndex, property.vertex.getNum());
        keepBelow(faces.normalIndex, property.normal.getNum());
        keepBelow(faces.textureCoordIndex, property.texCoord.getNum());
        if (!wantsMaterialIndices || hasMaterialIndices(faces) || property.orderedRGBA.getNum() > 0)
            return;
        auto* const binding = new SoMaterialBinding;
        binding->value = SoMaterialBinding::OVERALL;
        auto* const separator = new SoSeparator;
        separator->addChild(binding);
        separator->addChild(&faces);
        group.replaceChild(index, separator);
    }

    std::unordered_set<SoNode const*> visited;
};

} // namespace

void SceneWriter::Output::write(SbString const& text)
{
    if (isBinary())
        return SoOutput::write(text.getString());
    std::string quoted = "\"";
    for (char const* c = text.getString(); *c != '\0'; ++c) {
        if (*c == '"')
            quoted += '\\';
        quoted += *c;
    }
    SoOutput::write((quoted + '"').c_str());
}

void SceneWriter::Output::write(SbName const& name)
{
    write(SbString(name.getString()));
}

void SceneWriter::Output::write(float number)
{
    SoOutput::write(isBinary() ? number : readable(number));
}

void SceneWriter::Output::write(double number)
{
    SoOutput::write(isBinary() ? number : readable(number));
}

void SceneWriter::write(SoNode* root, SoOutput& output)
{
    makePlain(root);
    SoWriteAction(&output).apply(root);
}

void SceneWriter::makePlain(SoNode* root)
{
    if (root->isOfType(SoGroup::getClassTypeId()))
        PlainScene().visit(static_cast<SoGroup&>(*root), false);
}
