// Writes the page of a database.

#include "gltf/FltGltfPage.h"
#include "loader/FltLoader.h"

#include <cstdio>
#include <exception>
#include <memory>

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("usage: write_page FILE.flt OUT.html\n", stderr);
        return 2;
    }
    try {
        std::unique_ptr<FILE, int (*)(FILE*)> const file(std::fopen(argv[2], "wb"), &std::fclose);
        if (file == nullptr)
            return 1;
        FltGltfPage::write(FltLoader().loadVisual(argv[1]), file.get());
        return std::fflush(file.get()) == 0 ? 0 : 1;
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "write_page: %s\n", problem.what());
        return 1;
    }
}
