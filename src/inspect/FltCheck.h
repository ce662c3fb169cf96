#pragma once

#include "inspect/FltDependencies.h"
#include "inspect/FltFinding.h"
#include "inspect/FltInventory.h"
#include "toolkit/VelloReaderExport.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

/// Judges a database: what in it is damaged, and what won't be seen.
///
/// What is found several times in a node is one finding with a count. Of each kind the first thousand are
/// kept.
class VELLOREADER_API FltCheck
{
public:
    static constexpr std::uint64_t mostOfAKind = 1000;

    explicit FltCheck(FltInventory const& inventory)
        : inventory(inventory), lacksCarriageReturns(inventory.lacksCarriageReturns())
    {
    }

    /// @name The judgements
    /// @{
    void checkRecords();                                  ///< 1xx
    void checkGeometry();                                 ///< 2xx
    void checkPalettes();                                 ///< 3xx
    void checkFiles(FltDependencies const& dependencies); ///< 4xx
    void checkHierarchy();                                ///< 5xx
    void checkVisibility();                               ///< 6xx
    void checkExactConversion();                          ///< 8xx

    /// 901, for a kind of things that a conversion leaves out.
    void addOmission(std::string const& kind, std::uint64_t count);
    /// @}

    /// In the order of the kinds, then of the file.
    std::vector<FltFinding> findings() const;

    /// How many findings of a kind weren't kept, by its number.
    std::map<int, std::uint64_t> const& leftOut() const { return notKept; }

private:
    /// Adds a finding, or counts it with one of the same kind in the same node.
    void add(int number, std::uint64_t offset, int opcode, std::uint32_t node, std::string const& text);

    /// Adds a finding of its own, unless there are enough of its kind.
    /// @return whether it was added
    bool addHere(int number, std::int64_t offset, int opcode, std::string text, std::uint64_t count = 1);

    bool isTraceOfTextTransfer(std::int64_t number) const;
    void checkTextTransfer();
    void checkSurface(FltInventory::Surface const& surface, int opcode);
    void checkFace(FltInventory::Face const& face);
    void checkTextureCoordinates(FltInventory::Face const& face);
    void checkShape(FltInventory::Face const& face);
    void checkMesh(FltInventory::Mesh const& mesh);
    void checkLostOffsets();
    void checkRepetitions(FltInventory::Palette const& palette, char const* what);
    void checkNames();
    void checkLevels();
    void checkInstances();
    void checkReferencesOfInstances();
    void checkRanges();
    void checkDegreesOfFreedom();
    void checkSwitches();
    void checkExactFaces();
    void checkExactSwitches();
    void checkExactInstances();
    void checkExactOpcodes();

    FltInventory const& inventory;
    bool const lacksCarriageReturns;
    std::vector<FltFinding> found;
    std::map<std::pair<int, std::uint32_t>, std::size_t> positions; ///< In found, by kind and node.
    std::map<int, std::uint64_t> kept;
    std::map<int, std::uint64_t> notKept;
};
