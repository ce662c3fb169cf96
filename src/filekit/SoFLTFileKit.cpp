#include "filekit/SoFLTFileKit.h"

#include "loader/FltLoader.h"

#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodekits/SoNodeKit.h>
#include <Inventor/nodes/SoSeparator.h>
#include <algorithm>
#include <string>
#include <vector>

SO_KIT_SOURCE(SoFLTFileKit)

namespace
{

constexpr char scenePart[] = "topSeparator";

constexpr char source[] = "SoFLTFileKit::readFile";

/// Reports messages to the toolkit, the first of them one by one.
void report(std::vector<FltMessage> const& messages)
{
    constexpr std::size_t mostReported = 20;
    std::size_t const reported = std::min(messages.size(), mostReported);
    for (std::size_t i = 0; i < reported; ++i) {
        FltMessage const& message = messages[i];
        std::string const place =
            message.offset == -1 ? "" : " (at byte offset " + std::to_string(message.offset) + ")";
        SoDebugError::postWarning(source, "%s: %s%s", message.file.c_str(), message.text.c_str(),
                                  place.c_str());
    }
    if (reported < messages.size())
        SoDebugError::postWarning(source, "%d more messages left out",
                                  static_cast<int>(messages.size() - reported));
}

} // namespace

void SoFLTFileKit::initClass()
{
    if (classTypeId != SoType::badType())
        return;
    SoNodeKit::init(); // which does nothing a second time
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
    return fileName == nullptr || FltLoader::canLoad(fileName) ? TRUE : FALSE;
}

SbBool SoFLTFileKit::readFile(char const* fileName)
{
    if (fileName == nullptr || *fileName == '\0') {
        SoDebugError::post(source, "no file name was given");
        return FALSE;
    }
    try {
        FltScene const scene = FltLoader().load(fileName);
        report(scene.messages());
        return setAnyPart(scenePart, scene.root());
    } catch (FltLoadError const& problem) {
        SoDebugError::post(source, "%s", problem.what());
        return FALSE;
    }
}

SoSeparator* SoFLTFileKit::convert()
{
    return static_cast<SoSeparator*>(getAnyPart(scenePart, FALSE));
}
