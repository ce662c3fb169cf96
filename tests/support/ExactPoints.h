#pragma once

#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbVec3d.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoMultipleCopy.h>
#include <Inventor/nodes/SoRotation.h>
#include <Inventor/nodes/SoScale.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoTransform.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <algorithm>
#include <cmath>
#include <vector>

/// The vertices of a scene in the world, read back in doubles, where the toolkit counts in floats.
class ExactPoints
{
public:
    explicit ExactPoints(SoNode* root) { take(root); }

    std::vector<std::vector<SbVec3d>> shapes; ///< The vertices of each face set, in the scene's order.

    /// The largest numbers of translations and matrices, the largest first.
    std::vector<double> movesByLength() const
    {
        std::vector<double> sorted = moves;
        std::sort(sorted.rbegin(), sorted.rend());
        return sorted;
    }

private:
    template <class Node>
    static Node* as(SoNode* node)
    {
        return node->isOfType(Node::getClassTypeId()) ? static_cast<Node*>(node) : nullptr;
    }

    void move(SbDPMatrix const& by)
    {
        matrix.multLeft(by);
        moves.push_back(std::max({std::abs(by[3][0]), std::abs(by[3][1]), std::abs(by[3][2])}));
    }

    void takeChildren(SoGroup* group)
    {
        for (int i = 0; i < group->getNumChildren(); ++i)
            take(group->getChild(i));
    }

    void take(SoNode* node)
    {
        SbDPMatrix by = SbDPMatrix::identity();
        SbDPMatrix const before = matrix;
        if (auto* const translation = as<SoTranslation>(node)) {
            by.setTranslate(SbVec3d(translation->translation.getValue()));
            move(by);
        } else if (auto* const transform = as<SoMatrixTransform>(node)) {
            move(SbDPMatrix(transform->matrix.getValue()));
        } else if (auto* const motion = as<SoTransform>(node)) {
            SbMatrix floats;
            floats.setTransform(motion->translation.getValue(), motion->rotation.getValue(),
                                motion->scaleFactor.getValue());
            move(SbDPMatrix(floats));
        } else if (auto* const scale = as<SoScale>(node)) {
            by.setScale(SbVec3d(scale->scaleFactor.getValue()));
            move(by);
        } else if (auto* const rotation = as<SoRotation>(node)) {
            SbMatrix floats;
            floats.setRotate(rotation->rotation.getValue());
            move(SbDPMatrix(floats));
        } else if (auto* const copies = as<SoMultipleCopy>(node)) {
            for (int i = 0; i < copies->matrix.getNum(); ++i) {
                move(SbDPMatrix(copies->matrix[i]));
                takeChildren(copies);
                matrix = before;
            }
        } else if (auto* const choice = as<SoSwitch>(node)) {
            int const child = choice->whichChild.getValue();
            if (child == SO_SWITCH_ALL)
                takeChildren(choice);
            else if (child >= 0)
                take(choice->getChild(child));
        } else if (auto* const faces = as<SoIndexedFaceSet>(node)) {
            addVertices(*static_cast<SoVertexProperty*>(faces->vertexProperty.getValue()));
        } else if (auto* const group = as<SoGroup>(node)) {
            takeChildren(group);
        }
        if (as<SoSeparator>(node) != nullptr || as<SoLOD>(node) != nullptr)
            matrix = before;
    }

    void addVertices(SoVertexProperty const& vertices)
    {
        shapes.emplace_back();
        for (int i = 0; i < vertices.vertex.getNum(); ++i) {
            SbVec3d place;
            matrix.multVecMatrix(SbVec3d(vertices.vertex[i]), place);
            shapes.back().push_back(place);
        }
    }

    SbDPMatrix matrix = SbDPMatrix::identity();
    std::vector<double> moves;
};
