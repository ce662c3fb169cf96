#include "view/SceneRecords.h"

#include "records/FltOpcode.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace
{

using Json = nlohmann::ordered_json;

/// Null if it can't be read.
std::unique_ptr<FltRecordReader> open(std::string const& file)
{
    try {
        return std::make_unique<FltRecordReader>(file);
    } catch (FltLoadError const&) {
        return nullptr;
    }
}

Json fieldsAt(FltRecordReader const& reader)
{
    return Json::parse(reader.json());
}

std::string textOf(Json const& record, char const* field)
{
    auto const fields = record.find("fields");
    return fields != record.end() ? fields->value(field, std::string()) : std::string();
}

/// Which levels below a record are its own faces', level by level.
class FaceLevels
{
public:
    /// Takes the next record. @return whether it is a face of the record
    bool take(int opcode)
    {
        switch (opcode) {
        case FltOpcode::pushLevel:
        case FltOpcode::pushSubface:
            levels.push_back(levels.empty() || (levels.back() && isFaceLast));
            return false;
        case FltOpcode::popLevel:
        case FltOpcode::popSubface:
            isFaceLast = levels.size() > 1 && levels.back();
            if (!levels.empty())
                levels.pop_back();
            return false;
        default:
            isFaceLast = opcode == FltOpcode::face;
            return isFaceLast && !levels.empty() && levels.back();
        }
    }

    bool isAbove() const { return levels.empty(); }

private:
    std::vector<bool> levels; ///< Whether the faces in each open one are meant.
    bool isFaceLast = false;  ///< Whether a level that begins here is that of a face.
};

} // namespace

SceneRecords::SceneRecords(std::string path) : path(std::move(path)), database(open(this->path)) {}

FltRecordReader* SceneRecords::readerOf(std::string const& file)
{
    if (file == path)
        return database.get();
    if (file != otherPath) {
        other = nullptr;
        other = open(file);
        otherPath = file;
    }
    return other.get();
}

/// The reader at a record; null if there is none.
FltRecordReader* SceneRecords::readerAt(FltRecordPlace const& place)
{
    FltRecordReader* const reader = readerOf(place.file);
    if (reader == nullptr)
        return nullptr;
    reader->goTo(place.offset);
    return reader->next() ? reader : nullptr;
}

/// Calls a function with the reader at each face of a record, as long as that gives true.
template <class Take>
void SceneRecords::forEachFace(FltRecordPlace const& place, Take take)
{
    FltRecordReader* const reader = readerAt(place);
    bool const isHeader = reader != nullptr && reader->opcode() == FltOpcode::header;
    FaceLevels levels;
    while (reader != nullptr && reader->next()) {
        if (reader->isAncillary())
            continue;
        bool const isFace = levels.take(reader->opcode());
        // Palettes stand between the header and its level.
        bool const isBelow = !levels.isAbove() || (isHeader && reader->opcode() != FltOpcode::popLevel);
        if (!isBelow || (isFace && !take(*reader)))
            return;
    }
}

SceneRecords::Summary SceneRecords::summaryOf(FltRecordPlace const& place)
{
    Summary summary;
    for (Json const& record : fieldsOf(place)) {
        if (summary.opcode == 0) {
            summary.opcode = record.value("opcode", 0);
            summary.name = textOf(record, summary.opcode == FltOpcode::header ? "id" : "idASCII");
        } else if (record.value("opcode", 0) == FltOpcode::longID) {
            summary.name = textOf(record, "idASCII");
            break;
        }
    }
    forEachFace(place, [&](FltRecordReader const&) { return ++summary.faces > 0; });
    return summary;
}

std::vector<Json> SceneRecords::fieldsOf(FltRecordPlace const& place)
{
    std::vector<Json> all;
    FltRecordReader* const reader = readerAt(place);
    if (reader == nullptr)
        return all;
    do
        all.push_back(fieldsAt(*reader));
    while (reader->next() && reader->isAncillary());
    return all;
}

std::vector<Json> SceneRecords::facesOf(FltRecordPlace const& place, std::size_t most)
{
    std::vector<Json> all;
    forEachFace(place, [&](FltRecordReader const& reader) {
        if (all.size() == most)
            return false;
        all.push_back(fieldsAt(reader));
        return true;
    });
    return all;
}
