#include "records/FltRecordControl.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltFields.h"

namespace
{

void testLength(unsigned int length)
{
    if (length != 4)
        FltWarningMessageConsole::notifyMessage("WARNING ! this ControlRecord hasn t the correct length !", 1,
                                                false);
}

} // namespace

AbstractControlRecord::AbstractControlRecord(unsigned int length) : ControlFltRecord(length)
{
    testLength(length);
}

void AbstractControlRecord::getPropertiesFromData(char* /*data*/) {}

std::ostream& AbstractControlRecord::properties(std::ostream& os) const
{
    return nameOpcodeAndLength(os);
}

std::ostream& FltRecordPushLevel::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n PUSH LEVEL RECORD ");
}

std::ostream& FltRecordPopLevel::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n POP LEVEL RECORD ");
}

std::ostream& FltRecordPushSubface::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n PUSH SUBFACE RECORD ");
}

std::ostream& FltRecordPopSubface::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n POP SUBFACE RECORD ");
}

AbstractExtensionControlRecord::AbstractExtensionControlRecord(unsigned int length) : ControlFltRecord(length)
{
    testLength(length);
}

void AbstractExtensionControlRecord::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& AbstractExtensionControlRecord::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordPushExtension::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n PUSH EXTENSION RECORD ");
}

std::ostream& FltRecordPopExtension::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n POP EXTENSION RECORD ");
}

void AbstractInstanceRecord::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& AbstractInstanceRecord::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordInstanceReference::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n INSTANCE REFERENCE RECORD ");
}

std::ostream& FltRecordInstanceDefinition::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n INSTANCE DEFINITION RECORD ");
}
