#include "filekit/SoFLTFileKit.h"

#include "filekit/FltSceneLoader.h"
#include "plugin/SoInputFltReader.h"

#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodekits/SoNodeKit.h>
#include <Inventor/nodes/SoSeparator.h>
#include <exception>

SO_KIT_SOURCE(SoFLTFileKit)

namespace
{

constexpr char scenePart[] = "topSeparator";

void report(char const* fileName, char const* problem)
{
    SoDebugError::post("SoFLTFileKit::readFile", "%s: %s", fileName, problem);
}

} // namespace

void SoFLTFileKit::initClass()
{
    if (classTypeId != SoType::badType())
        return;
    if (SoForeignFileKit::getClassTypeId() == SoType::badType())
        SoNodeKit::init();
    SO_KIT_INIT_CLASS(SoFLTFileKit, SoForeignFileKit, "ForeignFileKit");
    registerFileExtension(classTypeId, "flt", [](char const*) -> SbBool { return TRUE; });
}

SoFLTFileKit::SoFLTFileKit()
{
    SO_KIT_CONSTRUCTOR(SoFLTFileKit);
    SO_KIT_INIT_INSTANCE();
}

SoFLTFileKit::~SoFLTFileKit() = default;

SbBool SoFLTFileKit::canReadFile(char const* fileName) const
{
    return fileName == nullptr || SoInputFltReader::isOpenFlight(fileName) ? TRUE : FALSE;
}

SbBool SoFLTFileKit::readFile(char const* fileName)
{
    if (fileName == nullptr || *fileName == '\0') {
        SoDebugError::post("SoFLTFileKit::readFile", "no file name was given");
        return FALSE;
    }
    SoSeparator* root = nullptr;
    try {
        root = FltSceneLoader::load(fileName);
    } catch (std::exception const& problem) {
        report(fileName, problem.what());
        return FALSE;
    }
    if (root == nullptr) {
        report(fileName, "cannot be read as an OpenFlight database");
        return FALSE;
    }
    SbBool const taken = setAnyPart(scenePart, root);
    root->unref();
    return taken;
}

SoSeparator* SoFLTFileKit::convert()
{
    return static_cast<SoSeparator*>(getAnyPart(scenePart, FALSE));
}
