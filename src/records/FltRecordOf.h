#pragma once

#include "records/AbstractFltRecord.h"

#include <string_view>

/// A record class that has its opcode, its title and its layout, and nothing else to decode or dump:
///
///     class FltRecordComment : public FltRecordOf<FltRecordComment, AncillaryFltRecord>
///     {
///     public:
///         using FltRecordOf::FltRecordOf;
///         static constexpr int opcode = FltOpcode::comment;
///         static constexpr std::string_view title = "\n COMMENT RECORD "; // the first line of the dump
///
/// FltFields.h has the words of layouts. The family's source says
///
///     template class FltRecordOf<FltRecordComment, AncillaryFltRecord>;
///
/// with FltRecordDefinition.h, so that each layout becomes code in one place.
template <class Record, class Base>
class FltRecordOf : public Base
{
public:
    using Base::Base;

    int getOpcode() const override { return Record::opcode; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;
};
