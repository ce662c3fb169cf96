#pragma once

#include "records/FltFields.h"
#include "records/FltRecordOf.h"

/// What FltRecordOf declares, for the sources of the record classes.

template <class Record, class Base>
std::ostream& FltRecordOf<Record, Base>::nameOpcodeAndLength(std::ostream& os) const
{
    return this->titleOpcodeAndLength(os, Record::title);
}

template <class Record, class Base>
std::ostream& FltRecordOf<Record, Base>::properties(std::ostream& os) const
{
    return FltFields::dump(static_cast<Record const&>(*this), os);
}

template <class Record, class Base>
void FltRecordOf<Record, Base>::getPropertiesFromData(char* data)
{
    FltFields::decode(static_cast<Record&>(*this), data);
}
