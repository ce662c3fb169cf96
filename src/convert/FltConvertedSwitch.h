#pragma once

#include <cstdint>
#include <string>
#include <vector>

class FltRecordSwitch;
class SoGroup;
class SoInfo;

/// A switch of the file as the scene holds it: a group whose name bears a mark, with the masks as text in a
/// SoInfo among its children. Each child of the switch stands in a SoSwitch of its own, on or off for good.
class FltConvertedSwitch
{
public:
    /// Whether the name of a group bears the mark.
    static bool isMarked(std::string const& name);

    /// A name with the mark.
    static std::string markedName(std::string const& name);

    /// Writes name and text of the node that holds a switch's masks.
    static void fillInfo(SoInfo& info, FltRecordSwitch const& record);

    /// The first child that holds masks. Without one null, and an error message.
    static SoInfo* findInfo(SoGroup const* group);

    /// The children of the switch so far.
    static int countChildren(SoGroup const* group);

    /// Whether the next child of a group is to be drawn, by the text of its masks. One object serves one
    /// group, to which children are only added meanwhile: the masks are read once, and children that were
    /// counted aren't counted again.
    bool drawsNextChild(SoGroup const* group);

private:
    SoInfo* info = nullptr;
    std::vector<std::int32_t> maskNumbers;
    int childrenSeen = 0;
    int switchChildren = 0;
};
