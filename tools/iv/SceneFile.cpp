#include "iv/SceneFile.h"

#include "iv/SceneStream.h"
#include "support/SceneNodes.h"

#include "toolkit/SceneWriter.h"
#include "toolkit/SoErrorRedirect.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/VRMLnodes/SoVRMLGroup.h>
#include <Inventor/actions/SoToVRML2Action.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodes/SoNode.h>
#include <algorithm>
#include <cctype>
#include <string>

namespace
{

/// While a node for VRML is made, the toolkit looks for the picture that it names, and from the wrong
/// directory: one that isn't found isn't reported as long as this object lives.
class NamedPicturesPassedOver
{
private:
    static void passOn(SoError const* error, void* self)
    {
        auto const& passedOver = *static_cast<NamedPicturesPassedOver*>(self);
        if (error->getDebugString().find("SoVRMLImageTexture") < 0)
            passedOver.before(error, passedOver.data);
    }

    SoErrorCB* before = SoDebugError::getHandlerCallback();
    void* data = SoDebugError::getHandlerData();
    SoErrorRedirect<SoDebugError> const redirect{passOn, this};
};

/// Numbers after the names of nodes are parted from them by a character that readers of VRML take in names.
class PlainNumbers
{
public:
    PlainNumbers() { SoBase::setInstancePrefix("_"); }
    ~PlainNumbers() { SoBase::setInstancePrefix("+"); }

    PlainNumbers(PlainNumbers const&) = delete;
    PlainNumbers& operator=(PlainNumbers const&) = delete;
};

/// An output in which texts are such as readers of VRML take: in one line each.
class VrmlOutput : public SceneWriter::Output
{
public:
    using SceneWriter::Output::write;
    void write(SbString const& text) override
    {
        std::string plain;
        for (char const* character = text.getString(); *character != '\0'; ++character) {
            bool const isControl = static_cast<unsigned char>(*character) < ' ';
            plain += *character == '\\' ? "\\\\" : std::string(1, isControl ? ' ' : *character);
        }
        SceneWriter::Output::write(SbString(plain.c_str()));
    }
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
    NamedPicturesPassedOver const passedOver;
    SoToVRML2Action action;
    action.apply(root);
    return SoNodeRef<SoNode>(action.getVRML2SceneGraph());
}

void writeVrml(SoNode* root, FILE* stream)
{
    PlainNumbers const plainNumbers;
    VrmlOutput output;
    output.setFilePointer(stream);
    makeNamesPlain(root);
    SceneWriter::makePlain(root);
    SoNodeRef<SoNode> const vrml = vrmlOf(root);
    output.setHeaderString("#VRML V2.0 utf8");
    SceneWriter::write(vrml.get(), output);
}

void writeInventor(SoNode* root, FILE* stream, bool isBinary)
{
    SceneWriter::Output output;
    output.setFilePointer(stream);
    output.setBinary(isBinary);
    SceneWriter::write(root, output);
}

} // namespace

std::uint64_t SceneFile::write(SoNode* root, FILE* stream, SceneForm const& form)
{
    SceneStream between(stream, form.isCompressed);
    if (form.isVrml)
        writeVrml(root, between.stream());
    else
        writeInventor(root, between.stream(), form.isBinary);
    return between.finish();
}

std::uint64_t SceneFile::write(FltVrmlWriter& vrml, FltVrmlWriter::AddressOf const& addressOf, FILE* stream,
                               SceneForm const& form)
{
    SceneStream between(stream, form.isCompressed);
    vrml.write(between.stream(), addressOf);
    return between.finish();
}
