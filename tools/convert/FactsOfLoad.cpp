#include "convert/FactsOfLoad.h"

#include "convert/PeakMemory.h"

#include "visual/FltVisualWalk.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <unordered_set>
#include <utility>

namespace
{

double secondsNow()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::uint64_t trianglesIn(FltMesh const& mesh)
{
    std::uint64_t count = 0, corners = 0;
    for (std::int32_t const index :
         mesh.kind == FltMesh::Kind::faces ? mesh.indices : std::vector<std::int32_t>{}) {
        corners = index == FltMesh::end ? 0 : corners + 1;
        count += corners >= 3 ? 1 : 0;
    }
    return count;
}

void extend(std::optional<ConversionFacts::Box>& box, SbVec3d const& point)
{
    std::array<double, 3> const place = {point[0], point[1], point[2]};
    if (!std::all_of(place.begin(), place.end(), [](double number) { return std::isfinite(number); }))
        return;
    if (!box)
        box = ConversionFacts::Box{place, place};
    for (std::size_t axis = 0; axis < place.size(); ++axis) {
        box->least[axis] = std::min(box->least[axis], place[axis]);
        box->most[axis] = std::max(box->most[axis], place[axis]);
    }
}

} // namespace

FactsOfLoad::FactsOfLoad(std::string input) : input(std::move(input)), begin(secondsNow())
{
    PeakMemory::reset();
}

void FactsOfLoad::take(FltLoadReport const& report)
{
    for (FltMessage const& message : report.messages)
        gathered.messages[static_cast<std::size_t>(message.level) - 1] +=
            static_cast<std::uint64_t>(std::max(message.count, 0));
    std::unordered_set<std::string> missing;
    for (FltTexture const& texture : report.textures) {
        if (!texture.path.empty())
            needed.add(texture.path);
        else if (missing.insert(texture.name).second)
            gathered.missingTextures.push_back(texture.name);
    }
    for (FltReference const& reference : report.references)
        if (reference.isLoaded)
            needed.add(reference.path);
    gathered.latitude = report.info.originLatitude;
    gathered.longitude = report.info.originLongitude;
    gathered.projection = report.info.projection;
    gathered.ellipsoid = report.info.ellipsoid;
}

void FactsOfLoad::measure(FltVisual const& visual)
{
    FltVisualWalk walk(visual.root);
    while (walk.next()) {
        FltMesh const& mesh = walk.mesh();
        gathered.triangles += trianglesIn(mesh);
        for (SbVec3f const& position : mesh.positions) {
            SbVec3d place = mesh.origin + SbVec3d(position);
            walk.matrix().multVecMatrix(place, place);
            extend(gathered.box, place);
        }
    }
}

void FactsOfLoad::take(FltVisual const& visual)
{
    take(static_cast<FltLoadReport const&>(visual));
    measure(visual);
}

void FactsOfLoad::take(FltScene const& scene)
{
    take(FltLoadReport{scene.messages(), scene.textures(), scene.references(), scene.omissions(),
                       scene.info()});
}

void FactsOfLoad::takeWritten(std::vector<std::string> const& files, std::string const& output)
{
    std::unordered_set<std::string> known = {output};
    gathered.beside.emplace();
    for (std::string const& file : files)
        if (known.insert(file).second)
            gathered.beside->push_back({file, FileStamp::of(file).value_or(FileStamp()).size});
}

ConversionFacts FactsOfLoad::facts()
{
    needed.add(input);
    gathered.needs = needed.files();
    gathered.isSettled = needed.areSettled();
    gathered.seconds = secondsNow() - begin;
    gathered.memory = PeakMemory::bytes();
    return std::move(gathered);
}
