#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// A control record of four bytes, opcode and length. Any other length leaves a message at level 1 in the
/// console and is otherwise as good.
class AbstractControlRecord : public ControlFltRecord
{
public:
    explicit AbstractControlRecord(unsigned int length);

    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    template <class Self, class Visitor>
    static void fields(Self& /*self*/, Visitor& /*visit*/)
    {
    }
};

/// Opens a level: what follows stands below the record before.
class FltRecordPushLevel : public AbstractControlRecord
{
public:
    using AbstractControlRecord::AbstractControlRecord;
    int getOpcode() const override { return FltOpcode::pushLevel; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
};

/// Closes a level.
class FltRecordPopLevel : public AbstractControlRecord
{
public:
    using AbstractControlRecord::AbstractControlRecord;
    int getOpcode() const override { return FltOpcode::popLevel; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
};

/// Opens a level of faces that lie upon the face before.
class FltRecordPushSubface : public AbstractControlRecord
{
public:
    using AbstractControlRecord::AbstractControlRecord;
    int getOpcode() const override { return FltOpcode::pushSubface; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
};

/// Closes a sub-face level.
class FltRecordPopSubface : public AbstractControlRecord
{
public:
    using AbstractControlRecord::AbstractControlRecord;
    int getOpcode() const override { return FltOpcode::popSubface; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
};

/// A control record of an extension.
///
/// Its length is tested against 4 as that of the other control records, so every one leaves a message at
/// level 1.
class AbstractExtensionControlRecord : public ControlFltRecord
{
public:
    explicit AbstractExtensionControlRecord(unsigned int length);

    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
class FltRecordPushExtension : public AbstractExtensionControlRecord
{
public:
    using AbstractExtensionControlRecord::AbstractExtensionControlRecord;
    int getOpcode() const override { return FltOpcode::pushExtension; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
};

/// Closes a level of extension records.
class FltRecordPopExtension : public AbstractExtensionControlRecord
{
public:
    using AbstractExtensionControlRecord::AbstractExtensionControlRecord;
    int getOpcode() const override { return FltOpcode::popExtension; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
};

/// A record of the instancing of a subtree.
class AbstractInstanceRecord : public ControlFltRecord
{
public:
    using ControlFltRecord::ControlFltRecord;

    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
class FltRecordInstanceReference : public AbstractInstanceRecord
{
public:
    using AbstractInstanceRecord::AbstractInstanceRecord;
    int getOpcode() const override { return FltOpcode::instanceReference; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
};

/// Gives the level after it a number, under which references find it.
class FltRecordInstanceDefinition : public AbstractInstanceRecord
{
public:
    using AbstractInstanceRecord::AbstractInstanceRecord;
    int getOpcode() const override { return FltOpcode::instanceDefinition; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
};
