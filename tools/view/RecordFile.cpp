#include "view/RecordFile.h"

#include "parser/FltFileInput.h"
#include "parser/FltRecordIndex.h"
#include "records/FltOpcode.h"
#include "view/QuietLibrary.h"

#include <algorithm>
#include <cstring>

namespace
{

struct Kind {
    int opcode;
    char const* text;
};

/// The records that get an entry. Each has its id in the eight bytes from 4 on, if it has one.
constexpr Kind kinds[] = {
    {FltOpcode::header, "Database"},
    {FltOpcode::group, "Group"},
    {FltOpcode::oldLOD, "Level of detail"},
    {FltOpcode::object, "Object"},
    {FltOpcode::dof, "Degree of freedom"},
    {FltOpcode::instanceDefinition, "Instance definition"},
    {FltOpcode::externalReference, "External reference"},
    {FltOpcode::lod, "Level of detail"},
    {FltOpcode::mesh, "Mesh"},
    {FltOpcode::sound, "Sound"},
    {FltOpcode::text, "Text"},
    {FltOpcode::switchNode, "Switch"},
    {FltOpcode::clipRegion, "Clip region"},
    {FltOpcode::lightSource, "Light source"},
    {FltOpcode::lightPoint, "Light point"},
};

constexpr std::size_t idPlace = 4;
constexpr std::size_t idSize = 8;

/// The text in some of a record's bytes, up to a zero.
std::string textAt(FltRecordIndex const& index, std::size_t position, std::size_t place, std::size_t most)
{
    std::size_t const length = index[position].length;
    if (length <= place)
        return "";
    char const* const text = index.bytes(position) + place;
    return {text, ::strnlen(text, std::min(most, length - place))};
}

/// The name by which the scene knows an instance definition.
std::string definitionName(FltRecordIndex const& index, std::size_t position)
{
    if (index[position].length < 8)
        return "";
    auto const* const bytes = reinterpret_cast<unsigned char const*>(index.bytes(position));
    return "InstanceDefinition_" + std::to_string(bytes[6] << 8 | bytes[7]);
}

std::string nameOf(FltRecordIndex const& index, std::size_t position)
{
    switch (index[position].opcode) {
    case FltOpcode::instanceDefinition:
        return definitionName(index, position);
    case FltOpcode::externalReference:
        return textAt(index, position, idPlace, 200);
    default:
        return textAt(index, position, idPlace, idSize);
    }
}

} // namespace

/// Builds the outline of a hierarchy, record by record.
class RecordFile::OutlineReader
{
public:
    OutlineReader(FltRecordIndex const& index, std::vector<HierarchyRecord>& outline)
        : index(index), outline(outline)
    {
    }

    void take(std::size_t position)
    {
        switch (index[position].opcode) {
        case FltOpcode::pushLevel:
            parents.push_back(last);
            break;
        case FltOpcode::popLevel:
            popLevel();
            break;
        case FltOpcode::longID:
            if (last >= 0 && !isFaceLast)
                at(last).name = textAt(index, position, idPlace, index[position].length);
            break;
        case FltOpcode::face:
            isFaceLast = true;
            if (parentOfNext() >= 0)
                ++at(parentOfNext()).faces;
            break;
        default:
            if (kindOf(index[position].opcode) != nullptr)
                add(position);
        }
    }

private:
    HierarchyRecord& at(int entry) { return outline[static_cast<std::size_t>(entry)]; }

    /// Records outside of all levels stand below the header.
    int parentOfNext() const { return parents.empty() ? (outline.empty() ? -1 : 0) : parents.back(); }

    void popLevel()
    {
        if (parents.empty())
            return;
        last = parents.back();
        parents.pop_back();
    }

    void add(std::size_t position)
    {
        last = static_cast<int>(outline.size());
        isFaceLast = false;
        if (parentOfNext() >= 0)
            at(parentOfNext()).children.push_back(last);
        HierarchyRecord entry;
        entry.opcode = index[position].opcode;
        entry.position = position;
        entry.id = nameOf(index, position);
        entry.name = entry.id;
        outline.push_back(std::move(entry));
    }

    FltRecordIndex const& index;
    std::vector<HierarchyRecord>& outline;
    std::vector<int> parents; ///< The entry above each open level.
    int last = -1;            ///< The latest entry of the level, which a Push goes below.
    bool isFaceLast = false;
};

RecordFile::RecordFile(std::string path) : fileName(std::move(path))
{
    QuietLibrary const quiet;
    input = std::make_unique<FltFileInput>(fileName.c_str());
    index = std::make_unique<FltRecordIndex>(*input);
    OutlineReader reader(*index, outline);
    for (std::size_t i = 0; i < index->size(); ++i)
        reader.take(i);
}

RecordFile::~RecordFile() = default;
RecordFile::RecordFile(RecordFile&&) noexcept = default;
RecordFile& RecordFile::operator=(RecordFile&&) noexcept = default;

std::size_t RecordFile::recordCount() const
{
    return index->size();
}

std::size_t RecordFile::offsetOf(HierarchyRecord const& record) const
{
    return (*index)[record.position].offset;
}

std::vector<nlohmann::ordered_json> RecordFile::fieldsOf(HierarchyRecord const& record) const
{
    QuietLibrary const quiet;
    std::vector<nlohmann::ordered_json> all;
    for (std::size_t i = record.position; i < index->size(); ++i) {
        nlohmann::ordered_json fields;
        try {
            fields = index->json(i);
        } catch (std::bad_alloc const&) {
            break; // a count that no record can have
        }
        if (i > record.position && fields["category"] != "ANCILLARY_RECORD")
            break;
        all.push_back(std::move(fields));
    }
    return all;
}

char const* RecordFile::kindOf(int opcode)
{
    auto const* const kind = std::find_if(std::begin(kinds), std::end(kinds),
                                          [&](Kind const& candidate) { return candidate.opcode == opcode; });
    return kind != std::end(kinds) ? kind->text : nullptr;
}
