#pragma once

#include "loader/FltProjection.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

/// How a visual becomes a glTF file. Each option has the value that every reader draws alike.
struct FltGltfOptions {
    /// Whether what isn't shown is in the file as well, marked by KHR_node_visibility: hidden parts, the
    /// children that switches don't show, and all frames of flip-books. Readers without the extension show
    /// it.
    bool keepsHidden = false;

    /// Whether coarser levels of detail are in the file as well, by MSFT_lod. Readers without the extension
    /// show the finest alone, and some all of them at once.
    bool keepsLevels = false;

    /// Whether copies of meshes are told at once, by EXT_mesh_gpu_instancing: those of replications. Readers
    /// without the extension refuse the file.
    bool usesInstancing = false;

    /// Whether numbers of corners are rounded to few bits, by KHR_mesh_quantization. Readers without the
    /// extension refuse the file.
    bool quantizes = false;

    /// Whether meshes are compressed, by EXT_meshopt_compression. Readers without the extension refuse the
    /// file.
    bool compresses = false;

    /// Whether nodes tell more of themselves in `extras`: what docs/gltf.md lists.
    bool hasExtras = true;

    /// Whether faces that lie on others are moved a little in front of them. Otherwise both are drawn at the
    /// same place, and flicker.
    bool lifts = true;

    /// A directory for textures that several files share, each named by its content. Without one, they are in
    /// a .glb, and beside a .gltf.
    std::optional<std::string> textureDirectory;

    /// As FltLoader::onlyBelow. Textures elsewhere aren't read again, but written from their pixels.
    std::optional<std::string> onlyBelow;

    /// As FltLoader::largestFile, for textures.
    std::uint64_t largestFile = UINT64_MAX;

    /// Where the zero of the visual is on the globe, if FltGlobe has put it there, for `extras.globe`.
    std::optional<FltProjection::Place> globe;

    /// What the file says for a database that it refers to (FltVisualFile), in `extras.reference`; nothing
    /// for what is left out. Without this function it is the path.
    std::function<std::optional<std::string>(std::string const& path)> addressOf;
};
