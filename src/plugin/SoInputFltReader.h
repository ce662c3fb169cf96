#pragma once

#include "toolkit/SoInputReader.h"
#include "toolkit/VelloReaderExport.h"

#include <cstdio>

/// The reader of OpenFlight databases, known to the toolkit as "InputFltReader". It has no data of its own.
class VELLOREADER_API SoInputFltReader : public SoInputReader
{
public:
    SoInputFltReader() = default;
    ~SoInputFltReader() override;

    SoType getTypeId() const override;

    /// Whether the input holds an OpenFlight database, by its first 62 bytes; see isOpenFlight().
    ///
    /// A file that the input holds open is examined whatever its name is, and stays open, at byte 62. If
    /// there is none, the file of the input's name is opened if the name ends in ".flt", in letters of any
    /// case.
    bool canConvert(SoInput* in) override;

    /// Converts the file of the input's name: FltToInventor::convertFromFile() with all its rules. An input
    /// without a name gives null.
    SoSeparator* convert(SoInput* in) override;

    /// Whether a file begins as an OpenFlight database that the reader accepts: with a header record of
    /// revision 11 to 14 or 1280 to 2303 whose unit multiplier is 1.
    ///
    /// | Bytes  | Value                                                                         |
    /// |--------|-------------------------------------------------------------------------------|
    /// | 0, 1   | 0, 1: the opcode of a header                                                  |
    /// | 12, 13 | 0, 0: the high half of the revision                                           |
    /// | 14, 15 | 0 and 11 to 14, or 5 to 8 and anything: its low half                          |
    /// | 60, 61 | 0, 1: the unit multiplier                                                     |
    ///
    /// FltToInventor::convert() itself accepts more: any revision from 11 on, and any multiplier.
    /// @param file stays open, at byte 62 or at its end if that comes first. A file that can't go back to its
    ///             start, such as a pipe, isn't read.
    static bool isOpenFlight(FILE* file);

    /// The same for the file of this name, whatever its ending. One that can't be opened isn't OpenFlight.
    static bool isOpenFlight(char const* fileName);

    /// Registers the class with the toolkit, and its base class if needed. A second call does nothing.
    static void initClass();

    /// Removes the class from the toolkit's types; initClass() may register it again. Does nothing if the
    /// class isn't registered.
    static void exitClass();

    /// The type of this class, or SoType::badType() while it isn't registered.
    static SoType getClassTypeId();

    /// A new reader. The type isn't looked at.
    static void* createFromSoType(SoType* type);

private:
    static SoType m_classTypeId;
    static int m_isFirstTime; ///< 0 while the class is registered.
};
