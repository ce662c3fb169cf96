#pragma once

#include <string>

/// How a scene is written into a file.
struct SceneForm {
    bool isVrml = false;       ///< VRML97, which has no binary form, rather than Open Inventor.
    bool isBinary = false;     ///< Instead of text.
    bool isCompressed = false; ///< By gzip, which the toolkit undoes by itself when it reads.

    /// The ending of such a file's name.
    std::string ending() const { return isVrml ? ".wrl" : ".iv"; }

    /// Whether a terminal can show it.
    bool isText() const { return !isBinary && !isCompressed; }
};
