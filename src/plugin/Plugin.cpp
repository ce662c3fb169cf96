#include "plugin/Plugin.h"

#include "convert/FltToInventor.h"

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
