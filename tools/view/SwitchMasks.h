#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <vector>

class SoNode;
class SoSwitch;

/// The masks of a switch record.
class SwitchMasks
{
public:
    /// @param fields of the record, as FltRecordJson gives them
    explicit SwitchMasks(nlohmann::ordered_json const& fields);

    int count() const;
    int current() const { return currentMask; }

    /// Whether a mask shows a child; a mask or child that isn't there: false.
    bool shows(int mask, int child) const;

    /// The switches around the children of a switch record's node, in the order of the children.
    static std::vector<SoSwitch*> childrenOf(SoNode const& node);

private:
    int currentMask = 0;
    int wordsPerMask = 0;
    std::vector<std::uint32_t> words;
};
