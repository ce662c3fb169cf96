#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>
#include <memory>

class FltDump;

/// A node whose masks tell which of its children are shown.
///
/// The counts are kept as they stand in the file, whatever the record really holds: maskWordCount says how
/// many words there are. Words that the counts promise and the record's length doesn't hold are reported as
/// damage. The product of the counts wraps around in 32 bits; a negative one throws
/// std::bad_array_new_length.
class FltRecordSwitch : public FltRecordOf<FltRecordSwitch, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::switchNode;
    static constexpr std::string_view title = "\n SWITCH RECORD ";

    char idASCII[8] = {}; ///< Not terminated when it fills its eight characters.
    std::int32_t reserved = 0;
    std::int32_t indexOfCurrentMask = 0;
    std::int32_t numberOf32BitWordsPerMask = 0; ///< Before numberOfMasks here, after it in the file.
    std::int32_t numberOfMasks = 0;
    int maskWordCount = 0;                 ///< Words in masks.
    std::unique_ptr<std::int32_t[]> masks; ///< Null before the record is decoded.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        headFields(self, visit);
        if constexpr (Visitor::decodes)
            self.makeRoomForMasks();
        visit.values("masks", self.masks.get(), self.maskWordCount);
        if constexpr (Visitor::dumps)
            self.dumpMasks(visit.dump);
    }

protected:
    /// What stands before the masks.
    template <class Self, class Visitor>
    static void headFields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::text(&self + 1));
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("indexOfCurrentMask", self.indexOfCurrentMask);
        visit("numberOfMasks", self.numberOfMasks);
        visit("numberOf32BitWordsPerMask", self.numberOf32BitWordsPerMask);
    }

private:
    void makeRoomForMasks();
    void dumpMasks(FltDump& dump) const;
};

/// The head of a switch alone: its masks follow as words, as many as are there. For readers that have to go
/// on whatever the counts say. No record of the factory.
class FltRecordSwitchHead : public FltRecordSwitch
{
public:
    using FltRecordSwitch::FltRecordSwitch;

    /// A word of a mask. Bit 0 of the first is the first child.
    struct MaskWord {
        std::uint32_t bits = 0;

        template <class Self, class Visitor>
        static void fields(Self& self, Visitor& visit)
        {
            visit("bits", self.bits);
        }
    };

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        headFields(self, visit);
    }
};
