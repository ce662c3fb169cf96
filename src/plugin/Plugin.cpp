#include "plugin/Plugin.h"

#include "convert/FltToInventor.h"
#include "plugin/SoInputFltReader.h"

void initPlugin()
{
    return SoInputFltReader::initClass();
}

void exitPlugin()
{
    SoInputFltReader::exitClass();
}

char const* getProductName()
{
    return FltToInventor::getProductNameString();
}

char const* getVersion()
{
    return FltToInventor::getVersionString();
}

SoSeparator* convertFrom(char const* fileName)
{
    return FltToInventor::convertFromFile(fileName);
}
