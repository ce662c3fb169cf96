#include "iv/SceneFile.h"

#include "iv/SceneStream.h"
#include "iv/VrmlCopies.h"
#include "support/SceneNodes.h"

#include "toolkit/SceneWriter.h"
#include "toolkit/SoErrorRedirect.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/VRMLnodes/SoVRMLGroup.h>
#include <Inventor/VRMLnodes/SoVRMLInline.h>
#include <Inventor/actions/SoToVRML2Action.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodes/SoNode.h>
#include <algorithm>
#include <cctype>
#include <string>

namespace
{

/// While a node for VRML is made, the toolkit opens the file that it names, and looks for it from the wrong
/// directory: inlined files aren't opened as long as this object lives, and pictures that aren't found aren't
/// reported.
class NamedFilesPassedOver
{
public:
    NamedFilesPassedOver()
    {
        SoVRMLInline::setReadAsSoFile(FALSE);
        SoVRMLInline::setFetchURLCallBack([](SbString const&, void*, SoVRMLInline*) {}, nullptr);
    }
    ~NamedFilesPassedOver()
    {
        SoVRMLInline::setReadAsSoFile(TRUE);
        SoVRMLInline::setFetchURLCallBack(nullptr, nullptr);
    }

    NamedFilesPassedOver(NamedFilesPassedOver const&) = delete;
    NamedFilesPassedOver& operator=(NamedFilesPassedOver const&) = delete;

private:
    static void passOn(SoError const* error, void* self)
    {
        if (error->getDebugString().find("SoVRMLImageTexture") < 0)
            static_cast<NamedFilesPassedOver*>(self)->before(error,
                                                             static_cast<NamedFilesPassedOver*>(self)->data);
    }

    SoErrorCB* before = SoDebugError::getHandlerCallback();
    void* data = SoDebugError::getHandlerData();
    SoErrorRedirect<SoDebugError> const redirect{passOn, this};
};

bool isPlainCharacter(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

/// Takes characters out of the nodes' names that readers of VRML stumble over.
void makeNamesPlain(SoNode* root)
{
    SceneNodes::forEach(root, [](SoNode& node) {
        std::string name = node.getName().getString();
        if (std::all_of(name.begin(), name.end(), isPlainCharacter))
            return;
        std::replace_if(
            name.begin(), name.end(), [](char character) { return !isPlainCharacter(character); }, '_');
        node.setName(name.c_str());
    });
}

SoNodeRef<SoNode> vrmlOf(SoNode* root)
{
    NamedFilesPassedOver const passedOver;
    SoToVRML2Action action;
    action.apply(root);
    return SoNodeRef<SoNode>(action.getVRML2SceneGraph());
}

void writeVrml(SoNode* root, SoOutput& output)
{
    makeNamesPlain(root);
    SceneWriter::makePlain(root);
    VrmlCopies const copies(root);
    SoNodeRef<SoNode> const vrml = vrmlOf(root);
    copies.addTo(vrml.get());
    output.setHeaderString("#VRML V2.0 utf8");
    SceneWriter::write(vrml.get(), output);
}

void writeScene(SoNode* root, FILE* stream, SceneForm const& form)
{
    SceneWriter::Output output;
    output.setFilePointer(stream);
    output.setBinary(form.isBinary);
    if (form.isVrml)
        writeVrml(root, output);
    else
        SceneWriter::write(root, output);
}

} // namespace

std::uint64_t SceneFile::write(SoNode* root, FILE* stream, SceneForm const& form)
{
    SceneStream between(stream, form.isCompressed);
    writeScene(root, between.stream(), form);
    return between.finish();
}
