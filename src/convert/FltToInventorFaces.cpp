#include "convert/FltObjectToSoSeparator.h"
#include "convert/FltToInventorState.h"
#include "parser/FltCreationVisitor.h"
#include "parser/FltParser.h"
#include "records/FltOpcode.h"
#include "records/FltRecordControl.h"

/// A run goes on until a level closes that it didn't open, an Object begins, or a record other than a face
/// follows a level of its own.
void FltToInventor::visitNextSuccessiveFaces(RecordIterator& iterator)
{
    if (*iterator == nullptr || (*iterator)->getOpcode() != FltOpcode::face)
        return;
    FltRecordPushLevel push(4);
    FltRecordPopLevel pop(4);
    std::vector<FltRecord*> records{&push};
    int level = 0;
    int previousOpcode = 0;
    for (; *iterator != nullptr; ++iterator) {
        int const opcode = (*iterator)->getOpcode();
        bool const levelHasClosed = previousOpcode == FltOpcode::popLevel && level == 0;
        bool const runEnds =
            levelHasClosed ? opcode != FltOpcode::face
                           : opcode == FltOpcode::object || (opcode == FltOpcode::popLevel && level == 0);
        if (runEnds) {
            --iterator;
            break;
        }
        if (opcode == FltOpcode::pushLevel)
            ++level;
        else if (opcode == FltOpcode::popLevel)
            --level;
        records.push_back(*iterator);
        previousOpcode = opcode;
    }
    if (!state->shared.makesNodes && !state->isLevelOpen())
        return; // no scene would have a place for them
    records.push_back(&pop);
    records.push_back(nullptr);
    SoGroup* destination = state->stackTop();
    RecordIterator begin = records.begin();
    visitObjectFaceRecords(begin, 1.0F, destination);
}

void FltToInventor::visitObjectFaceRecords(RecordIterator& iterator, float const& transparency,
                                           SoGroup*& destination)
{
    {
        FltObjectToSoSeparator object;
        FltParser const* const parser = state->parser.get();
        if (parser != nullptr && parser->getFltCreationVisitor() != nullptr) {
            object.revision = parser->getFltCreationVisitor()->revision;
            object.rgbMode = parser->getFltCreationVisitor()->rgbMode;
        }
        object.setCurrentIterator(iterator);
        object.setCurrentFltObjectTransparency(transparency);
        object.setDestination(destination);
        object.setFltToInventor(this);
        if (state->shared.makesNodes)
            object.buildFinalSoSeparator();
        else
            object.visitAllFaces();
    }
    if (*iterator == nullptr)
        return;
    for (int level = 0;; ++iterator) {
        int const opcode = (*iterator)->getOpcode();
        if (opcode == FltOpcode::popLevel && level == 1)
            return;
        if (opcode == FltOpcode::pushLevel)
            ++level;
        else if (opcode == FltOpcode::popLevel)
            --level;
        if (iterator[1] == nullptr)
            return;
    }
}
