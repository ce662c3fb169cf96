#include "support/ConvertedScene.h"

#include "support/SceneText.h"
#include "support/StreamCapture.h"

#include "parser/FltInput.h"

#include <Inventor/SbName.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoSeparator.h>

namespace
{

class MemoryInput final : public FltInput
{
public:
    MemoryInput(std::string text, std::string name) : bytes(std::move(text)), name(std::move(name))
    {
        directory = this->name.substr(0, this->name.rfind('/') + 1);
    }
    char* getBuffer() override { return bytes.data(); }
    long getSize() const override { return static_cast<long>(bytes.size()); }
    bool isInFlowCreated() const override { return true; }
    char const* getFileName() const override { return name.c_str(); }
    char const* getDirName() const override { return directory.empty() ? nullptr : directory.c_str(); }

private:
    std::string bytes;
    std::string name;
    std::string directory;
};

} // namespace

ConvertedScene::ConvertedScene(FltWriter const& flt, std::string const& fileName)
{
    convert(flt.bytes(), fileName);
}

ConvertedScene::ConvertedScene(std::string bytes, std::string const& fileName)
{
    convert(std::move(bytes), fileName);
}

void ConvertedScene::convert(std::string bytes, std::string const& fileName)
{
    root = new SoSeparator;
    root->ref();
    StreamCapture const out(std::cout);
    StreamCapture const err(std::cerr);
    {
        MemoryInput input(std::move(bytes), fileName);
        FltToInventor converter;
        converter.setFltInputToconvert(&input);
        converter.setResult(root);
        try {
            result = converter.convert();
        } catch (...) {
            release();
            throw;
        }
    }
    rootReferences = root->getRefCount() - 1;
    log = out.str();
    messages = err.str();
}

ConvertedScene::~ConvertedScene()
{
    release();
}

void ConvertedScene::release()
{
    while (root->getRefCount() > 1)
        root->unrefNoDelete();
    root->unref();
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
