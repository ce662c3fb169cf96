#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// A control record of four bytes, opcode and length. Any other length leaves a message at level 1 in the
/// console and is otherwise as good.
class AbstractControlRecord : public ControlFltRecord
{
public:
    explicit AbstractControlRecord(unsigned int length);

    template <class Self, class Visitor>
    static void fields(Self& /*self*/, Visitor& /*visit*/)
    {
    }
};

/// Opens a level: what follows stands below the record before.
class FltRecordPushLevel : public FltRecordOf<FltRecordPushLevel, AbstractControlRecord>
{
public:
    using FltRecordOf::FltRecordOf;
    static constexpr int opcode = FltOpcode::pushLevel;
    static constexpr std::string_view title = "\n PUSH LEVEL RECORD ";
};

/// Closes a level.
class FltRecordPopLevel : public FltRecordOf<FltRecordPopLevel, AbstractControlRecord>
{
public:
    using FltRecordOf::FltRecordOf;
    static constexpr int opcode = FltOpcode::popLevel;
    static constexpr std::string_view title = "\n POP LEVEL RECORD ";
};

/// Opens a level of faces that lie upon the face before.
class FltRecordPushSubface : public FltRecordOf<FltRecordPushSubface, AbstractControlRecord>
{
public:
    using FltRecordOf::FltRecordOf;
    static constexpr int opcode = FltOpcode::pushSubface;
    static constexpr std::string_view title = "\n PUSH SUBFACE RECORD ";
};

/// Closes a sub-face level.
class FltRecordPopSubface : public FltRecordOf<FltRecordPopSubface, AbstractControlRecord>
{
public:
    using FltRecordOf::FltRecordOf;
    static constexpr int opcode = FltOpcode::popSubface;
    static constexpr std::string_view title = "\n POP SUBFACE RECORD ";
};

/// A control record of an extension.
///
/// Its length is tested against 4 as that of the other control records, so every one leaves a message at
/// level 1.
class AbstractExtensionControlRecord : public ControlFltRecord
{
public:
    explicit AbstractExtensionControlRecord(unsigned int length);

    char reserved1[8] = {};
    char reserved2[8] = {};
    char reserved3[2] = {};
    std::uint16_t vertexReferenceIndex = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved1", self.reserved1, dumpAs::nothing);
        visit("reserved2", self.reserved2, dumpAs::nothing);
        visit("reserved3", self.reserved3, dumpAs::nothing);
        visit("vertexReferenceIndex", self.vertexReferenceIndex);
    }
};

/// Opens a level of extension records.
class FltRecordPushExtension : public FltRecordOf<FltRecordPushExtension, AbstractExtensionControlRecord>
{
public:
    using FltRecordOf::FltRecordOf;
    static constexpr int opcode = FltOpcode::pushExtension;
    static constexpr std::string_view title = "\n PUSH EXTENSION RECORD ";
};

/// Closes a level of extension records.
class FltRecordPopExtension : public FltRecordOf<FltRecordPopExtension, AbstractExtensionControlRecord>
{
public:
    using FltRecordOf::FltRecordOf;
    static constexpr int opcode = FltOpcode::popExtension;
    static constexpr std::string_view title = "\n POP EXTENSION RECORD ";
};

/// A record of the instancing of a subtree.
class AbstractInstanceRecord : public ControlFltRecord
{
public:
    using ControlFltRecord::ControlFltRecord;

    std::int16_t spare = 0;
    std::int16_t instanceDefinitionNumber = 0; ///< Which definition is meant.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("spare", self.spare);
        visit("instanceDefinitionNumber", self.instanceDefinitionNumber);
    }
};

/// Places what an instance definition holds.
class FltRecordInstanceReference : public FltRecordOf<FltRecordInstanceReference, AbstractInstanceRecord>
{
public:
    using FltRecordOf::FltRecordOf;
    static constexpr int opcode = FltOpcode::instanceReference;
    static constexpr std::string_view title = "\n INSTANCE REFERENCE RECORD ";
};

/// Gives the level after it a number, under which references find it.
class FltRecordInstanceDefinition : public FltRecordOf<FltRecordInstanceDefinition, AbstractInstanceRecord>
{
public:
    using FltRecordOf::FltRecordOf;
    static constexpr int opcode = FltOpcode::instanceDefinition;
    static constexpr std::string_view title = "\n INSTANCE DEFINITION RECORD ";
};
