#include "robustness/Endurance.h"

#include "support/ConvertedScene.h"
#include "support/SceneTraversal.h"
#include "support/Text.h"

#include "records/FltOpcode.h"
#include "records/FltUtils.h"

#include <cstdint>
#include <new>

namespace
{

/// Hands the offset of each whole record to @p visit, as the parser frames them.
template <class Visit>
void forEachRecord(std::string const& bytes, Visit const& visit)
{
    for (std::size_t offset = 0; offset + 4 <= bytes.size();) {
        std::size_t const length = FltUtils::word16At(bytes.data() + offset + 2);
        if (length == 0 || length > bytes.size() - offset)
            return;
        visit(offset);
        offset += length;
    }
}

} // namespace

std::vector<FltTopic> const& topics()
{
    static std::vector<FltTopic> const all = everyTopicInBrief(1570);
    return all;
}

std::string nameOfTopic(testing::TestParamInfo<std::size_t> const& info)
{
    return topics()[info.param].name;
}

Endured endure(std::string const& bytes, Use use)
{
    Endured endured;
    try {
        ConvertedScene const scene(bytes, "memory/scene.flt",
                                   use == Use::countRecords ? CaptureBuffer::everything
                                                            : CaptureBuffer::nothing);
        endured.records = countOf(scene.log, "\n-- Opcode: ");
        endured.logBytes = scene.logSize;
        endured.sceneBytes = traverseScene(scene.root);
        countTriangles(scene.root);
        if (use == Use::everything)
            useScene(scene.root);
    } catch (std::bad_array_new_length const&) {
        if (!hasNegativeSwitch(bytes))
            throw;
        endured.wasRefused = true;
    }
    return endured;
}

FltWriter withNegativeSwitch()
{
    FltWriter flt(1570);
    flt.push().add("Switch", {{"numberOfMasks", -1}, {"numberOf32BitWordsPerMask", 4}}).pop();
    return flt;
}

bool hasNegativeSwitch(std::string const& bytes)
{
    bool found = false;
    std::string padded = bytes + std::string(28, '\0');
    forEachRecord(bytes, [&](std::size_t offset) {
        char const* const record = padded.data() + offset;
        if (FltUtils::word16At(record) != FltOpcode::switchNode)
            return;
        std::uint32_t const words = FltUtils::word32At(record + 20) * FltUtils::word32At(record + 24);
        found = found || static_cast<std::int32_t>(words) < 0;
    });
    return found;
}

int countWholeRecords(std::string const& bytes)
{
    int records = 0;
    forEachRecord(bytes, [&](std::size_t) { ++records; });
    return records;
}
