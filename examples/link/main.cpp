// Links the library, converts a database and counts its triangles.

#include "plugin/Plugin.h"

#include <Inventor/SoInput.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <filesystem>
#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "Usage: count_triangles FILE.flt\n";
        return 2;
    }
    SoInteraction::init();

    // The toolkit looks for textures in its directories, and the library for the files that a database refers
    // to beside it: so it gets the whole path.
    std::filesystem::path const path = std::filesystem::absolute(argv[1]);
    SoInput::addDirectoryFirst(path.parent_path().c_str());

    // A conversion leaves std::cout on its closed log, so the program puts its own buffer back.
    std::streambuf* const output = std::cout.rdbuf();
    SoSeparator* const root = convertFrom(path.c_str());
    std::cout.rdbuf(output);

    // The scene comes with one reference, which is ours. A file that isn't OpenFlight gives an empty
    // separator with none.
    if (root == nullptr || root->getRefCount() == 0) {
        std::cerr << argv[1] << ": not an OpenFlight database\n";
        return 1;
    }
    SoGetPrimitiveCountAction count;
    count.apply(root);
    std::cout << argv[1] << ": " << count.getTriangleCount() << " triangles\n";
    root->unref();
    return 0;
}
