#include "CountryModels.h"

#include "Model.h"
#include "Noise.h"

#include <cmath>

namespace
{

constexpr int windows = 0, corrugation = 1;

FltWriter begin(char const* id, VertexPalette const& palette)
{
    FltWriter flt(1570, {{"id", id}, {"lastRevisionDateTime", "Mon Jan  5 09:00:00 2026"}});
    flt.add("TexturePattern", {{"fileName", "../textures/windows.png"}, {"patternIndex", windows}});
    flt.add("TexturePattern", {{"fileName", "../textures/corrugation.rgb"}, {"patternIndex", corrugation}});
    palette.write(flt);
    return flt;
}

/// A level of detail from a distance to a nearer one.
FltWriter& openLevel(FltWriter& flt, char const* id, double from, double to)
{
    return flt.add("LOD", {{"idASCII", id}, {"switchInDistance", from}, {"switchOutDistance", to}}).push();
}

void addWalls(Model& house, Point low, Point high, double repeatsAlong, FltWriter::Fields const& look)
{
    Point const corners[4] = {
        {low.x, low.y, low.z}, {high.x, low.y, low.z}, {high.x, high.y, low.z}, {low.x, high.y, low.z}};
    Point const up{0, 0, high.z - low.z};
    for (int i = 0; i < 4; ++i) {
        Point const a = corners[i], b = corners[(i + 1) % 4];
        house.panel({a, b, b + up, a + up}, i % 2 == 0 ? repeatsAlong : repeatsAlong / 2, 1, look);
    }
}

/// A roof with its ridge along x.
void addRoof(Model& house, Point low, Point high, Color color)
{
    double const middle = (low.y + high.y) / 2;
    Point const west{low.x, middle, high.z}, east{high.x, middle, high.z};
    Point const a{low.x, low.y, low.z}, b{high.x, low.y, low.z}, c{high.x, high.y, low.z},
        d{low.x, high.y, low.z};
    house.polygon({a, b, east, west}, painted(color));
    house.polygon({c, d, west, east}, painted(color));
    house.polygon({d, a, west}, painted(color * 0.9));
    house.polygon({b, c, east}, painted(color * 0.9));
}

Model makeTree(VertexPalette& palette, int sides, Color color)
{
    Model tree(palette);
    tree.turned({0, 0, 0}, 0.4, 0.3, 2.5, 4, painted({96, 70, 48}));
    tree.turned({0, 0, 2}, 3.2, 0, 10, sides, painted(color));
    return tree;
}

} // namespace

std::string makeFarm()
{
    VertexPalette palette;
    Model house(palette), barn(palette), fromAfar(palette);
    addWalls(house, {-9, -5, 0}, {9, 5, 5}, 6, textured(windows));
    addRoof(house, {-10, -6, 5}, {10, 6, 9}, {158, 82, 62});
    addWalls(barn, {14, -7, 0}, {40, 9, 6}, 8, textured(corrugation, {176, 120, 96}));
    addRoof(barn, {13, -8, 6}, {41, 10, 11}, {120, 112, 104});
    fromAfar.box({-10, -6, 0}, {10, 6, 8}, painted({190, 140, 120}));
    fromAfar.box({13, -8, 0}, {41, 10, 9}, painted({130, 112, 100}));

    FltWriter flt = begin("farm", palette);
    flt.push();
    openLevel(flt, "near", 2000, 0);
    house.write(flt, "house");
    barn.write(flt, "barn");
    flt.pop();
    openLevel(flt, "far", 12000, 2000);
    fromAfar.write(flt, "boxes");
    flt.pop().pop();
    return flt.bytes();
}

std::string makeWood()
{
    constexpr int count = 12;
    VertexPalette palette;
    Model const nearTree = makeTree(palette, 7, {52, 92, 46}), farTree = makeTree(palette, 3, {48, 86, 44});
    FltWriter flt = begin("wood", palette);
    flt.push();
    auto const plant = [&](Model const& tree) {
        for (int i = 0; i < count; ++i) {
            double const angle = 2 * M_PI * lattice(i, 3), far = 38 * std::sqrt(lattice(i, 11));
            tree.write(flt, "tree" + std::to_string(i),
                       placedAt({far * std::cos(angle), far * std::sin(angle), -1}, 90 * lattice(i, 7),
                                0.9 + 0.6 * lattice(i, 5)));
        }
        flt.pop();
    };
    openLevel(flt, "near", 1500, 0);
    plant(nearTree);
    openLevel(flt, "far", 8000, 1500);
    plant(farTree);
    flt.pop();
    return flt.bytes();
}

std::string makeMast()
{
    VertexPalette palette;
    Model mast(palette);
    mast.box({-3, -3, -2}, {3, 3, 4}, painted({180, 180, 176}));
    for (int i = 0; i < 6; ++i)
        mast.turned({0, 0, 4.0 + 12 * i}, 1.4 - 0.2 * i, 1.2 - 0.2 * i, 12, 6,
                    i % 2 == 0 ? painted({200, 42, 42}) : painted({244, 246, 248}));
    FltWriter flt = begin("mast", palette);
    flt.push();
    mast.write(flt, "mast");
    flt.pop();
    return flt.bytes();
}
