#pragma once

#include "inspect/FltInventory.h"
#include "model/FltLevels.h"
#include "model/FltModelRecordReader.h"
#include "model/FltPaletteOffsets.h"
#include "records/FltSummedVertexOffsets.h"

#include <cstdint>
#include <string>

class FltRecordFace;

/// Goes over the records of a database, as the complete conversion reads them, and fills the lists of its
/// inventory.
class FltInventoryBuilder
{
public:
    FltInventoryBuilder(FltInventory& inventory, FltInventory::Offsets rule);

    void build();

private:
    /// What records belong to.
    struct Owner {
        enum class Kind { node, face, mesh, other };
        Kind kind;
        std::uint32_t number; ///< In the list of its kind.
        std::uint32_t node;   ///< Itself, or the node that it stands below.
    };

    void makeRoom();
    void count();
    void take();
    void takeStep(FltLevelStep step);
    void takeTooDeep();

    void takePalette();
    void takeHeader();
    void takeOldMaterials();
    void takeVertex();
    void enter(FltInventory::Palette& entries, int index, std::string name);
    void use(FltInventory::Surface const& surface);

    void takeNode();
    void takeNodeRecord();
    void takeDegreeOfFreedom(std::uint32_t node);
    std::uint32_t addNode();

    void begin(FltInventory::Surface& surface, FltRecordFace const& stored);
    void takeFace();
    void takeMesh();
    void takeCorners(FltInventory::Face& face, std::uint32_t number);
    template <class Entry>
    void takeVertexList(std::uint32_t face);
    void takePrimitive(FltInventory::Mesh& mesh) const;
    template <class Record>
    std::uint32_t addVertex();

    void takeAncillary();
    void takeLongId(Owner const& owner);
    void takeMultitexture();
    void takeLocalVertexPool(FltInventory::Mesh& mesh) const;

    void addImbalance(FltInventory::Imbalance::Kind kind, std::size_t offset);
    void endLevel(Owner const& owner, std::uint64_t end);
    void closeLevels();

    int opcode() const { return static_cast<int>(record.opcode); }

    /// One past the last byte of the record and its continuations.
    std::uint64_t recordEnd() const { return records.getPosition(); }

    FltInventory& inventory;
    FltRecordScan& scan;
    FltModelRecordReader records;
    FltRecordView record;
    FltLevels<Owner> levels;
    FltInventory::Offsets rule;
    FltPaletteOffsets palette;
    FltSummedVertexOffsets summed;
    bool hasLongId = false; ///< Whether the last node has got its name.
};
