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
    SoInteraction::init();
    SoInput input;
    SoSeparator* const root = argc == 2 && input.openFile(argv[1]) ? SoDB::readAll(&input) : nullptr;
    if (root == nullptr)
        return 1; // the toolkit has said why
    root->ref();
    SoGetPrimitiveCountAction count;
    count.apply(root);
    std::cout << argv[1] << ": " << count.getTriangleCount() << " triangles\n";
    root->unref();
    return 0;
}
