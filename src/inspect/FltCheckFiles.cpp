#include "inspect/FltCheckFiles.h"

#include "messages/FltFindingNumber.h"
#include "messages/FltLimits.h"
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
    for (FltDependencies::Reference const& reference : dependencies.references()) {
        using State = FltDependencies::State;
        bool const isOwn = reference.database == inventory.path();
        int const number = reference.state == State::cycle                 ? Number::circularReference
                           : reference.state == State::tooDeep             ? Number::tooDeepReference
                           : isOwn && reference.state == State::missing    ? Number::missingReference
                           : isOwn && reference.state == State::unreadable ? Number::unreadableReference
                           : isOwn && reference.isElsewhere                ? Number::referenceElsewhere
                                                                           : 0;
        if (number == 0)
            continue;
        std::string const text = !reference.problem.empty() ? reference.problem
                                 : number == Number::referenceElsewhere
                                     ? quoted(reference.name) + " is found as " + reference.path
                                     : quoted(reference.name);
        FltFinding* const finding = findings.addHere(number, static_cast<std::int64_t>(reference.offset),
                                                     FltOpcode::externalReference, text);
        if (finding != nullptr)
            finding->file = reference.database;
    }
    for (FltDependencies::DeepLevels const& levels : dependencies.deepLevels()) {
        FltFinding* const finding = findings.addHere(
            Number::tooDeepLevels, static_cast<std::int64_t>(levels.offset), levels.opcode,
            std::to_string(FltLimits::hierarchyDepth) + " levels with those of the files that lead here");
        if (finding != nullptr)
            finding->file = levels.database;
    }
}
