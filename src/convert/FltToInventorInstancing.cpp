// Nodes that stand in more than one place, or come from another file.

#include "convert/FltConversionHost.h"
#include "convert/FltToInventorState.h"
#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltFileInput.h"
#include "parser/FltParser.h"
#include "records/FltOpcode.h"
#include "records/FltRecordControl.h"
#include "records/FltRecordExternalReference.h"
#include "records/FltRecordReplicate.h"
#include "records/FltRecordTransformations.h"
#include "toolkit/RegularFile.h"
#include "toolkit/SoReferencesGivenBack.h"

#include <Inventor/nodes/SoLabel.h>
#include <Inventor/nodes/SoSeparator.h>
#include <cstring>
#include <optional>
#include <sys/stat.h>

namespace
{

std::int64_t sizeOf(std::string const& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 ? status.st_size : 0;
}

int countChildren(SoGroup const* group)
{
    return group != nullptr ? group->getNumChildren() : 0;
}

/// Whether a group has got the scene of a file since it had so many children.
bool hasGotScene(SoGroup const* group, int childrenBefore)
{
    int const last = countChildren(group) - 1;
    return last >= childrenBefore &&
           static_cast<SoSeparator const*>(group->getChild(last))->getNumChildren() > 0;
}

} // namespace

void FltToInventor::visitInstanceDefinition(FltRecordInstanceDefinition const* record)
{
    int const number = record->instanceDefinitionNumber;
    auto* const definition = state->makeNamed<SoSeparator>("InstanceDefinition_" + std::to_string(number));
    State::OpenLevel& current = state->current;
    current.group = definition;
    addSoGroupToNodesStackTop(definition);
    current.place = state->instances.openScope(current.place);
    state->instances.define(number, definition, current.place.scope);
}

void FltToInventor::visitInstanceReference(FltRecordInstanceReference const* record)
{
    auto const* const definition = state->instances.findDefinition(record->instanceDefinitionNumber);
    SoGroup* const top = state->stackTop();
    if (definition == nullptr || !state->isLevelOpen())
        return;
    FltInstanceAccount::Place place = state->nodesStack.top().place;
    ++place.depth;
    if (state->instances.place(definition->scope, place))
        State::hang(top, definition->node.get());
}

void FltToInventor::visitReplicate(FltRecordReplicate const* record, SoNode* node,
                                   std::vector<FltRecord*>::iterator& ancillary,
                                   std::vector<FltRecord*>& ancillaries, RecordIterator& iterator)
{
    SoGroup* const top = state->stackTop();
    if (!state->isLevelOpen())
        return;
    State::OpenLevel& current = state->current;
    auto* const replications = state->make<SoSeparator>();
    if (replications != nullptr)
        replications->setName("Replications");
    state->scene.silence(replications);
    State::hang(top, replications);

    FltInstanceAccount::Place place = state->nodesStack.top().place;
    place.depth += 2;
    for (int counter = 0; counter < record->numberOfReplications; ++counter) {
        if (++ancillary == ancillaries.end() || (*ancillary)->getOpcode() != FltOpcode::matrix)
            return;
        // Matrices come in pairs: the first is tested, the second is applied.
        ++ancillary;
        if (*iterator != nullptr)
            ++iterator;
        auto const* const matrix =
            ancillary != ancillaries.end() ? dynamic_cast<FltRecordMatrix const*>(*ancillary) : nullptr;
        if (matrix == nullptr)
            return;
        // From now on the node is a subtree that stands in several places.
        current.place = state->instances.openScope(current.place);
        if (!state->instances.place(current.place.scope, place))
            return;
        visitMatrix(matrix, replications);
        State::hang(replications, node);
    }
}

void FltToInventor::visitExternalReference(FltRecordExternalReference const* record, RecordIterator& iterator)
{
    std::string const path(record->asciiPath, ::strnlen(record->asciiPath, sizeof record->asciiPath));
    auto* const group = state->make<SoSeparator>();
    state->current.isSwitch.reset(); // it has no name
    State::hang(group, state->makeLabel("From OpenFlight File:  " + path));
    state->openNode(*this, group, iterator);
    if (path.empty()) {
        --iterator;
        return;
    }

    FltParser const* const parser = state->parser.get();
    FltInput const* const input = parser != nullptr ? parser->getInput() : nullptr;
    char const* const directory = input != nullptr ? input->getDirName() : nullptr;
    std::string const fullPath = directory != nullptr ? FltExternalFiles::pathOf(directory, path) : "";
    int const childrenBefore = countChildren(group);
    bool const isThere = RegularFile::isReadable(fullPath.c_str());
    FltConversionHost* const host = input != nullptr ? state->shared.host : nullptr;
    bool const isFollowed = host == nullptr || host->beginReference(*input, path, fullPath, isThere);
    if (!isThere) {
        std::string const text = "ERROR! CAN'T RESOLVE EXTERNAL REFERENCE: " + path;
        FltWarningMessageConsole::notifyMessage(FltWarningMessageConsole::keepText(text), 3, true);
    } else {
        if (isFollowed)
            state->convertExternalFile(path, fullPath, group);
        --iterator;
    }
    if (host != nullptr)
        host->endReference(hasGotScene(group, childrenBefore));
}

void FltToInventor::State::convertExternalFile(std::string const& path, std::string const& fullPath,
                                               SoGroup* parent)
{
    FltReferenceChain& chain = shared.chain;
    FltReferenceChain::Identity const identity =
        FltReferenceChain::identityOf(fullPath.c_str()).value_or(FltReferenceChain::Identity());
    if (chain.holds(identity))
        return FltWarningMessageConsole::notifyGuard(
            "An external reference leads back to a file that it comes from and is left empty", ": " + path);

    FltInstanceAccount::Place place = current.place;
    ++place.depth;
    std::string const name = FltExternalFiles::nameOf(fullPath);
    if (FltExternalFiles::File const* const known = externalFiles.find(name)) {
        FltFileInput::reportOpening(name.c_str(), known->isOpen);
        if (instances.place(known->scope, place))
            hang(parent, known->root);
        return;
    }
    FltInstanceGraph::Surroundings const surroundings = instances.getGraph().surroundingsOf(place);
    if (chain.isFull() || surroundings.depth >= FltLimits::sceneDepth)
        return FltWarningMessageConsole::notifyGuard(
            "External references lead from file to file too often: one is left empty", ": " + path);
    if (auto const* const scene =
            shared.files.findInstead(identity, sizeOf(fullPath), externalFiles.countName(identity)))
        return placeFinishedFile(name, path, *scene, place, parent);
    if (!chain.open())
        return warnings.notify("WARNING ! The file has more than " +
                               std::to_string(FltLimits::externalReferences) +
                               " external references: further ones are left empty");

    FltFileInput input = shared.host != nullptr
                             ? FltFileInput(fullPath.c_str(), shared.host->takeReferencedFile())
                             : FltFileInput(fullPath.c_str());
    input.dropBytesWhenParsed();
    if (shared.files.read(identity, input.getSize()))
        shared.allowances.growBy(input.getSize());
    SoNodeRef<SoSeparator> const root(make<SoSeparator>());
    hang(parent, root.get());
    FltExternalFiles::File& file = externalFiles.add(name, root.get());
    file.isOpen = input.isInFlowCreated();

    FltConvertedFiles::Scene scene{root};
    {
        SoReferencesGivenBack const references(root.get());
        FltReferenceChain::Link const link(chain, identity);
        FltToInventor nested(std::make_unique<State>(shared, surroundings, hierarchyDepth + 1));
        nested.state->relativePath = FltExternalFiles::relativePathOf(relativePath, path);
        nested.setFltInputToconvert(&input);
        nested.state->result = root.get();
        nested.convert();
        FltInstanceGraph const& part = nested.state->instances.getGraph();
        scene.depth = part.getDepth();
        scene.nodes = part.getNodes();
    }
    file.scope = instances.addFinishedScope(place, scene.depth, scene.nodes);
    shared.files.finish(identity, scene);
}

void FltToInventor::State::placeFinishedFile(std::string const& name, std::string const& path,
                                             FltConvertedFiles::Scene const& scene,
                                             FltInstanceAccount::Place place, SoGroup* parent)
{
    FltWarningMessageConsole::notifyGuard(
        "A file is referred to by too many names, or too often: the scene that was made of it is used again",
        ": " + path);
    FltFileInput::reportOpening(name.c_str(), true);
    std::optional<int> const scope = instances.placeFinished(place, scene.depth, scene.nodes);
    if (!scope)
        return;
    hang(parent, scene.root.get());
    FltExternalFiles::File& file = externalFiles.add(name, scene.root.get());
    file.isOpen = true;
    file.scope = *scope;
}
