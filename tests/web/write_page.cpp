// Writes the page of a database.

#include "gltf/FltGltfPage.h"
#include "loader/FltLoader.h"

#include <cstdio>
#include <exception>

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("usage: write_page FILE.flt OUT.html\n", stderr);
        return 2;
    }
    try {
        FltGltfPage::write(FltLoader().loadVisual(argv[1]), argv[2]);
        return 0;
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "write_page: %s\n", problem.what());
        return 1;
    }
}
