#pragma once

/// How a scene is written into a file.
struct SceneForm {
    bool isVrml = false;         ///< VRML97, which has no binary form, rather than Open Inventor.
    bool isBinary = false;       ///< Instead of text.
    bool isCompressed = false;   ///< By gzip, which the toolkit undoes by itself when it reads.
    bool embedsTextures = false; ///< Pixels of textures rather than their names.

    /// Whether a terminal can show it.
    bool isText() const { return !isBinary && !isCompressed; }
};
