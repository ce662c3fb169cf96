#include "inspect/FltCheck.h"

#include "inspect/FltCheckExact.h"
#include "inspect/FltCheckFiles.h"
#include "inspect/FltCheckGeometry.h"
#include "inspect/FltCheckHierarchy.h"
#include "inspect/FltCheckPalettes.h"
#include "inspect/FltCheckPictures.h"
#include "inspect/FltCheckRecords.h"
#include "inspect/FltCheckVisibility.h"
#include "messages/FltFindingNumber.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace
{

/// What a conversion leaves out, and findings of its own tell: FLT-201, 202, 203, 206, 208, 402 to 404, 422,
/// 506 and 511. Those of other files are found in them.
constexpr std::string_view toldOtherwise[] = {
    "vertex offset at which no vertex begins",
    "face with missing vertices",
    "degenerate face",
    "face without vertices",
    "mesh index without a vertex",
    "external reference that can't be read",
    "external reference to a node that isn't there",
    "instance without a definition",
    "record that belongs to no node",
};

} // namespace

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

void FltCheck::checkPictures(std::vector<FltTexture> const& textures)
{
    FltCheckPictures(inventory, list).check(textures);
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
    if (std::find(std::begin(toldOtherwise), std::end(toldOtherwise), kind) == std::end(toldOtherwise))
        list.addHere(FltFindingNumber::notShown, FltFinding::nowhere, 0, kind, count);
}

std::vector<FltFinding> FltCheck::findings() const
{
    return list.sorted();
}
