#pragma once

#include "inspect/FltFindingList.h"
#include "inspect/FltInventory.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <cstddef>
#include <string>
#include <vector>

/// A text with the names of files as they are in a folder.
inline std::string withoutFolder(std::string text, ScratchFolder const& folder)
{
    std::string const path = folder / "";
    for (std::size_t at = 0; (at = text.find(path, at)) != std::string::npos;)
        text.erase(at, path.size());
    return text;
}

/// What one family of checks, such as FltCheckRecords, finds in a database.
template <class Family>
struct FamilyFindings {
    static std::vector<FltFinding> in(FltWriter const& flt)
    {
        ScratchFolder const folder;
        flt.save(folder / "database.flt");
        FltInventory const inventory(folder / "database.flt");
        FltFindingList findings(inventory);
        Family(inventory, findings).check();
        return findings.sorted();
    }

    static std::vector<int> numbersIn(FltWriter const& flt)
    {
        std::vector<int> numbers;
        for (FltFinding const& finding : in(flt))
            numbers.push_back(finding.kind->number);
        return numbers;
    }
};
