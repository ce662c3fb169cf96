// Links the library, loads a database and counts its triangles.

#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <VelloReader/FltLoader.h>
#include <iostream>

int main(int argc, char** argv)
try {
    FltScene const scene = FltLoader().load(argc == 2 ? argv[1] : "");
    for (FltMessage const& message : scene.messages())
        std::cerr << message.text << '\n';
    SoGetPrimitiveCountAction count;
    count.apply(scene.root());
    std::cout << argv[1] << ": " << count.getTriangleCount() << " triangles\n";
    return 0;
} catch (FltLoadError const& problem) {
    std::cerr << problem.what() << '\n';
    return 1;
}
