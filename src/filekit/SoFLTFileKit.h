#pragma once

#include "toolkit/VelloReaderExport.h"

#include <Inventor/annex/ForeignFiles/SoForeignFileKit.h>

/// OpenFlight databases for every program on the toolkit: SoDB::readAll(), SoFile and SoInput read a ".flt"
/// as if it were the toolkit's own format. The toolkit finds this class by its name, and loads it from
/// libSoFLTFileKit.so, once the program has called SoNodeKit::init() or SoInteraction::init().
class VELLOREADER_API SoFLTFileKit : public SoForeignFileKit
{
    using inherited = SoForeignFileKit;

    SO_KIT_HEADER(SoFLTFileKit);

public:
    /// Registers the class, and the ending ".flt". The toolkit calls it after loading the library. A second
    /// call does nothing.
    static void initClass();

    SoFLTFileKit();

    /// Whether the file begins as an OpenFlight database, by the rules of SoInputFltReader::isOpenFlight().
    /// Without a name: whether files can be read at all, which is true.
    SbBool canReadFile(char const* fileName = nullptr) const override;

    /// Converts the file and puts its scene into the part "topSeparator". std::cout stays as it is.
    /// @return whether that worked. If not, the reason is reported to the toolkit, an earlier scene stays.
    SbBool readFile(char const* fileName) override;

    /// The scene without the kit, which keeps its reference to it; null if no file was read.
    SoSeparator* convert() override;

protected:
    ~SoFLTFileKit() override;
};
