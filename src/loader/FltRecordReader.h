#pragma once

#include "FltLoadError.h"
#include "records/FltColumn.h"
#include "records/FltFieldReceiver.h"
#include "toolkit/VelloReaderExport.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// Reads the records of a database one by one, without making a scene.
///
///     FltRecordReader records("airfield.flt");
///     while (records.next())
///         std::cout << records.json() << '\n';
class VELLOREADER_API FltRecordReader
{
public:
    /// Reads the file into memory.
    /// @throw FltLoadError as FltLoader::load() does
    explicit FltRecordReader(std::string const& path);
    ~FltRecordReader();

    /// Takes the place in the file over. The other one may only be destroyed or assigned to.
    FltRecordReader(FltRecordReader&& other) noexcept;
    FltRecordReader& operator=(FltRecordReader&& other) noexcept; ///< The same.
    FltRecordReader(FltRecordReader const&) = delete;
    FltRecordReader& operator=(FltRecordReader const&) = delete;

    /// Goes on to the next record; to the first one at first.
    /// @return false after the last one
    bool next();

    /// Has next() go on with the record that begins at a byte of the file, as offset() or
    /// FltScene::recordOf() tell it. The file isn't read again, and what lies between isn't looked at. Any
    /// other byte gives records that nobody wrote.
    void goTo(std::uint64_t offset);

    /// @name The record
    /// Ask once next() has said that there is one.
    /// @{
    int opcode() const;           ///< What kind of record it is, as the file says.
    std::uint64_t offset() const; ///< Of its first byte in the file.
    unsigned length() const;      ///< Bytes, with the four of opcode and length.
    bool isAncillary() const;     ///< Whether it says more about the record before it: long id, matrix.

    /// All of its fields as a JSON object in one line:
    ///
    ///     {"opcode":5,"class":"FltRecordFace","category":"PRIMARY_RECORD","length":80,"offset":1204,
    ///      "fields":{"idField":"f1","drawType":0,...}}
    ///
    /// A record that is too broken to be read has a text "error" in place of "fields" that says why.
    std::string json() const;

    /// Appends the same to a text: one that gathers many records makes no text of its own for each.
    void addJson(std::string& text) const;

    /// Gives the same to a receiver, as one object.
    void give(FltFieldReceiver& receiver) const;

    /// Whether it can be read at all. Where it can't, there are no fields.
    bool isReadable() const;

    /// Gives its fields alone, as members of an object that the receiver has opened.
    void giveFields(FltFieldReceiver& receiver) const;
    /// @}

    /// Goes over all further records, and gathers the fields of those of an opcode: a column a field, of as
    /// many rows as there are records that can be read. The first column is their places in the file,
    /// "offset". Bytes, and blocks of which a record has several, have no column; a list has one if any
    /// record has a value of it.
    std::vector<FltColumn> columns(int opcode);

    /// Why the records end before the file does; empty if they don't. Ask after the last one.
    std::string fault() const;

private:
    struct State;
    std::unique_ptr<State> state;
};
