// Loads the library as a plug-in, and goes through the reader class that it registers with the toolkit.

#include "toolkit/SoInputReader.h"

#include <Inventor/SoInput.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <dlfcn.h>
#include <filesystem>
#include <iostream>

int main(int argc, char** argv)
{
    SoInteraction::init();
    void* const library = dlopen("libzov.inventor.io.flt", RTLD_NOW);
    if (argc != 2 || library == nullptr) {
        std::cerr << (argc != 2 ? "Usage: load_plugin FILE.flt" : dlerror()) << '\n';
        return 2;
    }
    auto const initPlugin = reinterpret_cast<void (*)()>(dlsym(library, "initPlugin"));
    auto const exitPlugin = reinterpret_cast<void (*)()>(dlsym(library, "exitPlugin"));
    initPlugin();
    auto* const reader = static_cast<SoInputReader*>(SoType::fromName("InputFltReader").createInstance());
    int exitCode = 1;
    // The library looks for the files that a database refers to beside it: so it gets the whole path.
    std::filesystem::path const path = std::filesystem::absolute(argv[1]);
    SoInput input;
    if (input.openFile(path.c_str()) && reader->canConvert(&input)) {
        // A conversion leaves std::cout on its closed log, so the program puts its own buffer back.
        std::streambuf* const output = std::cout.rdbuf();
        SoSeparator* const root = reader->convert(&input);
        std::cout.rdbuf(output);

        SoGetPrimitiveCountAction count;
        count.apply(root);
        std::cout << argv[1] << ": " << count.getTriangleCount() << " triangles\n";
        root->unref();
        exitCode = 0;
    } else {
        std::cerr << argv[1] << ": not an OpenFlight database\n";
    }
    delete reader;
    exitPlugin();
    dlclose(library);
    return exitCode;
}
