// Converts any bytes in memory as a database, does with the scene what a host does, and destroys it.

#include "FuzzTarget.h"

#include "support/ConvertedScene.h"
#include "support/SceneTraversal.h"
#include "support/SmallVertexPalettes.h"

void useDatabase(std::string const& bytes)
{
    static SmallVertexPalettes const small(16);
    ConvertedScene const scene(bytes, "memory/scene.flt", CaptureBuffer::nothing);
    traverseScene(scene.root);
    countTriangles(scene.root);
    useScene(scene.root);
}
