#pragma once

#include "toolkit/VelloReaderExport.h"

#include <Inventor/annex/ForeignFiles/SoForeignFileKit.h>

/// OpenFlight databases for every program on the toolkit: SoDB::readAll(), SoFile and SoInput read a ".flt"
/// as if it were the toolkit's own format. The toolkit finds this class by its name, and loads it from
/// libSoFLTFileKit.so, once the program has called SoNodeKit::init() or SoInteraction::init(). Where the
/// toolkit was loaded with private symbols, as by Python, it doesn't look: load the library, and call
/// initClass().
class VELLOREADER_API SoFLTFileKit : public SoForeignFileKit
{
    using inherited = SoForeignFileKit;

    SO_KIT_HEADER(SoFLTFileKit);

public:
    /// Registers the class, and the ending ".flt". The toolkit calls it after loading the library. A second
    /// call does nothing.
    static void initClass();

    SoFLTFileKit();

    /// Whether the file begins like a database that is converted, by the rules of FltLoader::canLoad().
    /// Without a name: whether files can be read at all, which is true.
    SbBool canReadFile(char const* fileName = nullptr) const override;

    /// Loads the file by FltLoader with its defaults, and puts its scene into the part "topSeparator".
    /// Messages are reported to the toolkit.
    /// @return whether that worked. If not, the reason is reported to the toolkit, and an earlier scene
    /// stays.
    SbBool readFile(char const* fileName) override;

    /// The scene without the kit, which keeps its reference to it; null if no file was read.
    SoSeparator* convert() override;

protected:
    ~SoFLTFileKit() override;
};
