#include "inspect/FltCheckFiles.h"

#include "messages/FltFindingNumber.h"
#include "messages/FltLimits.h"
#include "records/FltOpcode.h"

#include <string>

namespace Number = FltFindingNumber;

void FltCheckFiles::check(FltDependencies const& dependencies)
{
    for (FltDependencies::Texture const& texture : dependencies.textures()) {
        if (texture.database != inventory.path() || texture.uses == 0)
            continue;
        auto const offset = static_cast<std::int64_t>(texture.offset);
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
                                                                           : 0;
        if (number == 0)
            continue;
        FltFinding* const finding = findings.addHere(
            number, static_cast<std::int64_t>(reference.offset), FltOpcode::externalReference,
            reference.problem.empty() ? quoted(reference.name) : reference.problem);
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
