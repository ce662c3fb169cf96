// Reads any file that the toolkit can read. It knows nothing of OpenFlight, and opens a ".flt" all the same
// where VelloReader is installed.

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "Usage: read_any FILE\n";
        return 2;
    }
    SoInteraction::init();

    SoInput input;
    if (!input.openFile(argv[1]))
        return 1;
    SoSeparator* const root = SoDB::readAll(&input);
    if (root == nullptr)
        return 1;
    root->ref();
    SoGetPrimitiveCountAction count;
    count.apply(root);
    std::cout << argv[1] << ": " << count.getTriangleCount() << " triangles\n";
    root->unref();
    return 0;
}
