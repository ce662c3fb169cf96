#pragma once

/// What a reader of a file has to know of its header: mixed into the factory and into the records whose
/// layout depends on the format revision.
class FltVersion
{
public:
    int revision = 0;     ///< Format revision of the file, as stored: 1570 stands for 15.7, 11 to 14 are old.
    bool rgbMode = false; ///< The header's packed colour mode. Never copied into a record.
};
