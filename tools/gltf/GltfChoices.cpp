#include "gltf/GltfChoices.h"

void GltfChoices::add(Program& program)
{
    program.choice("--lod", levels, {"all", "highest", "lowest", "split"}, "WHICH",
                   "Levels of detail: the finest or the coarsest alone, or all of them by MSFT_lod. Readers "
                   "without that extension show the finest, and some show all of them at once. Split writes "
                   "files for a tileset: NAME.glb with the finest, NAME.1.glb with what is seen from farther "
                   "away, and so on.");
    program.choice("--hidden", hidden, {"drop", "keep"}, "HOW",
                   "What becomes of parts that aren't shown, such as the other children of switches: left "
                   "out, or kept by KHR_node_visibility. Readers without that extension show them.");
    program.flag("--instancing", instances,
                 "Tell the copies of a replication at once, by EXT_mesh_gpu_instancing. Readers without that "
                 "extension refuse the file, since it requires it.");
    program.flag("--quantize", quantizes,
                 "Round the numbers of corners to few bits, by KHR_mesh_quantization. Readers without that "
                 "extension refuse the file, since it requires it.");
    program.flag(
        "--meshopt", compresses,
        "Compress meshes, by EXT_meshopt_compression; best together with --quantize. Readers without "
        "that extension refuse the file, since it requires it.");
    program.choice("--extras", extras, {"all", "none"}, "HOW",
                   "Whether nodes tell more of themselves in \"extras\": comments, joints and their limits, "
                   "places in the database.");
    program.choice("--lift", lift, {"auto", "none"}, "HOW",
                   "Whether markings that lie on other faces are moved in front of them by a few centimetres "
                   "at most. Otherwise both are in one place, and flicker.");
    program.flag(
        "--globe", isGlobe,
        "Put databases on the globe by their map projections: metres that go east, north and up at "
        "the middle of each, so that neighbours meet. One whose projection isn't known is an error.");
    program.flag("--tileset", isTileset,
                 "Write a tileset (3D Tiles 1.1) over the results, tileset.json beside them; --globe goes "
                 "with it. Databases without a place on the globe are models, which stand where others refer "
                 "to them by --xref file. What the tileset is made of is in --report, by default "
                 "tileset.jsonl beside it.");
}

void GltfChoices::check(std::string const& ending) const
{
    bool const isObj = ending == ".obj";
    if ((isObj || ending == ".html") && (instances || quantizes || compresses || extras == "none"))
        throw UsageError("--instancing, --quantize, --meshopt and --extras none are for .glb and .gltf");
    if (isObj && (levels == "all" || hidden == "keep"))
        throw UsageError("OBJ has no form for --lod all and --hidden keep");
    if (ending != ".glb" && (isTileset || areSplit()))
        throw UsageError("--tileset and --lod split are for .glb");
}

FltGltfOptions GltfChoices::options() const
{
    FltGltfOptions options;
    options.keepsLevels = levels == "all";
    options.keepsHidden = hidden == "keep";
    options.usesInstancing = instances;
    options.quantizes = quantizes;
    options.compresses = compresses;
    options.hasExtras = extras == "all";
    options.lifts = lift == "auto";
    return options;
}

FltLoader::LevelsOfDetail GltfChoices::levelsToLoad() const
{
    return levels == "lowest" ? FltLoader::LevelsOfDetail::lowest : FltLoader::LevelsOfDetail::all;
}
