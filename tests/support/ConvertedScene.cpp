#include "support/ConvertedScene.h"

#include "support/MemoryInput.h"
#include "support/SceneText.h"

#include <Inventor/SbName.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoSeparator.h>

ConvertedScene::ConvertedScene(FltWriter const& flt, std::string const& fileName)
    : ConvertedScene(flt.bytes(), fileName)
{
}

ConvertedScene::ConvertedScene(std::string bytes, std::string const& fileName, CaptureBuffer::Kept keptLog)
    : held(new SoSeparator)
{
    StreamCapture const out(std::cout, keptLog);
    StreamCapture const err(std::cerr);
    {
        MemoryInput input(std::move(bytes), fileName);
        FltToInventor converter;
        converter.setFltInputToconvert(&input);
        converter.setResult(root);
        result = converter.convert();
    }
    rootReferences = held.getReferences();
    log = out.str();
    logSize = out.size();
    messages = err.str();
}

std::string ConvertedScene::text() const
{
    return sceneText(root);
}

SoNode* ConvertedScene::find(std::string const& name) const
{
    SoSearchAction search;
    search.setName(SbName(name.c_str()));
    search.setSearchingAll(TRUE);
    search.apply(root);
    return search.getPath() != nullptr ? search.getPath()->getTail() : nullptr;
}

std::string rootWith(std::string const& children)
{
    return "DEF root Separator {\n  ShapeHints {\n    vertexOrdering COUNTERCLOCKWISE\n    shapeType SOLID\n "
           " }\n"
           "  TextureCoordinateBinding {\n    value PER_VERTEX_INDEXED\n  }\n"
           "  NormalBinding {\n    value PER_VERTEX_INDEXED\n  }\n" +
           children + "}\n";
}
