#pragma once

#include "textures/PicturePixels.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoTexture2.h>
#include <map>
#include <memory>
#include <string>
#include <sys/types.h>
#include <utility>

/// Makes the texture nodes of a conversion.
///
/// The toolkit opens the file of a texture when the node gets its name, and each node has a copy of the
/// pixels of its own. So that names in a database can neither stop the conversion nor fill the memory, the
/// toolkit gets no file that our own decoders haven't accepted; the node has the name alone then. And nodes
/// whose names lead to one file share the pixels from the second on.
class FltTextures
{
public:
    /// A new node of a name.
    SoNodeRef<SoTexture2> make(std::string const& name);

private:
    /// A file that was decoded once.
    struct File {
        bool isMet = false;
        std::string problem;                         ///< Why it isn't read.
        std::shared_ptr<PicturePixels const> pixels; ///< Of the second node on.
    };

    std::map<std::pair<dev_t, ino_t>, File> files;
};
