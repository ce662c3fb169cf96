#include "toolkit/SoInputReader.h"

#include <Inventor/SoDB.h>
#include <Inventor/lists/SoTypeList.h>
#include <memory>

SoType SoInputReader::m_classTypeId = SoType::badType();

SoInputReader::~SoInputReader() = default;

void SoInputReader::initClass()
{
    if (m_classTypeId != SoType::badType())
        return;
    if (!SoDB::isInitialized())
        SoDB::init();
    m_classTypeId = SoType::createType(SoType::badType(), "InputReader");
}

SoType SoInputReader::getClassTypeId()
{
    return m_classTypeId;
}

SoInputReader* SoInputReader::createReaderFor(SoInput* in)
{
    if (m_classTypeId == SoType::badType())
        return nullptr;
    SoTypeList types;
    SoType::getAllDerivedFrom(m_classTypeId, types);
    for (int i = 0; i < types.getLength(); ++i) {
        SoType const type = types[i];
        if (!type.canCreateInstance())
            continue;
        std::unique_ptr<SoInputReader> reader(static_cast<SoInputReader*>(type.createInstance()));
        if (reader != nullptr && reader->canConvert(in))
            return reader.release();
    }
    return nullptr;
}
