// Writes the database that the test of the window clicks through.

#include "ViewDatabase.h"

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: write_view_database OUT.flt\n", stderr);
        return 2;
    }
    viewDatabase().save(argv[1]);
    return 0;
}
