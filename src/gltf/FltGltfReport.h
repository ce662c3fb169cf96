#pragma once

#include "visual/FltOmission.h"

#include <cstdint>
#include <string>
#include <vector>

/// What came of writing a glTF file.
struct FltGltfReport {
    std::vector<FltOmission> omissions;       ///< What has no form in glTF, or was asked to be left out.
    std::vector<std::string> missingTextures; ///< As stored, each once. What shows them has its colour alone.
    std::vector<std::string> files;           ///< That were written, the main one last.

    std::uint64_t bytes = 0;     ///< Of the main file.
    std::uint64_t nodes = 0;     ///< In the file.
    std::uint64_t meshes = 0;    ///< The same.
    std::uint64_t vertices = 0;  ///< Of all meshes, each once.
    std::uint64_t triangles = 0; ///< That are drawn: those of a mesh count for each node that shows it.
    std::uint64_t materials = 0; ///< In the file.
    std::uint64_t images = 0;    ///< The same.
};
