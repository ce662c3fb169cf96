#include "records/FltRecordControl.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltRecordDefinition.h"

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

AbstractExtensionControlRecord::AbstractExtensionControlRecord(unsigned int length) : ControlFltRecord(length)
{
    testLength(length);
}

template class FltRecordOf<FltRecordPushLevel, AbstractControlRecord>;
template class FltRecordOf<FltRecordPopLevel, AbstractControlRecord>;
template class FltRecordOf<FltRecordPushSubface, AbstractControlRecord>;
template class FltRecordOf<FltRecordPopSubface, AbstractControlRecord>;
template class FltRecordOf<FltRecordPushExtension, AbstractExtensionControlRecord>;
template class FltRecordOf<FltRecordPopExtension, AbstractExtensionControlRecord>;
template class FltRecordOf<FltRecordInstanceReference, AbstractInstanceRecord>;
template class FltRecordOf<FltRecordInstanceDefinition, AbstractInstanceRecord>;
