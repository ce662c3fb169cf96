#include "tiles/FltTileFiles.h"

#include "gltf/FltGltf.h"
#include "tiles/FltTileReferences.h"
#include "visual/FltLevelsAtDistance.h"
#include "visual/FltVisualWalk.h"

#include <Inventor/SbVec3f.h>
#include <algorithm>
#include <cmath>
#include <filesystem>

namespace
{

namespace fs = std::filesystem;

/// Files of coarser forms.
constexpr std::size_t mostCoarser = 8;

/// How far faces are lifted at most for each face that they lie on, and what rounding may do, in metres.
constexpr double highestLift = 0.05, slack = 1e-3;

/// The box of all that is drawn, from whatever distance, where it is written.
SbBox3d boxOf(FltVisual const& visual)
{
    SbBox3d box;
    int level = 0;
    FltVisualWalk walk(visual.root, FltVisualWalk::LevelsOfDetail::all);
    while (walk.next()) {
        for (SbVec3f const& position : walk.mesh().positions) {
            SbVec3d point = walk.mesh().origin + SbVec3d(position);
            walk.matrix().multVecMatrix(point, point);
            if (std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]))
                box.extendBy(point);
        }
        level = std::max<int>({level, walk.mesh().level, walk.mesh().isOutlined ? 1 : 0});
    }
    if (box.isEmpty())
        return box;
    double const lift = highestLift * level + slack;
    return {box.getMin() - SbVec3d(lift, lift, lift), box.getMax() + SbVec3d(lift, lift, lift)};
}

/// At most eight of them, evenly.
std::vector<double> someOf(std::vector<double> const& distances)
{
    if (distances.size() <= mostCoarser)
        return distances;
    std::vector<double> some;
    for (std::size_t i = 0; i < mostCoarser; ++i)
        some.push_back(distances[i * (distances.size() - 1) / (mostCoarser - 1)]);
    return some;
}

std::vector<FltTile::Reference> referencesIn(std::shared_ptr<FltVisualNode const> const& root,
                                             FltGltfOptions const& options)
{
    std::vector<FltTile::Reference> references;
    for (auto const& [file, matrix] : FltTileReferences::in(root)) {
        std::optional<std::string> address = options.addressOf ? options.addressOf(file) : file;
        if (address)
            references.push_back({std::move(*address), matrix});
    }
    return references;
}

} // namespace

std::vector<std::string> FltTileFiles::coarserEndings()
{
    std::vector<std::string> endings;
    for (std::size_t number = 1; number <= mostCoarser; ++number)
        endings.push_back('.' + std::to_string(number) + ".glb");
    return endings;
}

FltTileFiles::Written FltTileFiles::write(FltVisual const& visual, std::string const& path,
                                          FltGltfOptions const& options, bool splits)
{
    Written written;
    written.tile.file = fs::path(path).filename().string();
    written.tile.place = options.globe;
    written.tile.box = boxOf(visual);
    FltLevelsAtDistance levels;
    auto const root = std::const_pointer_cast<FltVisualNode>(visual.root);
    FltVisual part = visual;
    part.root = levels.at(root, 0);
    written.tile.references = referencesIn(part.root, options);
    if (!splits || root == nullptr) {
        written.report = FltGltf::write(visual, path, options);
        return written;
    }
    written.report = FltGltf::write(part, path, options);
    std::vector<double> const all = FltLevelsAtDistance::changesOf(*root);
    std::vector<double> const distances = someOf(all);
    written.leftOut = all.size() - distances.size();
    std::vector<std::string> const endings = coarserEndings();
    for (double const distance : distances) {
        fs::path const file = fs::path(path).replace_extension(endings[written.tile.coarser.size()]);
        part.root = levels.at(root, distance);
        if (!FltVisualWalk(part.root).next()) {
            written.tile.coarser.push_back({"", distance});
            continue;
        }
        std::vector<std::string> const files = FltGltf::write(part, file.string(), options).files;
        written.report.files.insert(written.report.files.begin(), files.begin(), files.end());
        written.tile.coarser.push_back({file.filename().string(), distance});
    }
    return written;
}
