// The vertex palette: four shared properties, and the map from palette offset to converted vertex.

#include "convert/FltToInventor.h"

#include "dump/FltDump.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltRecordVertex.h"

#include <Inventor/SbColor.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <algorithm>
#include <iostream>

namespace
{

constexpr int undefinedPropertyId = 5;
constexpr std::uint32_t white = 0xffffffff;
constexpr std::uint32_t black = 0x000000ff;
constexpr unsigned noColorFlag = 0x2000;
constexpr unsigned packedColorFlag = 0x1000;

/// Shades of one colour in an index.
constexpr int shades = 128;

/// The highest palette position that a colour index may name, its shade aside.
constexpr unsigned lastColorPosition = 131072;

/// Gives a field storage for @p room values and leaves the number of its values as it is.
template <class Field, class Value>
void extend(Field& field, int room, Value const& zero)
{
    int const num = field.getNum();
    if (num == 0)
        return;
    Value const* const values = field.getValues(0);
    auto* const storage = new Value[static_cast<std::size_t>(room)];
    std::fill(std::copy(values, values + num, storage), storage + room, zero);
    field.setValuesPointer(num, storage);
    field.enableDeleteValues();
}

bool hasNormal(int form)
{
    return form == 1 || form == 3;
}
bool hasTexture(int form)
{
    return form == 2 || form == 3;
}

} // namespace

SoVertexProperty* FltToInventor::propertyOf(int form) const
{
    SoVertexProperty* const properties[vertexFormCount] = {
        vertexColorProperty, vertexColorNormalProperty, vertexColorUVProperty, vertexColorNormalUVProperty};
    return properties[form];
}

void FltToInventor::takeVertexFieldPointers(int form)
{
    SoVertexProperty& property = *propertyOf(form);
    VertexFieldPointers& pointers = vertexFieldPointers[form];
    pointers.vertex = property.vertex.startEditing();
    pointers.vertexNum = property.vertex.getNum();
    pointers.normal = property.normal.startEditing();
    pointers.normalNum = property.normal.getNum();
    pointers.texCoord = property.texCoord.startEditing();
    pointers.texCoordNum = property.texCoord.getNum();
    pointers.orderedRGBA = property.orderedRGBA.startEditing();
    pointers.orderedRGBANum = property.orderedRGBA.getNum();
}

/// Sizes the fields of a form. While a conversion runs nobody is told: that would cost a walk over every
/// shape that uses the property.
void FltToInventor::setVertexFieldSizes(int form, int size)
{
    SoVertexProperty& property = *propertyOf(form);
    property.enableNotify(FALSE);
    if (hasTexture(form))
        property.texCoord.setNum(size);
    if (hasNormal(form))
        property.normal.setNum(size);
    property.orderedRGBA.setNum(size);
    property.vertex.setNum(size);
    takeVertexFieldPointers(form);
}

/// Gives the values of a form from @p from on a defined value where nothing was written.
void FltToInventor::clearVertexFields(int form, int from)
{
    VertexFieldPointers const& pointers = vertexFieldPointers[form];
    for (int i = from; i < pointers.vertexNum; ++i)
        pointers.vertex[i].setValue(0, 0, 0);
    for (int i = from; i < pointers.normalNum; ++i)
        pointers.normal[i].setValue(0, 0, 0);
    for (int i = from; i < pointers.texCoordNum; ++i)
        pointers.texCoord[i].setValue(0, 0);
    for (int i = from; i < pointers.orderedRGBANum; ++i)
        pointers.orderedRGBA[i] = 0;
}

void FltToInventor::growVertexFields(int form)
{
    int const before = vertexFieldPointers[form].vertexNum;
    vertexCapacities[form] = static_cast<int>(vertexCounts[form] * 1.5 + 100.0);
    setVertexFieldSizes(form, vertexCapacities[form]);
    clearVertexFields(form, before);
    // Past their first room the two forms without UV write their coordinates into the property of the form
    // with UV.
    if (form == colorForm)
        vertexTargets[form] = colorUVForm;
    else if (form == colorNormalForm)
        vertexTargets[form] = colorNormalUVForm;
}

void FltToInventor::addVertex(int form, FltRecordVertexColor const& record, float const* normal,
                              float const* texture)
{
    int const index = vertexCounts[form];
    auto const size = static_cast<std::int32_t>(record.getLength());
    offsetToVertexEntryMap.insert_or_assign(offsetToVertexEntryMap.end(), nextVertexOffset,
                                            VertexEntry{index, size, propertyOf(form)});
    nextVertexOffset += record.getLength();
    if (index >= vertexFieldPointers[form].vertexNum)
        growVertexFields(form);

    // Writes land only inside an array as it stands.
    VertexFieldPointers const& own = vertexFieldPointers[form];
    VertexFieldPointers const& target = vertexFieldPointers[vertexTargets[form]];
    if (index < target.vertexNum)
        target.vertex[index].setValue(static_cast<float>(record.Xcoordinate),
                                      static_cast<float>(record.Ycoordinate),
                                      static_cast<float>(record.Zcoordinate));
    if (normal != nullptr && index < own.normalNum)
        own.normal[index].setValue(normal);
    if (texture != nullptr && index < own.texCoordNum)
        own.texCoord[index].setValue(texture);
    if (index < own.orderedRGBANum)
        own.orderedRGBA[index] = packedColorOf(form, record);
    ++vertexCounts[form];
}

void FltToInventor::visitVertexColor(FltRecordVertexColor const* record)
{
    addVertex(colorForm, *record, nullptr, nullptr);
}

void FltToInventor::visitVertexColorNormal(FltRecordVertexColorNormal const* record)
{
    addVertex(colorNormalForm, *record, record->vertexNormal, nullptr);
}

void FltToInventor::visitVertexColorUV(FltRecordVertexColorUv const* record)
{
    addVertex(colorUVForm, *record, nullptr, record->texture);
}

void FltToInventor::visitVertexColorNormalUV(FltRecordVertexColorNormalUv const* record)
{
    addVertex(colorNormalUVForm, *record, record->vertexNormal, record->texture);
}

std::uint32_t FltToInventor::packedColorOf(int form, FltRecordVertexColor const& record) const
{
    if ((record.flags & noColorFlag) != 0)
        return white;
    if ((record.flags & packedColorFlag) != 0) {
        // The alpha byte goes in as a transparency, so 255 gives a packed alpha of 0.
        std::uint8_t const* const bytes = record.packedColor;
        SbColor const color(bytes[3] / 255.0F, bytes[2] / 255.0F, bytes[1] / 255.0F);
        return color.getPackedValue(bytes[0] / 255.0F);
    }
    // Where the form has normal and UV a small negative index is white, elsewhere it is the first colour in
    // black.
    int const position =
        form == colorNormalUVForm ? record.vertexColorIndex >> 7 : record.vertexColorIndex / shades;
    if (static_cast<unsigned>(position) > lastColorPosition)
        return white;
    float const intensity = static_cast<float>(position & (shades - 1)) / 127.0F;
    SbColor color;
    float transparency = 0;
    color.setPackedValue(colorPalette[position / shades], transparency);
    color *= intensity;
    if (form == colorNormalUVForm)
        transparency = 1.0F;
    else if (form != colorForm)
        transparency = 0.0F;
    return color.getPackedValue(transparency);
}

void FltToInventor::finalizeVertexProperties()
{
    for (int form = 0; form < vertexFormCount; ++form) {
        setVertexFieldSizes(form, vertexCounts[form]);
        propertyOf(form)->orderedRGBA.setNum(0);
        takeVertexFieldPointers(form);
    }
    auto* const palette = new SoSwitch;
    palette->ref();
    palette->setName("vertexPropertyPalette");
    palette->whichChild = SO_SWITCH_NONE;
    for (int form = 0; form < vertexFormCount; ++form)
        if (propertyOf(form)->vertex.getNum() > 0)
            palette->addChild(propertyOf(form));
    if (palette->getNumChildren() > 0 && result != nullptr)
        result->addChild(palette);
    palette->unref();
    vertexPropertiesFinalized = true;
}

/// A broken file may name vertices beyond the last one of a property. The values keep their number, but what
/// the toolkit would read behind them has to be there.
void FltToInventor::makeRoomForIndices(int form)
{
    int const room = highestVertexIndices[form] + 1;
    SoVertexProperty& property = *propertyOf(form);
    extend(property.vertex, room, SbVec3f(0, 0, 0));
    extend(property.normal, room, SbVec3f(0, 0, 0));
    extend(property.texCoord, room, SbVec2f(0, 0));
}

/// The end of a conversion: tells everybody once of what was written into the properties.
void FltToInventor::closeVertexProperties()
{
    for (int form = 0; form < vertexFormCount; ++form) {
        if (!vertexPropertiesFinalized)
            clearVertexFields(form, vertexCounts[form]);
        if (highestVertexIndices[form] >= propertyOf(form)->vertex.getNum())
            makeRoomForIndices(form);
        propertyOf(form)->enableNotify(TRUE);
        propertyOf(form)->touch();
    }
}

/// Faces mostly name vertices that lie side by side in the palette, so the search begins behind the last one.
VertexEntry& FltToInventor::entryAt(unsigned long offset)
{
    auto const end = offsetToVertexEntryMap.end();
    if (lastVertexEntry != end && lastVertexEntry->first != offset)
        ++lastVertexEntry;
    if (lastVertexEntry == end || lastVertexEntry->first != offset)
        lastVertexEntry = offsetToVertexEntryMap.try_emplace(offset).first;
    return lastVertexEntry->second;
}

int FltToInventor::getIndexVertexFromOffset(unsigned long offset)
{
    return entryAt(offset).index;
}

int FltToInventor::getSizeVertexFromOffset(unsigned long offset)
{
    return entryAt(offset).size;
}

SoVertexProperty* FltToInventor::getSoVertexPropertyFromOffset(unsigned long offset)
{
    return entryAt(offset).property;
}

SoVertexProperty* FltToInventor::getVertexPropertyFromIntId(int const& id) const
{
    if (id >= 1 && id <= vertexFormCount)
        return propertyOf(id - 1);
    FltWarningMessageConsole::notifyMessage(
        "WARNING: no vertex property associated with this id, vertexColorProperty will be returned", 3, true);
    return vertexColorProperty;
}

int FltToInventor::getIntIdFromVertexProperty(SoVertexProperty const* property) const
{
    for (int form = 0; form < vertexFormCount; ++form)
        if (property == propertyOf(form))
            return form + 1;
    FltWarningMessageConsole::notifyMessage("WARNING ! This SoVertexProperty hasn t any id,  "
                                            "UNDEFINED_SO_VERTEX_PROPERTY_ID will be returned",
                                            3, true);
    return undefinedPropertyId;
}

void FltToInventor::copyVertexToVertexColorNormalUV(int sourceId, int sourceIndex, SbVec3f normal,
                                                    int& resultIndex)
{
    SoVertexProperty& property = *vertexColorNormalUVProperty;
    SoVertexProperty const& source = *getVertexPropertyFromIntId(sourceId);
    int const index = vertexCounts[colorNormalUVForm];
    bool const grows = index >= property.vertex.getNum();
    if (grows) {
        vertexCapacities[colorNormalUVForm] = index + 1;
        property.texCoord.setNum(index + 1);
        property.normal.setNum(index + 1);
        property.vertex.setNum(index + 1);
    }
    // The colours are dropped: the field is empty after every copy, and colour reaches the shapes by their
    // faces. A source without one leaves black at the next place of the first form.
    int const sourceColors = grows && &source == &property ? index + 1 : source.orderedRGBA.getNum();
    VertexFieldPointers const& first = vertexFieldPointers[colorForm];
    if (sourceIndex >= sourceColors && vertexCounts[colorForm] < first.orderedRGBANum)
        first.orderedRGBA[vertexCounts[colorForm]] = black;
    if (property.orderedRGBA.getNum() > 0)
        property.orderedRGBA.setNum(0);
    takeVertexFieldPointers(colorNormalUVForm);

    VertexFieldPointers const& pointers = vertexFieldPointers[colorNormalUVForm];
    bool const hasVertex = sourceIndex >= 0 && sourceIndex < source.vertex.getNum();
    bool const hasTexCoord = sourceIndex >= 0 && sourceIndex < source.texCoord.getNum();
    pointers.vertex[index] = hasVertex ? source.vertex[sourceIndex] : SbVec3f(0, 0, 0);
    pointers.normal[index] = normal;
    pointers.texCoord[index] = hasTexCoord ? source.texCoord[sourceIndex] : SbVec2f(0, 0);
    resultIndex = index;
    ++vertexCounts[colorNormalUVForm];
}

void FltToInventor::showOffsetToVertexEntryMap(int limit) const
{
    int lines = 0;
    for (auto const& [offset, entry] : offsetToVertexEntryMap) {
        FltDump line(std::cout);
        line << "offset: " << std::uint64_t(offset) << "  index: " << entry.index << "  size: " << entry.size
             << "  SOVP: " << getIntIdFromVertexProperty(entry.property);
        line.endLine();
        if (++lines == limit)
            return;
    }
}
