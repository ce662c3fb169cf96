#pragma once

#include "model/FltRecordView.h"
#include "records/FltOpcodeTable.h"

#include <cstddef>
#include <utility>
#include <vector>

/// What a record does to the hierarchy of its database.
enum class FltLevelStep {
    node,              ///< It stands in the hierarchy: FltLevels::setLast() has to tell what it is.
    ancillary,         ///< It says more about the last node.
    opened,            ///< A level of the last node begins.
    openedNothing,     ///< So it does, although no node stands between this Push and the one before.
    openedTooDeep,     ///< The level is left out, since it is nested too deeply.
    closed,            ///< A level ends. A further one would belong to the same node.
    closedOther,       ///< The same, by the Pop of another kind of level.
    closedNothing,     ///< No level is open.
    extension,         ///< An extension begins or ends.
    closedNoExtension, ///< No extension is open.
    inExtension,       ///< It is left out.
    tooDeep,           ///< It is left out with the level that it stands in.
    nowhere,           ///< It says more about a node, and follows none: a Pop ends what belongs to a node.
};

/// The levels of a hierarchy that are open where a database is read: the one answer to what a record belongs
/// to. What a node is, only those know who ask.
/// @tparam Owner says which node it is. It is copied.
template <class Owner>
class FltLevels
{
public:
    struct Level {
        Owner owner;
        std::size_t offset; ///< Of the Push; 0 for the level of the root.
        bool isSubface;
    };

    /// @param most levels, the root's included, that may be open
    FltLevels(Owner const& root, int most) : levels{{root, 0, false}}, last(root), most(most) {}

    /// Takes the next record that isn't a palette's or a vertex of one.
    FltLevelStep take(FltRecordView const& record)
    {
        Part const part = FltOpcodeTable::partOf(static_cast<int>(record.opcode));
        if (part == Part::pushExtension || part == Part::popExtension)
            return takeExtension(part == Part::pushExtension, record.offset);
        if (!extensions.empty())
            return FltLevelStep::inExtension;
        if (part == Part::push)
            return push(record, std::exchange(before, part) == Part::push);
        if (part == Part::pop) {
            before = part;
            return pop(record);
        }
        if (!levelsTooDeep.empty())
            return FltLevelStep::tooDeep;
        if (part == Part::ancillary)
            return before == Part::pop ? FltLevelStep::nowhere : FltLevelStep::ancillary;
        before = part;
        return FltLevelStep::node;
    }

    /// The node that was read last, or whose level was closed last: what a level would belong to.
    /// @{
    Owner const& getLast() const { return last; }
    void setLast(Owner const& owner) { last = owner; }
    /// @}

    /// The node whose level is open.
    Owner const& getParent() const { return levels.back().owner; }

    /// Whether that level is one of faces that lie on another one.
    bool isSubface() const { return levels.back().isSubface; }

    /// The open levels, the root's first.
    std::vector<Level> const& getLevels() const { return levels; }

    /// Where open levels begin that are nested too deeply, and open extensions; offsets of their Push.
    /// @{
    std::vector<std::size_t> const& getLevelsTooDeep() const { return levelsTooDeep; }
    std::vector<std::size_t> const& getExtensions() const { return extensions; }
    /// @}

private:
    using Part = FltOpcodeRow::Part;

    FltLevelStep takeExtension(bool begins, std::size_t offset)
    {
        if (begins)
            extensions.push_back(offset);
        else if (extensions.empty())
            return FltLevelStep::closedNoExtension;
        else
            extensions.pop_back();
        return FltLevelStep::extension;
    }

    FltLevelStep push(FltRecordView const& record, bool isAfterPush)
    {
        if (!levelsTooDeep.empty() || static_cast<int>(levels.size()) >= most) {
            levelsTooDeep.push_back(record.offset);
            return FltLevelStep::openedTooDeep;
        }
        levels.push_back({last, record.offset, record.opcode == FltOpcode::pushSubface});
        return isAfterPush ? FltLevelStep::openedNothing : FltLevelStep::opened;
    }

    FltLevelStep pop(FltRecordView const& record)
    {
        if (!levelsTooDeep.empty()) {
            levelsTooDeep.pop_back();
            return FltLevelStep::closed;
        }
        last = levels.back().owner;
        if (levels.size() == 1)
            return FltLevelStep::closedNothing;
        bool const isOther = levels.back().isSubface != (record.opcode == FltOpcode::popSubface);
        levels.pop_back();
        return isOther ? FltLevelStep::closedOther : FltLevelStep::closed;
    }

    std::vector<Level> levels;
    std::vector<std::size_t> levelsTooDeep;
    std::vector<std::size_t> extensions;
    Owner last;
    Part before = Part::unknown; ///< What the last record was that isn't an ancillary one.
    int most;
};
