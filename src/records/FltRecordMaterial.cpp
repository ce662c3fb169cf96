#include "records/FltRecordMaterial.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

#include <iterator>

namespace
{

constexpr int oldestRevisionWithNames = 14;

void getEntryThenDecal(FltRecordOLDMaterialPalette::Entry* out, char*& cursor)
{
    FltUtils::getFloat32ValueThenDecal(&out->ambientRed, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->ambientGreen, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->ambientBlue, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->diffuseRed, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->diffuseGreen, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->diffuseBlue, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->specularRed, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->specularGreen, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->specularBlue, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->emissiveRed, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->emissiveGreen, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->emissiveBlue, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->shininess, cursor);
    FltUtils::getFloat32ValueThenDecal(&out->alpha, cursor);
    FltUtils::getInt32ValueThenDecal(&out->flags, cursor);
    FltUtils::getBytesThenDecal(out->name, sizeof out->name, cursor);
    FltUtils::getBytesThenDecal(out->spare, sizeof out->spare, cursor);
}

} // namespace

std::ostream& FltRecordMaterial::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n MATERIAL PALETTE RECORD ");
}

void FltRecordMaterial::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&index, cursor);
    FltUtils::getBytesThenDecal(name, sizeof name, cursor);
    FltUtils::getInt32ValueThenDecal(&flags, cursor);
    FltUtils::getFloat32ValuesThenDecal(ambient, 3, cursor);
    FltUtils::getFloat32ValuesThenDecal(diffuse, 3, cursor);
    FltUtils::getFloat32ValuesThenDecal(specular, 3, cursor);
    FltUtils::getFloat32ValuesThenDecal(emissive, 3, cursor);
    FltUtils::getFloat32ValueThenDecal(&shininess, cursor);
    FltUtils::getFloat32ValueThenDecal(&alpha, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
}

std::ostream& FltRecordMaterial::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "index: ", index);
    FltDump::text(os, "name : ", name, &reserved + 1);
    FltDump::line(os, "flags: material IS ", (flags & INT32_MIN) != 0 ? "NOT used" : "used");
    FltDump::list(os, "ambient  (RGB) : ", ambient, 3, " ");
    FltDump::list(os, "diffuse  (RGB) : ", diffuse, 3, " ");
    FltDump::list(os, "specular (RGB) : ", specular, 3, " ");
    FltDump::list(os, "emissive (RGB) : ", emissive, 3, " ");
    FltDump::line(os, "shininess      : ", shininess);
    FltDump::line(os, "alpha          : ", alpha);
    return os;
}

std::ostream& FltRecordOLDMaterialPalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD MATERIAL PALETTE RECORD (OBSOLETE)");
}

void FltRecordOLDMaterialPalette::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    for (Entry& entry : entries) {
        getEntryThenDecal(&entry, cursor);
        if (revision < oldestRevisionWithNames)
            entry.name[0] = '\0';
    }
}

std::ostream& FltRecordOLDMaterialPalette::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    for (int i = 0; i < entryCount; ++i) {
        Entry const& entry = entries[i];
        FltDump::line(os, " Material at index: ", i);
        FltDump::line(os, " ambientRed: ", entry.ambientRed);
        FltDump::line(os, " ambientGreen : ", entry.ambientGreen);
        FltDump::line(os, " ambientBlue: ", entry.ambientBlue);
        FltDump::line(os, " diffuseRed: ", entry.diffuseRed);
        FltDump::line(os, " diffuseGreen: ", entry.diffuseGreen);
        FltDump::line(os, " diffuseBlue: ", entry.diffuseBlue);
        FltDump::line(os, " specularRed : ", entry.specularRed);
        FltDump::line(os, " specularGreen: ", entry.specularGreen);
        FltDump::line(os, " specularBlue: ", entry.specularBlue);
        FltDump::line(os, " emissiveRed: ", entry.emissiveRed);
        FltDump::line(os, " emissiveGreen: ", entry.emissiveGreen);
        FltDump::line(os, " emissiveBlue: ", entry.emissiveBlue);
        FltDump::line(os, "shininess: ", entry.shininess);
        FltDump::line(os, "alpha: ", entry.alpha);
        FltDump::line(os, "flags: ");
        FltDump::flag(os, "      material used: ", static_cast<std::uint32_t>(entry.flags), 31);
        if (revision >= oldestRevisionWithNames)
            FltDump::text(os, "name : ", entry.name, std::end(entries));
    }
    return os;
}
