#pragma once

#include "convert/FltVertexField.h"
#include "convert/FltVertexOffsets.h"
#include "convert/VertexEntry.h"
#include "records/FltSummedVertexOffsets.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/SbName.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <array>
#include <cstdint>

class FltColorPalette;
class FltRecordVertexColor;
class SoGroup;

/// The vertices of one file: a vertex property for each of the four forms that a vertex may have, and the map
/// from the offsets by which faces name their vertices to the places where they went.
///
/// The properties have room for many vertices from the start, which takes memory only where somebody asks for
/// one. They are silent until close(): to notify anybody of each value would cost a walk over every shape
/// that uses them.
class FltVertexPalette
{
public:
    /// The forms by their position in the table, which is one lower than their property id.
    enum Position : int { color, colorNormal, colorUV, colorNormalUV };
    static constexpr int formCount = 4;

    /// The property id of what isn't one of the four.
    static constexpr int undefinedPropertyId = 5;

    static constexpr int idOf(Position form) { return form + 1; }

    /// Where the values of a form are written. Fields that the form doesn't have stay without size.
    struct Fields {
        FltVertexField<SoMFVec3f, SbVec3f> vertex{SbVec3f(0, 0, 0)};
        FltVertexField<SoMFVec3f, SbVec3f> normal{SbVec3f(0, 0, 0)};
        FltVertexField<SoMFVec2f, SbVec2f> texCoord{SbVec2f(0, 0)};
        FltVertexField<SoMFUInt32, std::uint32_t> orderedRGBA{0};
    };

    /// Everything about a form.
    struct Form {
        int id; ///< Of its property.
        bool hasNormal;
        bool hasTexture;
        SbName propertyName;
        SbName materialSetName; ///< Of the materials of its faces.
        SbName subFaceMaterialSetName;
        SbName faceSetName; ///< Of its face sets, those of sub-faces too.

        /// The form into whose property the coordinates go from the first growth on. Where it is another one,
        /// the own property keeps zeros there.
        Position coordinatesAfterGrowth;

        SoNodeRef<SoVertexProperty> property = {}; ///< Without values until getProperty() or cut().
        int capacity = 0;
        int count = 0;         ///< Vertices so far.
        int highestIndex = -1; ///< That a face names.
        Fields fields = {};
        Position coordinates = {}; ///< The form into whose property the coordinates go now.
    };

    /// @param makesNodes if not, the palette only knows at which offsets vertices begin, and of which form
    explicit FltVertexPalette(FltColorPalette const& colors, bool makesNodes = true);
    ~FltVertexPalette() = default;

    FltVertexPalette(FltVertexPalette const&) = delete;
    FltVertexPalette& operator=(FltVertexPalette const&) = delete;

    /// Adds the next vertex of the file.
    /// @param normal, texture null where the form has none
    void add(Position form, FltRecordVertexColor const& record, float const* normal, float const* texture);

    bool hasNodes() const { return makesNodes; }

    /// Adds a vertex of the form with normal and UV, made of a vertex of any form and a normal. All colours
    /// of that form are dropped.
    /// @return its index
    int addCopy(int sourceId, int sourceIndex, SbVec3f const& normal);

    /// An offset as a vertex list holds it, filled up to the width of offsets by its sign.
    static unsigned long offsetOf(int offset)
    {
        return static_cast<unsigned long>(static_cast<long>(offset));
    }

    /// The vertex at a byte offset, in a property as getProperty() gives it. An unknown offset enters the map
    /// with a default entry.
    VertexEntry entryAt(unsigned long offset);

    /// The same by the id of the property, which is 0 for an unknown offset.
    FltVertexOffsets::Entry placeAt(unsigned long offset) { return offsetToVertexEntryMap.find(offset); }

    std::array<Form, formCount> const& getForms() const { return forms; }

    /// @param id from 1 to 4
    Form const& getForm(int id) const { return forms[static_cast<std::size_t>(id - 1)]; }

    /// The form of a property, or null.
    Form const* findForm(SoVertexProperty const* property) const;

    /// The property of an id, with all its values. Another id than 1 to 4 gives the first, and a message.
    SoVertexProperty* getProperty(int id);

    /// The id of a property. Another node gives undefinedPropertyId, and a message.
    int getId(SoVertexProperty const* property) const;

    /// Remembers that a face names the vertices of a property up to @p index.
    void noteIndex(int id, int index);

    /// Whether cut() has been called.
    bool isCut() const { return vertexPropertiesFinalized; }

    /// Cuts the properties to the vertices that they hold, drops all colours, and hangs the properties that
    /// hold any below @p root, where no traversal meets them. The root may be null.
    void cut(SoGroup* root);

    /// Ends a conversion: no value stays undefined, all that faces name can be read, and the properties
    /// notify the scene of what was written.
    void close();

    /// Prints the map from offsets to vertices to std::cout, at most @p limit lines if that is above 0.
    void show(int limit) const;

    /// Vertices of each form that a new palette has room for before the form grows. Tests make it small, so
    /// that small databases grow.
    static int initialCapacity;

private:
    Form& at(Position form) { return forms[static_cast<std::size_t>(form)]; }
    SoVertexProperty* show(Form& form);
    static std::array<Form, formCount> const& standardForms();
    std::uint32_t packedColorOf(Position form, FltRecordVertexColor const& record) const;

    FltColorPalette const& colors;
    bool makesNodes;
    FltVertexOffsets offsetToVertexEntryMap;
    FltSummedVertexOffsets offsets;
    bool vertexPropertiesFinalized = false;

    std::array<Form, formCount> forms;
};
