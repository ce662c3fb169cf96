#include "inspect/FltCheck.h"

#include "inspect/FltCheckExact.h"
#include "inspect/FltCheckFiles.h"
#include "inspect/FltCheckGeometry.h"
#include "inspect/FltCheckHierarchy.h"
#include "inspect/FltCheckPalettes.h"
#include "inspect/FltCheckRecords.h"
#include "inspect/FltCheckVisibility.h"
#include "messages/FltFindingNumber.h"

void FltCheck::checkRecords()
{
    FltCheckRecords(inventory, list).check();
}

void FltCheck::checkGeometry()
{
    FltCheckGeometry(inventory, list).check();
}

void FltCheck::checkPalettes()
{
    FltCheckPalettes(inventory, list).check();
}

void FltCheck::checkFiles(FltDependencies const& dependencies)
{
    FltCheckFiles(inventory, list).check(dependencies);
}

void FltCheck::checkHierarchy()
{
    FltCheckHierarchy(inventory, list).check();
}

void FltCheck::checkVisibility()
{
    FltCheckVisibility(inventory, list).check();
}

void FltCheck::checkExactConversion()
{
    FltCheckExact(inventory, list).check();
}

void FltCheck::addOmission(std::string const& kind, std::uint64_t count)
{
    list.addHere(FltFindingNumber::notShown, FltFinding::nowhere, 0, kind, count);
}

std::vector<FltFinding> FltCheck::findings() const
{
    return list.sorted();
}
