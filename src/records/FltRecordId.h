#pragma once

#include "records/FltDumpStyles.h"

/// What the records of nodes begin with, whatever their class, but for those of instances.
struct FltRecordId {
    char idASCII[8] = {}; ///< Not terminated when it fills its eight characters.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::nothing);
    }
};
