#include "view/SceneStatistics.h"

#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <algorithm>
#include <unordered_set>

namespace
{

class Counter
{
public:
    explicit Counter(SceneStatistics& statistics) : statistics(statistics) {}

    void count(SoNode* node)
    {
        if (!seen.insert(node).second)
            return;
        ++statistics.nodes;
        if (node->isOfType(SoShape::getClassTypeId()))
            countShape(*node);
        SoChildList const* const children = node->getChildren();
        for (int i = 0; children != nullptr && i < children->getLength(); ++i)
            count((*children)[i]);
    }

private:
    void countShape(SoNode const& node)
    {
        ++statistics.shapes;
        if (node.isOfType(SoIndexedFaceSet::getClassTypeId()))
            countIndexed(static_cast<SoIndexedFaceSet const&>(node).coordIndex);
        else if (node.isOfType(SoFaceSet::getClassTypeId())) {
            SoMFInt32 const& counts = static_cast<SoFaceSet const&>(node).numVertices;
            for (int i = 0; i < counts.getNum(); ++i)
                countFace(counts[i]);
        }
    }

    void countIndexed(SoMFInt32 const& indices)
    {
        std::int32_t const* const values = indices.getValues(0);
        int corners = 0;
        for (int i = 0; i < indices.getNum(); ++i) {
            ++corners;
            if (values[i] < 0) {
                countFace(corners - 1);
                corners = 0;
            }
        }
        countFace(corners);
    }

    void countFace(int corners)
    {
        if (corners < 3)
            return;
        ++statistics.faces;
        statistics.triangles += corners - 2;
    }

    SceneStatistics& statistics;
    std::unordered_set<SoNode const*> seen;
};

} // namespace

SceneStatistics::SceneStatistics(SoNode* scene)
{
    Counter(*this).count(scene);
}
