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
using Fields = FltVertexPalette::Fields;
constexpr unsigned noColorFlag = 0x2000;
constexpr unsigned packedColorFlag = 0x1000;

void setSize(Form& form, int size)
{
    Fields& fields = form.fields;
    if (form.hasTexture)
        fields.texCoord.setNum(size);
    if (form.hasNormal)
        fields.normal.setNum(size);
    fields.orderedRGBA.setNum(size);
    fields.vertex.setNum(size);
}

/// Gives the values from @p from on, where nothing was written, a defined value.
void clear(Form& form, int from)
{
    Fields& fields = form.fields;
    fields.vertex.clear(from);
    fields.normal.clear(from);
    fields.texCoord.clear(from);
    fields.orderedRGBA.clear(from);
}

void grow(Form& form)
{
    form.capacity = static_cast<int>(form.count * 1.5 + 100.0);
    setSize(form, form.capacity);
    form.coordinates = form.coordinatesAfterGrowth;
}

/// A broken file may name vertices beyond the last one of a property. The values keep their number, but what
/// the toolkit would read after them has to be there.
void makeRoomForIndices(Form& form)
{
    int const room = form.highestIndex + 1;
    form.fields.vertex.extend(room);
    form.fields.normal.extend(room);
    form.fields.texCoord.extend(room);
}

template <class Field, class Value>
Value valueAt(Field const& field, int index, Value const& otherwise)
{
    return index >= 0 && index < field.getNum() ? field[index] : otherwise;
}

} // namespace

int FltVertexPalette::initialCapacity = 100000;

/// The toolkit looks a name up in its table of all names, so each is made once.
std::array<Form, FltVertexPalette::formCount> const& FltVertexPalette::standardForms()
{
    static std::array<Form, formCount> const standard = {{
        {1, false, false, "vertexColorProperty", "faceVertexColorSoMaterialSet",
         "subFaceVertexColorSoMaterialSet", "SoIFSVertexColor", colorUV},
        {2, true, false, "vertexColorNormalProperty", "faceVertexColorNormalSoMaterialSet",
         "subFaceVertexColorNormalSoMaterialSet", "SoIFSVertexColorNormal", colorNormalUV},
        {3, false, true, "vertexColorUVProperty", "faceVertexColorUVSoMaterialSet",
         "subFaceVertexColorUVSoMaterialSet", "SoIFSVertexColorUV", colorUV},
        {4, true, true, "vertexColorNormalUVProperty", "faceVertexColorNormalUVSoMaterialSet",
         "subFaceVertexColorNormalUVSoMaterialSet", "SoIFSVertexColorNormalUV", colorNormalUV},
    }};
    return standard;
}

FltVertexPalette::FltVertexPalette(FltColorPalette const& colors, bool makesNodes)
    : colors(colors), makesNodes(makesNodes), forms(standardForms())
{
    if (!makesNodes)
        return;
    for (Form& form : forms) {
        form.property = SoNodeRef<SoVertexProperty>(new SoVertexProperty);
        SoVertexProperty& property = *form.property;
        property.setName(form.propertyName);
        property.enableNotify(FALSE);
        form.fields.vertex.setField(property.vertex);
        form.fields.normal.setField(property.normal);
        form.fields.texCoord.setField(property.texCoord);
        form.fields.orderedRGBA.setField(property.orderedRGBA);
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
    unsigned int const size = record.getLength();
    offsetToVertexEntryMap.add(offsets.next(size), {index, static_cast<std::int32_t>(size), form.id});
    if (!makesNodes)
        return;
    if (index >= form.fields.vertex.getNum())
        grow(form);

    // Writes land only inside an array as it stands.
    Fields& fields = form.fields;
    at(form.coordinates)
        .fields.vertex.set(index,
                           {static_cast<float>(record.Xcoordinate), static_cast<float>(record.Ycoordinate),
                            static_cast<float>(record.Zcoordinate)});
    if (normal != nullptr)
        fields.normal.set(index, SbVec3f(normal));
    if (texture != nullptr)
        fields.texCoord.set(index, SbVec2f(texture));
    if (index < fields.orderedRGBA.getNum())
        fields.orderedRGBA.set(index, packedColorOf(position, record));
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
    SoVertexProperty& property = *show(form);
    SoVertexProperty const& source = *getProperty(sourceId);
    Fields& fields = form.fields;
    int const index = form.count;
    bool const grows = index >= property.vertex.getNum();
    if (grows) {
        form.capacity = index + 1;
        fields.texCoord.setNum(index + 1);
        fields.normal.setNum(index + 1);
        fields.vertex.setNum(index + 1);
    }
    // The colours are dropped: the field is empty after every copy, and colour reaches the shapes by their
    // faces. A source without one leaves black at the next place of the first form.
    int const sourceColors = grows && &source == &property ? index + 1 : source.orderedRGBA.getNum();
    Form& first = at(color);
    if (sourceIndex >= sourceColors)
        if (std::uint32_t* const place = first.fields.orderedRGBA.find(first.count))
            *place = FltColorPalette::black;
    if (property.orderedRGBA.getNum() > 0)
        fields.orderedRGBA.setNum(0);

    SbVec3f const place = valueAt(source.vertex, sourceIndex, SbVec3f(0, 0, 0));
    SbVec2f const texture = valueAt(source.texCoord, sourceIndex, SbVec2f(0, 0));
    *fields.vertex.find(index) = place;
    *fields.normal.find(index) = normal;
    *fields.texCoord.find(index) = texture;
    ++form.count;
    return index;
}

VertexEntry FltVertexPalette::entryAt(unsigned long offset)
{
    FltVertexOffsets::Entry const entry = placeAt(offset);
    return {entry.index, entry.size, entry.id != 0 ? getProperty(entry.id) : nullptr};
}

FltVertexPalette::Form const* FltVertexPalette::findForm(SoVertexProperty const* property) const
{
    for (Form const& form : forms)
        if (property != nullptr && form.property.get() == property)
            return &form;
    return nullptr;
}

SoVertexProperty* FltVertexPalette::getProperty(int id)
{
    if (id >= 1 && id <= formCount)
        return show(at(static_cast<Position>(id - 1)));
    FltWarningMessageConsole::notifyMessage(
        "WARNING: no vertex property associated with this id, vertexColorProperty will be returned", 3, true);
    return show(at(color));
}

SoVertexProperty* FltVertexPalette::show(Form& form)
{
    form.fields.vertex.show();
    form.fields.orderedRGBA.show();
    if (form.hasNormal)
        form.fields.normal.show();
    if (form.hasTexture)
        form.fields.texCoord.show();
    return form.property.get();
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
    vertexPropertiesFinalized = true;
    if (!makesNodes)
        return;
    SoNodeRef<SoSwitch> const palette(new SoSwitch);
    palette->setName("vertexPropertyPalette");
    palette->whichChild = SO_SWITCH_NONE;
    for (Form& form : forms) {
        setSize(form, form.count);
        form.fields.orderedRGBA.setNum(0);
        show(form);
        if (form.count > 0)
            palette->addChild(form.property.get());
    }
    if (palette->getNumChildren() > 0 && root != nullptr)
        root->addChild(palette.get());
}

void FltVertexPalette::close()
{
    if (!makesNodes)
        return;
    for (Form& form : forms) {
        if (!vertexPropertiesFinalized) {
            if (form.count > 0) // the scene may hold it
                show(form);
            clear(form, form.count);
        }
        if (form.highestIndex >= form.property->vertex.getNum())
            makeRoomForIndices(form);
        form.property->enableNotify(TRUE);
        form.property->touch();
    }
}

void FltVertexPalette::show(int limit) const
{
    int lines = 0;
    offsetToVertexEntryMap.forEach([&](unsigned long offset, FltVertexOffsets::Entry const& entry) {
        FltDump line(std::cout);
        line << "offset: " << std::uint64_t(offset) << "  index: " << entry.index << "  size: " << entry.size
             << "  SOVP: " << (entry.id != 0 ? entry.id : getId(nullptr));
        line.endLine();
        return ++lines != limit;
    });
}
