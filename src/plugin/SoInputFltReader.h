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
    /// A file that the input holds open is judged whatever its name, and stays open, at byte 62. Without one,
    /// the file of the input's name is opened if it ends in ".flt", in letters of any case.
    bool canConvert(SoInput* in) override;

    /// Converts the file of the input's name: FltToInventor::convertFromFile() with all its rules. An input
    /// without a name gives null.
    SoSeparator* convert(SoInput* in) override;

    /// Whether a file begins as an OpenFlight database that the reader takes: with a header record, of
    /// revision 11 to 14 or 1280 to 2303, whose unit multiplier is 1.
    ///
    /// | Bytes  | Value                                                                         |
    /// |--------|-------------------------------------------------------------------------------|
    /// | 0, 1   | 0, 1: the opcode of a header                                                  |
    /// | 12, 13 | 0, 0: the high half of the revision                                           |
    /// | 14, 15 | 0 and 11 to 14, or 5 to 8 and anything: its low half                          |
    /// | 60, 61 | 0, 1: the unit multiplier                                                     |
    ///
    /// FltToInventor::convert() itself takes more: any revision from 11 on, and any multiplier.
    /// @param file stays open, at byte 62 or at its end if that comes first. One that can't go back to its
    /// start, as a pipe, isn't read.
    static bool isOpenFlight(FILE* file);

    /// The same of the file of a name, whatever its ending. One that can't be opened isn't OpenFlight.
    static bool isOpenFlight(char const* fileName);

    /// Registers the class with the toolkit, and its base if need be. A second call does nothing.
    static void initClass();

    /// Takes the class out of the toolkit's types, after which initClass() may register it again. Without a
    /// registered class it does nothing.
    static void exitClass();

    /// The type of this class, or SoType::badType() while it isn't registered.
    static SoType getClassTypeId();

    /// A new reader. The type isn't looked at.
    static void* createFromSoType(SoType* type);

private:
    static SoType m_classTypeId;
    static int m_isFirstTime; ///< 0 while the class is registered.
};
