#pragma once

/// What an Object says of the look of all faces in it.
struct FltObjectLook {
    float transparency = 0;    ///< From 0 to 1.
    bool isUnlit = false;      ///< Its colours are what is seen, whatever its faces say.
    bool isFlatShaded = false; ///< Each face has one normal, whatever its vertices say.
};
