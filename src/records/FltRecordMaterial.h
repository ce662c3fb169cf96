#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"
#include "records/FltVersion.h"

#include <cstdint>
#include <iterator>

/// One entry of the material table.
class FltRecordMaterial : public FltRecordOf<FltRecordMaterial, PaletteFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::material;
    static constexpr std::string_view title = "\n MATERIAL PALETTE RECORD ";

    /// Bit 31 of the flags: set, the dump says that the material isn't used.
    bool isNotUsed() const { return (flags & INT32_MIN) != 0; }

    std::int32_t index = 0; ///< Slot in the material table.
    char name[12] = {};     ///< Without a zero if it takes all of its room.
    std::int32_t flags = 0;
    float ambient[3] = {}; ///< Red, green, blue from 0 to 1, as the three after it.
    float diffuse[3] = {};
    float specular[3] = {};
    float emissive[3] = {};
    float shininess = 0; ///< From 0 to 128.
    float alpha = 0;     ///< 1 is opaque.
    std::int32_t reserved = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("index", self.index);
        visit("name", self.name, dumpAs::text("name : ", &self.reserved + 1));
        visit("flags", self.flags, dumpAs::nothing);
        if constexpr (Visitor::dumps)
            visit.dump.text("flags: material IS ", self.isNotUsed() ? "NOT used" : "used");
        visit("ambient", self.ambient, dumpAs::list(" ", "ambient  (RGB) : "));
        visit("diffuse", self.diffuse, dumpAs::list(" ", "diffuse  (RGB) : "));
        visit("specular", self.specular, dumpAs::list(" ", "specular (RGB) : "));
        visit("emissive", self.emissive, dumpAs::list(" ", "emissive (RGB) : "));
        visit("shininess", self.shininess, "shininess      : ");
        visit("alpha", self.alpha, "alpha          : ");
        visit("reserved", self.reserved, dumpAs::nothing);
    }
};

/// The whole material table of an old file. Below revision 14 a material has no name: its first byte is zero
/// after decoding.
class FltRecordOLDMaterialPalette : public FltRecordOf<FltRecordOLDMaterialPalette, PaletteFltRecord>,
                                    public FltVersion
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::oldMaterialPalette;
    static constexpr std::string_view title = "\n OLD MATERIAL PALETTE RECORD (OBSOLETE)";

    /// One material. The fields mean what they do in FltRecordMaterial, but for the flag.
    struct Entry {
        float ambientRed = 0;
        float ambientGreen = 0;
        float ambientBlue = 0;
        float diffuseRed = 0;
        float diffuseGreen = 0;
        float diffuseBlue = 0;
        float specularRed = 0;
        float specularGreen = 0;
        float specularBlue = 0;
        float emissiveRed = 0;
        float emissiveGreen = 0;
        float emissiveBlue = 0;
        float shininess = 0;
        float alpha = 0;
        std::int32_t flags = 0;
        char name[12] = {};
        char spare[112] = {};
    };

    static constexpr int entryCount = 64;
    static constexpr int oldestRevisionWithNames = 14;

    Entry entries[entryCount];

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        int index = 0;
        for (auto& entry : self.entries) {
            visit.openElement("entries");
            visit.show(" Material at index: ", index++);
            visit("ambientRed", entry.ambientRed, " ambientRed: ");
            visit("ambientGreen", entry.ambientGreen, " ambientGreen : ");
            visit("ambientBlue", entry.ambientBlue, " ambientBlue: ");
            visit("diffuseRed", entry.diffuseRed, " diffuseRed: ");
            visit("diffuseGreen", entry.diffuseGreen, " diffuseGreen: ");
            visit("diffuseBlue", entry.diffuseBlue, " diffuseBlue: ");
            visit("specularRed", entry.specularRed, " specularRed : ");
            visit("specularGreen", entry.specularGreen, " specularGreen: ");
            visit("specularBlue", entry.specularBlue, " specularBlue: ");
            visit("emissiveRed", entry.emissiveRed, " emissiveRed: ");
            visit("emissiveGreen", entry.emissiveGreen, " emissiveGreen: ");
            visit("emissiveBlue", entry.emissiveBlue, " emissiveBlue: ");
            visit("shininess", entry.shininess);
            visit("alpha", entry.alpha);
            visit("flags", entry.flags, dumpAs::heading);
            visit.flag("materialUsed", static_cast<std::uint32_t>(entry.flags), 31, "      material used: ");
            if (visit.from(self.revision, oldestRevisionWithNames)) {
                visit("name", entry.name, dumpAs::text("name : ", std::end(self.entries)));
            } else {
                visit("name", entry.name, dumpAs::nothing);
                visit.preset(entry.name[0], '\0');
            }
            visit("spare", entry.spare, dumpAs::nothing);
            visit.close();
        }
    }
};
