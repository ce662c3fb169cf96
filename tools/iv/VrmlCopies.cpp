#include "iv/VrmlCopies.h"

#include "support/SceneNodes.h"

#include <Inventor/SbRotation.h>
#include <Inventor/SbVec4f.h>
#include <Inventor/SoOutput.h>
#include <Inventor/VRMLnodes/SoVRMLGroup.h>
#include <Inventor/VRMLnodes/SoVRMLParent.h>
#include <Inventor/actions/SoWriteAction.h>

namespace
{

void moveChildren(SoGroup& from, SoGroup& to)
{
    for (int i = 0; i < from.getNumChildren(); ++i)
        to.addChild(from.getChild(i));
    from.removeAllChildren();
}

template <class Vector>
void write(SoOutput& output, char const* field, Vector const& values, int count)
{
    output.indent();
    output.write(field);
    for (int i = 0; i < count; ++i) {
        output.write(' ');
        output.write(values[i]);
    }
    output.write('\n');
}

void write(SoOutput& output, char const* field, SbRotation const& rotation)
{
    SbVec3f axis;
    float angle = 0;
    rotation.getValue(axis, angle);
    write(output, field, SbVec4f(axis[0], axis[1], axis[2], angle), 4);
}

void writePlace(SoOutput& output, SbMatrix const& place)
{
    SbVec3f translation;
    SbRotation rotation;
    SbVec3f scale;
    SbRotation scaleOrientation;
    place.getTransform(translation, rotation, scale, scaleOrientation);
    write(output, "translation", translation, 3);
    write(output, "rotation", rotation);
    write(output, "scale", scale, 3);
    write(output, "scaleOrientation", scaleOrientation);
}

/// Is written as a group of transformations around its only child. As nodes they would take four kilobytes
/// each, and time in the square of their number. To the toolkit it is a group like any other.
class WrittenCopies : public SoVRMLGroup
{
public:
    WrittenCopies(SoNode* part, std::vector<SbMatrix> const& places) : places(places) { children = part; }

    void write(SoWriteAction* action) override
    {
        if (action->getOutput()->getStage() == SoOutput::COUNT_REFS)
            for (std::size_t i = 0; i < places.size(); ++i)
                getChild(0)->write(action);
        else
            writeAll(*action->getOutput(), action);
    }

private:
    void writeAll(SoOutput& output, SoWriteAction* action)
    {
        output.write("Group { children [\n");
        output.incrementIndent();
        for (SbMatrix const& place : places) {
            output.indent();
            output.write("Transform {\n");
            output.incrementIndent();
            writePlace(output, place);
            output.indent();
            output.write("children\n");
            getChild(0)->write(action);
            output.write('\n');
            output.decrementIndent();
            output.indent();
            output.write("}\n");
        }
        output.decrementIndent();
        output.indent();
        output.write("] }\n");
    }

    std::vector<SbMatrix> const& places;
};

} // namespace

VrmlCopies::VrmlCopies(SoNode* root)
{
    SceneNodes::forEach(root, [this](SoNode& node) {
        if (node.isOfType(SoMultipleCopy::getClassTypeId()))
            prepare(static_cast<SoMultipleCopy&>(node));
    });
}

void VrmlCopies::prepare(SoMultipleCopy& node)
{
    // No name of the scene holds a colon.
    std::string const mark = "copies:" + std::to_string(all.size());
    SbMatrix const* const places = node.matrix.getValues(0);
    Copies copies{SoNodeRef<SoMultipleCopy>(&node),
                  SoNodeRef<SoSeparator>(new SoSeparator),
                  {places, places + node.matrix.getNum()}};
    copies.part->setName(mark.c_str());
    moveChildren(node, *copies.part);
    node.addChild(copies.part.get());
    node.matrix = SbMatrix::identity();
    positions[mark] = all.size();
    all.push_back(std::move(copies));
}

VrmlCopies::~VrmlCopies()
{
    for (Copies const& copies : all) {
        copies.node->removeAllChildren();
        moveChildren(*copies.part, *copies.node);
        copies.node->matrix.setValues(0, static_cast<int>(copies.places.size()), copies.places.data());
    }
}

void VrmlCopies::addTo(SoNode* vrml) const
{
    SceneNodes::forEach(vrml, [this](SoNode& node) {
        auto const found = positions.find(node.getName().getString());
        if (found == positions.end() || !node.isOfType(SoVRMLParent::getClassTypeId()))
            return;
        auto& group = static_cast<SoVRMLParent&>(node);
        group.setName("");
        auto* const part = new SoVRMLGroup;
        part->children = group.children;
        group.children = new WrittenCopies(part, all[found->second].places);
    });
}
