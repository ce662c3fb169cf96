#include "vrml/SceneSurvey.h"

#include "support/ScenePrimitives.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>

namespace
{

class Counter : public ScenePrimitives
{
public:
    explicit Counter(SceneSurvey& survey) : survey(survey) {}

private:
    void extend(SoCallbackAction& action, Vertex const& vertex)
    {
        SbVec3f point;
        action.getModelMatrix().multVecMatrix(vertex.getPoint(), point);
        survey.box.extendBy(point);
    }

    void takeTriangle(SoCallbackAction& action, Vertex const& a, Vertex const& b, Vertex const& c) override
    {
        if (!isTurning())
            for (Vertex const* vertex : {&a, &b, &c})
                extend(action, *vertex);
        ++survey.triangles;
        survey.unlit += action.getLightModel() == SoLightModel::BASE_COLOR ? 1 : 0;
        survey.textured += picture().empty() ? 0 : 1;
        survey.turning += isTurning() ? 1 : 0;
        if (!picture().empty())
            survey.pictures.insert(picture());
    }

    void takeLine(SoCallbackAction& action, Vertex const& a, Vertex const& b) override
    {
        extend(action, a);
        extend(action, b);
        ++survey.lines;
    }

    void takePoint(SoCallbackAction& action, Vertex const& vertex) override
    {
        extend(action, vertex);
        ++survey.points;
    }

    SceneSurvey& survey;
};

} // namespace

SceneSurvey::SceneSurvey(SoNode* root)
{
    Counter(*this).goOver(root);
}
