#pragma once

#include "inspect/FltInventory.h"
#include "model/FltPaletteOffsets.h"
#include "model/FltRecordView.h"

#include <cstdint>
#include <vector>

class FltRecordHeader;
class FltRecordDOF;
class FltRecordOLDMaterialPalette;
class FltRecordSwitch;

/// Goes over the records of a database and fills the lists of its inventory.
class FltInventoryBuilder
{
public:
    explicit FltInventoryBuilder(FltInventory& inventory) : inventory(inventory), reader(inventory.reader) {}

    void build();

private:
    static constexpr std::uint32_t none = FltInventory::none;

    /// The node, the face or the mesh that records belong to.
    struct Owner {
        std::uint32_t node = none;
        std::uint32_t face = none;
        std::uint32_t mesh = none;

        bool isNothing() const { return node == none && face == none && mesh == none; }
    };

    /// An open Push.
    struct Level {
        int opcode;
        std::uint64_t offset;
        Owner owner;
    };

    void count();
    void take();
    void takePalette();
    void takeNode();
    void takeAncillary();
    bool isStray();
    void takeMeshPart();

    void takeHeader(FltRecordHeader const& record);
    void takeOldMaterials(FltRecordOLDMaterialPalette const& record);
    void beginVertexPalette();
    void takeVertex();
    std::uint32_t addVertex();
    void takeOldVertex();
    void takeFace();
    void takeVertexList();
    void takeMorphVertexList();
    template <class Entry>
    void takeFaceVertices();
    void takeMesh();
    void takeLocalVertexPool();
    void takePrimitive();
    void takeSwitch(FltRecordSwitch const& record);
    void takeDegreeOfFreedom(FltRecordDOF const& record);
    void takeMultitexture();

    void push();
    void pop();
    void endLevel(Level const& level, std::uint64_t end);
    void closeLevels();
    void keepMatrix(float const (&matrix)[4][4]);
    void enter(FltInventory::Palette& palette, int index, std::string name);
    void use(FltInventory::Surface const& surface);
    void addFaceVertex(std::int64_t paletteOffset);

    /// @param id the eight characters of a node's name
    std::uint32_t addNode(std::string name);

    std::uint32_t parent() const;
    std::uint32_t currentFace() const;
    std::uint64_t recordEnd() const { return reader.offset() + reader.length(); }

    /// The record's own bytes.
    FltRecordView view() const;

    FltInventory& inventory;
    FltRecordScan& reader;
    std::vector<Level> levels;
    Owner last;       ///< Of the record before, for ancillary records and a Push.
    Owner lastClosed; ///< Whose level was closed last.
    std::uint32_t subfaceLevels = 0;
    std::uint32_t extensionLevels = 0;
    bool isAfterPop = false;
    FltPaletteOffsets palette;
    std::uint64_t poolBytes = 0; ///< Of the local vertex pool that may go on.
    int opcodeBefore = 0;
};
