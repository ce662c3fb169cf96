#pragma once

#include "parser/FltObserver.h"
#include "toolkit/VelloReaderExport.h"

#include <cstddef>
#include <iosfwd>
#include <vector>

class FltParseHost;
class FltCreationVisitor;
class FltInput;
class FltRawData;
class FltRecordHeader;

/// Frames the bytes of an input into records and has the factory make an object of each.
///
/// A record begins with a 16-bit opcode and a 16-bit length, both big-endian; the length counts the whole
/// record. The first record has to be the header (opcode 1); its revision and RGB mode go to the factory
/// before the second record is made.
///
/// A record of zero length, one that runs past the end of the input, and a rest of fewer than four bytes end
/// the scan with a message that names the byte offset; what came before is kept. The decoder of a record
/// that is shorter than its layout reads on into the bytes after it, and into zeros at the end of the file.
class VELLOREADER_API FltParser : public FltRecordObservable
{
public:
    FltParser();                         ///< Has the default factory, and no input yet.
    explicit FltParser(FltInput* input); ///< Has the default factory.

    /// Frees the factory and, if it is a FltFileInput, the input; neither the records nor any other input.
    /// Give the input back first with setInput(nullptr) if it belongs to somebody else.
    virtual ~FltParser();

    FltParser(FltParser const&) = delete;
    FltParser& operator=(FltParser const&) = delete;

    /// Adds an observer after those that are there.
    void attachFltObserver(FltRecordObserver* observer) override;

    /// Removes an observer where it stands first. One that isn't there is no fault.
    void detachFltObserver(FltRecordObserver* observer) override;
    void notify(FltRecord const* record) override; ///< Shows all observers a record, in their order.

    FltInput* getInput() const { return input; } ///< What is parsed; null if nothing is set.

    /// Sets what is parsed. An earlier input isn't freed.
    void setInput(FltInput* newInput) { input = newInput; }
    FltCreationVisitor* getFltCreationVisitor() const { return creationVisitor; } ///< The factory.

    /// Sets the factory. An earlier one isn't freed.
    void setFltCreationVisitor(FltCreationVisitor* visitor) { creationVisitor = visitor; }

    /// Makes a Flt_15_7_CreationVisitor the factory. An earlier one isn't freed.
    void setDefaultFltCreationVisitor();

    /// Keeps a copy of a directory's name, which nothing here reads.
    void setAdditionalDirPath(char const* path);

    /// Records of the file so far. Two sound palettes that share an object count as two.
    unsigned long getNumberOfFltRawData() const { return numberOfFltRawData; }

    /// Whether run() has reached the end of the input.
    bool isAllFltRecordsCreated() const { return allFltRecordsCreated; }

    /// The records in file order. They belong to the parser until somebody destroys them. Neighbouring
    /// entries may hold the same object.
    std::vector<FltRecord*>& getFltRecords() { return fltRecords; }

    /// Dumps every record. @return @p os
    std::ostream& showAllFltRecords(std::ostream& os) const;

    /// Whether the input begins with a header record; if not, that is reported to the console. Null is no
    /// OpenFlight input.
    bool isAnOpenFlightInput(FltInput* input);

    /// Has the factory make the record of @p raw, appends it and notifies the observers.
    void fltRecordsVectorBuild(FltRawData* raw);

    /// Sets who learns of each record; null by default. With a host, a record that can't be made is left out
    /// and reported, rather than thrown out of run(). The host isn't owned.
    void setHost(FltParseHost* newHost) { host = newHost; }

    /// Reads the whole input.
    /// @return 0, or 1 if the input isn't OpenFlight
    int run();

private:
    void init();

    /// Makes the record of @p raw.
    /// @return false if it can't be made, and is left out
    bool makeRecord(FltRawData* raw, std::size_t offset);

    /// Takes revision and RGB mode from the header record.
    void readVersion(FltRecordHeader const& header);

    std::vector<FltRecord*> fltRecords;
    FltCreationVisitor* creationVisitor = nullptr;
    FltInput* input = nullptr;
    char* additionalDirPath = nullptr;
    bool allFltRecordsCreated = false;
    unsigned long numberOfFltRawData = 0;
    std::vector<FltRecordObserver*> observers;
    FltParseHost* host = nullptr;
};
