#include "inspect/FltCheckFiles.h"

#include "inspect/FltCheckedModel.h"
#include "messages/FltFindingNumber.h"
#include "messages/FltLimits.h"
#include "model/FltReferencedFile.h"
#include "records/FltOpcode.h"

#include <string>
#include <vector>

namespace Number = FltFindingNumber;

namespace
{

std::string listOf(std::vector<std::string> const& problems)
{
    std::string list;
    for (std::string const& problem : problems)
        list += (list.empty() ? "" : "; ") + problem;
    return list;
}

} // namespace

void FltCheckFiles::check(FltDependencies const& dependencies)
{
    for (FltDependencies::Texture const& texture : dependencies.textures()) {
        if (texture.database != inventory.path() || texture.uses == 0)
            continue;
        auto const offset = static_cast<std::int64_t>(texture.offset);
        if (!texture.attributes.problems.empty())
            findings.addHere(Number::wrongAttributes, offset, FltOpcode::texturePattern,
                             texture.attributes.path + ": " + listOf(texture.attributes.problems));
        if (texture.path.empty())
            findings.addHere(Number::missingTexture, offset, FltOpcode::texturePattern, quoted(texture.name));
        else if (texture.isElsewhere)
            findings.addHere(Number::textureElsewhere, offset, FltOpcode::texturePattern,
                             quoted(texture.name) + " is found as " + texture.path);
    }
    for (FltDependencies::Reference const& reference : dependencies.references())
        checkReference(reference);
    for (FltDependencies::DeepLevels const& levels : dependencies.deepLevels()) {
        FltFinding* const finding = findings.addHere(
            Number::tooDeepLevels, static_cast<std::int64_t>(levels.offset), levels.opcode,
            std::to_string(FltLimits::hierarchyDepth) + " levels with those of the files that lead here");
        if (finding != nullptr)
            finding->file = levels.database;
    }
}

void FltCheckFiles::checkReference(FltDependencies::Reference const& reference)
{
    using State = FltDependencies::State;
    auto const add = [&](int number, std::string const& text) {
        FltFinding* const finding = findings.addHere(number, static_cast<std::int64_t>(reference.offset),
                                                     FltOpcode::externalReference, text);
        if (finding != nullptr)
            finding->file = reference.database;
    };
    bool const isOwn = reference.database == inventory.path();
    int const number = reference.state == State::cycle                 ? Number::circularReference
                       : reference.state == State::tooDeep             ? Number::tooDeepReference
                       : isOwn && reference.state == State::missing    ? Number::missingReference
                       : isOwn && reference.state == State::unreadable ? Number::unreadableReference
                                                                       : 0;
    if (number != 0)
        add(number, reference.problem.empty() ? quoted(reference.name) : reference.problem);
    if (!isOwn || reference.state != State::found)
        return;
    if (reference.isElsewhere)
        add(Number::referenceElsewhere, quoted(reference.name) + " is found as " + reference.path);
    std::string const node = FltReferencedFile::nodeOf(reference.name);
    if (!node.empty() && !holds(reference.path, node))
        add(Number::missingNode, quoted(node) + " in " + reference.path);
}

/// Whether a file has a node of a name. Names are read as the complete conversion reads them.
bool FltCheckFiles::holds(std::string const& path, std::string const& node)
{
    auto known = nodes.find(path);
    if (known == nodes.end()) {
        FltInventory const other(path);
        known = nodes.emplace(path, FltNodeNumbers(FltCheckedModel(other).model.tree)).first;
    }
    return known->second.find(node) != FltModelTree::none;
}
