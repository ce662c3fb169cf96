#include "convert/FltVertexPalette.h"

#include "convert/FltColorPalette.h"
#include "dump/FltDump.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltRecordVertex.h"

#include <Inventor/nodes/SoSwitch.h>
#include <algorithm>
#include <iostream>

namespace
{

using Form = FltVertexPalette::Form;
using FieldPointers = FltVertexPalette::FieldPointers;

constexpr unsigned noColorFlag = 0x2000;
constexpr unsigned packedColorFlag = 0x1000;

void takePointers(Form& form)
{
    SoVertexProperty& property = *form.property;
    FieldPointers& pointers = form.pointers;
    pointers.vertex = property.vertex.startEditing();
    pointers.vertexNum = property.vertex.getNum();
    pointers.normal = property.normal.startEditing();
    pointers.normalNum = property.normal.getNum();
    pointers.texCoord = property.texCoord.startEditing();
    pointers.texCoordNum = property.texCoord.getNum();
    pointers.orderedRGBA = property.orderedRGBA.startEditing();
    pointers.orderedRGBANum = property.orderedRGBA.getNum();
}

void setSize(Form& form, int size)
{
    SoVertexProperty& property = *form.property;
    property.enableNotify(FALSE);
    if (form.hasTexture)
        property.texCoord.setNum(size);
    if (form.hasNormal)
        property.normal.setNum(size);
    property.orderedRGBA.setNum(size);
    property.vertex.setNum(size);
    takePointers(form);
}

/// Gives the values from @p from on, where nothing was written, a defined value.
void clear(Form const& form, int from)
{
    FieldPointers const& pointers = form.pointers;
    for (int i = from; i < pointers.vertexNum; ++i)
        pointers.vertex[i].setValue(0, 0, 0);
    for (int i = from; i < pointers.normalNum; ++i)
        pointers.normal[i].setValue(0, 0, 0);
    for (int i = from; i < pointers.texCoordNum; ++i)
        pointers.texCoord[i].setValue(0, 0);
    for (int i = from; i < pointers.orderedRGBANum; ++i)
        pointers.orderedRGBA[i] = 0;
}

void grow(Form& form)
{
    int const before = form.pointers.vertexNum;
    form.capacity = static_cast<int>(form.count * 1.5 + 100.0);
    setSize(form, form.capacity);
    clear(form, before);
    form.coordinates = form.coordinatesAfterGrowth;
}

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

/// A broken file may name vertices beyond the last one of a property. The values keep their number, but what
/// the toolkit would read after them has to be there.
void makeRoomForIndices(Form const& form)
{
    int const room = form.highestIndex + 1;
    extend(form.property->vertex, room, SbVec3f(0, 0, 0));
    extend(form.property->normal, room, SbVec3f(0, 0, 0));
    extend(form.property->texCoord, room, SbVec2f(0, 0));
}

template <class Field, class Value>
Value valueAt(Field const& field, int index, Value const& otherwise)
{
    return index >= 0 && index < field.getNum() ? field[index] : otherwise;
}

} // namespace

int FltVertexPalette::initialCapacity = 100000;

FltVertexPalette::FltVertexPalette(FltColorPalette const& colors) : colors(colors)
{
    for (Form& form : forms) {
        form.property = SoNodeRef<SoVertexProperty>(new SoVertexProperty);
        form.property->setName(form.propertyName);
        form.coordinates = static_cast<Position>(form.id - 1);
        form.capacity = initialCapacity;
        setSize(form, initialCapacity);
    }
}

void FltVertexPalette::add(Position position, FltRecordVertexColor const& record, float const* normal,
                           float const* texture)
{
    Form& form = at(position);
    int const index = form.count;
    auto const size = static_cast<std::int32_t>(record.getLength());
    offsetToVertexEntryMap.insert_or_assign(offsetToVertexEntryMap.end(), nextVertexOffset,
                                            VertexEntry{index, size, form.property.get()});
    nextVertexOffset += record.getLength();
    if (index >= form.pointers.vertexNum)
        grow(form);

    // Writes land only inside an array as it stands.
    FieldPointers const& own = form.pointers;
    FieldPointers const& coordinates = at(form.coordinates).pointers;
    if (index < coordinates.vertexNum)
        coordinates.vertex[index].setValue(static_cast<float>(record.Xcoordinate),
                                           static_cast<float>(record.Ycoordinate),
                                           static_cast<float>(record.Zcoordinate));
    if (normal != nullptr && index < own.normalNum)
        own.normal[index].setValue(normal);
    if (texture != nullptr && index < own.texCoordNum)
        own.texCoord[index].setValue(texture);
    if (index < own.orderedRGBANum)
        own.orderedRGBA[index] = packedColorOf(position, record);
    ++form.count;
}

std::uint32_t FltVertexPalette::packedColorOf(Position form, FltRecordVertexColor const& record) const
{
    if ((record.flags & noColorFlag) != 0)
        return FltColorPalette::white;
    if ((record.flags & packedColorFlag) != 0) {
        // The alpha byte goes in as a transparency, so 255 gives a packed alpha of 0.
        std::uint8_t const* const bytes = record.packedColor;
        SbColor const color(bytes[3] / 255.0F, bytes[2] / 255.0F, bytes[1] / 255.0F);
        return color.getPackedValue(bytes[0] / 255.0F);
    }
    // The index of a vertex, its lowest bits dropped, is read as an index once more. Where the form has
    // normal and UV a small negative one is white, elsewhere it is the first colour in black.
    int const index = form == colorNormalUV ? FltColorPalette::positionOf(record.vertexColorIndex)
                                            : record.vertexColorIndex / FltColorPalette::intensities;
    if (static_cast<std::uint32_t>(index) > FltColorPalette::lastPosition)
        return FltColorPalette::white;
    SbColor color;
    float transparency = 0;
    color.setPackedValue(colors.getPacked(FltColorPalette::positionOf(index)), transparency);
    color *= FltColorPalette::intensityOf(index);
    if (form == colorNormalUV)
        transparency = 1.0F;
    else if (form != FltVertexPalette::color)
        transparency = 0.0F;
    return color.getPackedValue(transparency);
}

int FltVertexPalette::addCopy(int sourceId, int sourceIndex, SbVec3f const& normal)
{
    Form& form = at(colorNormalUV);
    SoVertexProperty& property = *form.property;
    SoVertexProperty const& source = *getProperty(sourceId);
    int const index = form.count;
    bool const grows = index >= property.vertex.getNum();
    if (grows) {
        form.capacity = index + 1;
        property.texCoord.setNum(index + 1);
        property.normal.setNum(index + 1);
        property.vertex.setNum(index + 1);
    }
    // The colours are dropped: the field is empty after every copy, and colour reaches the shapes by their
    // faces. A source without one leaves black at the next place of the first form.
    int const sourceColors = grows && &source == &property ? index + 1 : source.orderedRGBA.getNum();
    Form const& first = at(color);
    if (sourceIndex >= sourceColors && first.count < first.pointers.orderedRGBANum)
        first.pointers.orderedRGBA[first.count] = FltColorPalette::black;
    if (property.orderedRGBA.getNum() > 0)
        property.orderedRGBA.setNum(0);
    takePointers(form);

    form.pointers.vertex[index] = valueAt(source.vertex, sourceIndex, SbVec3f(0, 0, 0));
    form.pointers.normal[index] = normal;
    form.pointers.texCoord[index] = valueAt(source.texCoord, sourceIndex, SbVec2f(0, 0));
    ++form.count;
    return index;
}

/// Faces mostly name vertices that lie side by side in the palette, so the search begins after the last one.
VertexEntry& FltVertexPalette::entryAt(unsigned long offset)
{
    auto const end = offsetToVertexEntryMap.end();
    if (lastEntry != end && lastEntry->first != offset)
        ++lastEntry;
    if (lastEntry == end || lastEntry->first != offset)
        lastEntry = offsetToVertexEntryMap.try_emplace(offset).first;
    return lastEntry->second;
}

FltVertexPalette::Form const* FltVertexPalette::findForm(SoVertexProperty const* property) const
{
    for (Form const& form : forms)
        if (form.property.get() == property)
            return &form;
    return nullptr;
}

SoVertexProperty* FltVertexPalette::getProperty(int id) const
{
    if (id >= 1 && id <= formCount)
        return getForm(id).property.get();
    FltWarningMessageConsole::notifyMessage(
        "WARNING: no vertex property associated with this id, vertexColorProperty will be returned", 3, true);
    return getForm(1).property.get();
}

int FltVertexPalette::getId(SoVertexProperty const* property) const
{
    if (Form const* const form = findForm(property))
        return form->id;
    FltWarningMessageConsole::notifyMessage("WARNING ! This SoVertexProperty hasn t any id,  "
                                            "UNDEFINED_SO_VERTEX_PROPERTY_ID will be returned",
                                            3, true);
    return undefinedPropertyId;
}

void FltVertexPalette::noteIndex(int id, int index)
{
    Form& form = forms[static_cast<std::size_t>(id - 1)];
    form.highestIndex = std::max(form.highestIndex, index);
}

void FltVertexPalette::cut(SoGroup* root)
{
    SoNodeRef<SoSwitch> const palette(new SoSwitch);
    palette->setName("vertexPropertyPalette");
    palette->whichChild = SO_SWITCH_NONE;
    for (Form& form : forms) {
        setSize(form, form.count);
        form.property->orderedRGBA.setNum(0);
        takePointers(form);
        if (form.count > 0)
            palette->addChild(form.property.get());
    }
    if (palette->getNumChildren() > 0 && root != nullptr)
        root->addChild(palette.get());
    vertexPropertiesFinalized = true;
}

void FltVertexPalette::close()
{
    for (Form const& form : forms) {
        if (!vertexPropertiesFinalized)
            clear(form, form.count);
        if (form.highestIndex >= form.property->vertex.getNum())
            makeRoomForIndices(form);
        form.property->enableNotify(TRUE);
        form.property->touch();
    }
}

void FltVertexPalette::show(int limit) const
{
    int lines = 0;
    for (auto const& [offset, entry] : offsetToVertexEntryMap) {
        FltDump line(std::cout);
        line << "offset: " << std::uint64_t(offset) << "  index: " << entry.index << "  size: " << entry.size
             << "  SOVP: " << getId(entry.property);
        line.endLine();
        if (++lines == limit)
            return;
    }
}
