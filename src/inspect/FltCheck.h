#pragma once

#include "inspect/FltDependencies.h"
#include "inspect/FltFindingList.h"
#include "inspect/FltInventory.h"
#include "textures/FltTexture.h"
#include "toolkit/VelloReaderExport.h"

#include <map>
#include <string>
#include <vector>

/// Judges a database: what in it is damaged, and what won't be seen. Each family of findings has a class of
/// its own.
class VELLOREADER_API FltCheck
{
public:
    static constexpr std::uint64_t mostOfAKind = FltFindingList::mostOfAKind;

    explicit FltCheck(FltInventory const& inventory) : inventory(inventory), list(inventory) {}

    /// @name The judgements
    /// @{
    void checkRecords();                                         ///< 1xx
    void checkGeometry();                                        ///< 2xx
    void checkPalettes();                                        ///< 3xx
    void checkFiles(FltDependencies const& dependencies);        ///< 4xx
    void checkPictures(std::vector<FltTexture> const& textures); ///< 407 and 408
    void checkHierarchy();                                       ///< 5xx
    void checkVisibility();                                      ///< 6xx
    void checkExactConversion();                                 ///< 8xx

    /// 901, for a kind of things that a conversion leaves out.
    void addOmission(std::string const& kind, std::uint64_t count);
    /// @}

    /// In the order of the kinds, then of the file.
    std::vector<FltFinding> findings() const;

    /// How many findings of a kind weren't kept, by its number.
    std::map<int, std::uint64_t> const& leftOut() const { return list.leftOut(); }

private:
    FltInventory const& inventory;
    FltFindingList list;
};
