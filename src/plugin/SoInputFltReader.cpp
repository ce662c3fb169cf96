#include "plugin/SoInputFltReader.h"

#include "convert/FltToInventor.h"
#include "toolkit/SbFileHelper.h"
#include "toolkit/SoInputQueries.h"

namespace
{

constexpr char className[] = "InputFltReader";

} // namespace

SoType SoInputFltReader::m_classTypeId = SoType::badType();
int SoInputFltReader::m_isFirstTime = 1;

SoInputFltReader::~SoInputFltReader() = default;

void SoInputFltReader::initClass()
{
    if (m_isFirstTime == 0)
        return;
    if (SoInputReader::getClassTypeId() == SoType::badType())
        SoInputReader::initClass();
    m_classTypeId = SoType::createType(SoInputReader::getClassTypeId(), className,
                                       [] { return createFromSoType(nullptr); });
    m_isFirstTime = 0;
}

void SoInputFltReader::exitClass()
{
    if (m_isFirstTime != 0)
        return;
    SoType::removeType(className);
    m_classTypeId = SoType::badType();
    m_isFirstTime = 1;
}

void* SoInputFltReader::createFromSoType(SoType* /*type*/)
{
    return static_cast<SoInputReader*>(new SoInputFltReader);
}

SoType SoInputFltReader::getClassTypeId()
{
    return m_classTypeId;
}

SoType SoInputFltReader::getTypeId() const
{
    return m_classTypeId;
}

bool SoInputFltReader::canConvert(SoInput* in)
{
    if (!SoInputQueries::isReadingHeader(in) && !SoInputQueries::isValid(in))
        return false;
    if (FILE* const file = SoInputQueries::getCurFile(in))
        return isOpenFlight(file);
    SbString const name = SoInputQueries::getCurFileName(in);
    return SbFileHelper::getExtension(name).lower() == "flt" && isOpenFlight(name.getString());
}

SoSeparator* SoInputFltReader::convert(SoInput* in)
{
    return FltToInventor::convertFromFile(SoInputQueries::getCurFileNameAsText(in));
}

bool SoInputFltReader::isOpenFlight(FILE* file)
{
    unsigned char b[62] = {};
    if (std::fseek(file, 0, SEEK_SET) != 0 || std::fread(b, 1, sizeof b, file) != sizeof b)
        return false;
    bool const header = b[0] == 0 && b[1] == 1;
    bool const smallRevision = b[12] == 0 && b[13] == 0;
    bool const oldRevision = b[14] == 0 && b[15] >= 11 && b[15] <= 14;
    bool const newRevision = b[14] >= 5 && b[14] <= 8;
    bool const plainUnits = b[60] == 0 && b[61] == 1;
    return header && smallRevision && (oldRevision || newRevision) && plainUnits;
}

bool SoInputFltReader::isOpenFlight(char const* fileName)
{
    FILE* const file = SbFileHelper::open(fileName, "r");
    if (file == nullptr)
        return false;
    bool const answer = isOpenFlight(file);
    SbFileHelper::close(file);
    return answer;
}
