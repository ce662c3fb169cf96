#pragma once

#include "loader/FltRecordReader.h"
#include "loader/FltScene.h"

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

/// The records that the nodes of a scene come from, as far as they are looked at.
///
/// The database itself is read once, and each other file when one of its records is asked for; the one that
/// was asked for last is kept. A file that can't be read any more has no records.
class SceneRecords
{
public:
    /// What a tree says of a record.
    struct Summary {
        int opcode = 0;   ///< 0 if the record can't be read.
        std::string name; ///< The long id if there is one, else the id. In UTF-8 or as it is.
        int faces = 0;    ///< Below it, without those below other records of the hierarchy.
    };

    /// @param path of the database that the scene was loaded from
    explicit SceneRecords(std::string path);

    Summary summaryOf(FltRecordPlace const& place);

    /// All fields of a record, and of those after it that tell more of it (long id, comment, matrix): the
    /// objects that FltRecordReader::json() gives.
    std::vector<nlohmann::ordered_json> fieldsOf(FltRecordPlace const& place);

    /// The same of the faces that a summary counts.
    /// @param most how many at most
    std::vector<nlohmann::ordered_json> facesOf(FltRecordPlace const& place, std::size_t most);

private:
    FltRecordReader* readerOf(std::string const& file);
    FltRecordReader* readerAt(FltRecordPlace const& place);

    template <class Take>
    void forEachFace(FltRecordPlace const& place, Take take);

    std::string path;
    std::unique_ptr<FltRecordReader> database;
    std::string otherPath;
    std::unique_ptr<FltRecordReader> other;
};
