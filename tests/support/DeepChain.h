#pragma once

#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <string>

/// Files that lead from one to the next: each has a triangle at its top, nested groups beside it, and a
/// reference to the next file at their bottom.
class DeepChain
{
public:
    DeepChain(int files, int levels)
    {
        for (int i = 0; i < files; ++i) {
            FltWriter flt;
            flt.vertexPalette();
            std::vector<double> corners;
            for (int corner = 0; corner < 3; ++corner)
                corners.push_back(flt.vertex("VertexColor", corner, corner * corner, i));
            flt.push().add("Object", {{"idASCII", "top"}}).push().face(corners).pop();
            for (int level = 0; level < levels; ++level)
                flt.add("Group", {{"idASCII", "g"}}).push();
            if (i + 1 < files)
                flt.add("ExternalReference", {{"asciiPath", nameOf(i + 1)}});
            for (int level = 0; level <= levels; ++level)
                flt.pop();
            flt.save(folder.path(nameOf(i)));
        }
    }

    static std::string nameOf(int file) { return "f" + std::to_string(file) + ".flt"; }

    /// The path of the file that leads to all others.
    std::string first() const { return folder / nameOf(0); }

    ScratchFolder folder;
};
