#pragma once

#include <cstddef>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

class FltFileInput;
class FltRecordIndex;

/// A record with a name that stands in the hierarchy: a group, an object, a switch and the like. Faces and
/// what stands below them have no entries.
struct HierarchyRecord {
    int opcode = 0;
    std::size_t position = 0;  ///< Of the record among all of its file.
    std::string name;          ///< The long id if there is one, else the id. In UTF-8 or as it is.
    std::string id;            ///< As it stands in the record itself.
    std::vector<int> children; ///< Indices of the records one level below.
    int faces = 0;             ///< Below it, without those below other entries.
};

/// The records of a database file: an outline of the hierarchy, and all fields of any record when they are
/// asked for. Nothing is printed.
///
/// A file that can't be read has no records. Damage ends the outline where it ends the scene.
class RecordFile
{
public:
    explicit RecordFile(std::string path);
    ~RecordFile();
    RecordFile(RecordFile&&) noexcept;
    RecordFile& operator=(RecordFile&&) noexcept;
    RecordFile(RecordFile const&) = delete;
    RecordFile& operator=(RecordFile const&) = delete;

    std::string const& path() const { return fileName; }

    /// The first one, if there are any, is the header.
    std::vector<HierarchyRecord> const& hierarchy() const { return outline; }

    /// How many records the file holds.
    std::size_t recordCount() const;

    /// Of a record's first byte.
    std::size_t offsetOf(HierarchyRecord const& record) const;

    /// All fields of a record, and of those after it that tell more of it (long id, comment, matrix).
    std::vector<nlohmann::ordered_json> fieldsOf(HierarchyRecord const& record) const;

    /// What a record of an opcode is to a person: "Group", "Level of detail".
    static char const* kindOf(int opcode);

private:
    class OutlineReader;

    std::string fileName;
    std::unique_ptr<FltFileInput> input;
    std::unique_ptr<FltRecordIndex> index;
    std::vector<HierarchyRecord> outline;
};
