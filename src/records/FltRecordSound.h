#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>
#include <map>
#include <memory>

class FltFieldDecoder;

/// A source of sound.
class FltRecordSound : public FltRecordOf<FltRecordSound, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::sound;
    static constexpr std::string_view title = "\n SOUND RECORD ";

    char idASCII[8] = {};
    std::int32_t reserved1 = 0;
    std::int32_t index = 0; ///< In the sound palette.
    std::int32_t reserved2 = 0;
    double origin[3] = {};
    float direction[3] = {};
    float amplitude = 0;
    float pitch = 0;
    float priority = 0;
    float falloff = 0;
    float width = 0;
    std::int32_t flags = 0;
    std::int32_t reserved3 = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::text(&self + 1));
        visit("reserved1", self.reserved1, dumpAs::nothing);
        visit("index", self.index);
        visit("reserved2", self.reserved2, dumpAs::nothing);
        visit("origin", self.origin, dumpAs::list(","));
        visit("direction", self.direction, dumpAs::list(","));
        visit("amplitude", self.amplitude);
        visit("pitch", self.pitch);
        visit("priority", self.priority);
        visit("falloff", self.falloff);
        visit("width", self.width);
        visit("flags", self.flags, dumpAs::pointer);
        visit("reserved3", self.reserved3, dumpAs::nothing);
    }
};

/// The file's table of sounds. It takes two records, one after the other: the factory has them meet in one
/// object, which is decoded once for each and keeps the length of the first.
///
/// The word at offset 4 says which half a record holds; any other value than these two leaves the object as
/// it is: 1 for the table of sounds, 2 for their names.
///
/// A count that the record has no room for is cut to what is there and reported.
class FltRecordSoundPalette : public PaletteFltRecord
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::soundPalette; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;

    /// Writes the half that each of the two low bits of `subType` asks for. Nothing sets them, so the title
    /// lines are all that is seen.
    std::ostream& properties(std::ostream& os) const override;

    /// Takes one half. The bytes are bounded by the length word in @p data, since the object's own length is
    /// that of the record it was made for. A table adds to the sounds of an earlier one; names replace the
    /// earlier ones.
    void getPropertiesFromData(char* data) override;

    std::int32_t subType = 0; ///< Which halves to dump: bit 0 the table, bit 1 the names. No decoder sets it.
    std::int32_t maxNumber = 0;
    std::int32_t actualNumber = 0; ///< Entries of the last table.
    std::int32_t totalLength = 0;
    std::int32_t reserved[3] = {};
    std::map<int, int> fileNameOffset;  ///< Where in `packedData` the file name of a sound stands, by index.
    std::int32_t dataLength = 0;        ///< Bytes of `packedData`.
    std::unique_ptr<char[]> packedData; ///< The names and a zero after them; null until decoded.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit.skip(4); // which half it is
        auto const half = visit.place();
        tableFields(self, visit);
        visit.goTo(half);
        namesFields(self, visit);
        if constexpr (Visitor::lists)
            for (auto const& [index, offset] : self.fileNameOffset) {
                visit.openElement("sounds");
                visit.number("index", index);
                visit.number("fileNameOffset", offset);
                visit.close();
            }
        visit.bytes("packedData", self.packedData.get(), static_cast<unsigned int>(self.dataLength));
    }

private:
    template <class Self, class Visitor>
    static void tableFields(Self& self, Visitor& visit)
    {
        visit("maxNumber", self.maxNumber, "maxNumber : ");
        visit("actualNumber", self.actualNumber, "actualNumber : ");
        visit("totalLength", self.totalLength, "totalLength : ");
        visit("reserved", self.reserved, dumpAs::nothing);
    }
    template <class Self, class Visitor>
    static void namesFields(Self& self, Visitor& visit)
    {
        visit("dataLength", self.dataLength, "dataLength : ");
    }
    void getTableFromData(FltFieldDecoder& decoder, int size);
    void getNamesFromData(FltFieldDecoder& decoder, int size);
};
