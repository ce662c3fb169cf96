#include "BenchDatabase.h"

#include "writer/FltWriter.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <vector>

namespace
{

using BenchDatabase::Appearance;
using BenchDatabase::Vertices;

constexpr int revision = 1580;
constexpr int corners = 4;
constexpr int patternCount = 16;

/// Places in the records, in bytes from their beginning.
constexpr std::size_t placeOffset = 8;
constexpr std::size_t normalOffset = 32;
constexpr std::size_t colorOffset = 44;
constexpr std::size_t oldPlaceOffset = 4;
constexpr std::size_t nameOffset = 4;
constexpr std::size_t listOffset = 4;

constexpr std::size_t nameSize = 8;
constexpr std::size_t paletteHeadSize = 8;

std::string recordOf(std::string_view name, FltWriter::Fields const& fields = {})
{
    return FltWriter(revision).add(name, fields).lastRecord();
}

void patch(std::string& record, std::size_t offset, std::string const& bytes)
{
    record.replace(offset, bytes.size(), bytes);
}

/// A file in blocks, which begins with a header.
class Output
{
public:
    explicit Output(std::string const& path) : file(std::fopen(path.c_str(), "wb"), std::fclose)
    {
        if (file == nullptr)
            throw std::runtime_error("cannot write " + path);
        put(FltWriter(revision).bytes());
    }
    void put(std::string const& bytes)
    {
        if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
            throw std::runtime_error("the disk is full");
        size += bytes.size();
    }
    void push() { put(pushRecord); }
    void pop() { put(popRecord); }

    std::size_t size = 0;

private:
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file;
    std::string pushRecord = recordOf("PushLevel");
    std::string popRecord = recordOf("PopLevel");
};

/// The hills: what stands at a column and a row of the grid.
class Ground
{
public:
    std::string const& vertex(int column, int row)
    {
        double const x = xOf(column, row);
        double const y = yOf(column, row);
        double const slopeX = 1.2 * std::cos(0.01 * x) * std::cos(0.013 * y);
        double const slopeY = -1.56 * std::sin(0.01 * x) * std::sin(0.013 * y);
        double const norm = std::sqrt(slopeX * slopeX + slopeY * slopeY + 1.0);
        patch(record, placeOffset,
              FltWriter::bigDouble(x) + FltWriter::bigDouble(y) + FltWriter::bigDouble(heightOf(x, y)));
        patch(record, normalOffset,
              FltWriter::bigFloat(-slopeX / norm) + FltWriter::bigFloat(-slopeY / norm) +
                  FltWriter::bigFloat(1.0 / norm));
        patch(record, colorOffset, FltWriter::big32(0xff204000L + (column * 7 + row) % 256));
        return record;
    }

    std::string const& oldVertex(int column, int row)
    {
        double const x = xOf(column, row);
        double const y = yOf(column, row);
        patch(oldRecord, oldPlaceOffset,
              FltWriter::big32(std::lround(x)) + FltWriter::big32(std::lround(y)) +
                  FltWriter::big32(std::lround(heightOf(x, y))));
        return oldRecord;
    }

    std::size_t vertexSize() const { return record.size(); }

private:
    /// Whole millimetres, up to half a metre.
    static double jitter(int a, int b) { return (a * 7919LL + b * 104729LL) % 500 / 1000.0; }
    static double xOf(int column, int row) { return 2.5 * column + jitter(column, row); }
    static double yOf(int column, int row) { return 2.5 * row + jitter(row, column); }
    static double heightOf(double x, double y) { return 120.0 * std::sin(0.01 * x) * std::cos(0.013 * y); }

    std::string record = recordOf("VertexColorNormal", {{"flags", 0x1000}, {"vertexColorIndex", 127}});
    std::string oldRecord = recordOf("OldVertexColorNormal", {{"colorIndex", 127}});
};

/// A terrain on its way into a file.
class Terrain
{
public:
    Terrain(std::string const& path, int vertexCount, Vertices vertices, Appearance appearance)
        : file(path), vertexCount(vertexCount), vertices(vertices), appearance(appearance),
          columns(static_cast<int>(std::sqrt(isShared() ? vertexCount : vertexCount / corners)) + 1)
    {
        for (int i = 0; i < patternCount; ++i)
            faces.push_back(faceOf(i));
    }

    std::size_t write()
    {
        if (appearance == Appearance::changesAtEachFace)
            putPalettes();
        if (vertices != Vertices::old)
            putVertices();
        file.push();
        file.put(recordOf("Group", {{"idASCII", "terrain"}}));
        file.push();
        putObjects();
        file.pop();
        file.pop();
        return file.size;
    }

private:
    bool isShared() const { return vertices == Vertices::shared || vertices == Vertices::random; }

    std::string faceOf(int pattern) const
    {
        bool const changes = appearance == Appearance::changesAtEachFace;
        return recordOf("Face", {{"flags", 0x10000000L},
                                 {"packedColor", {255, 64, 128, 32}},
                                 {"texturePatternIndex", changes ? pattern : -1},
                                 {"materialIndex", changes ? pattern * 7 % patternCount : -1},
                                 {"primaryColorIndex", 127}});
    }

    void putPalettes()
    {
        for (int i = 0; i < patternCount; ++i)
            file.put(recordOf("TexturePattern",
                              {{"fileName", "t" + std::to_string(i) + ".rgb"}, {"patternIndex", i}}));
        for (int i = 0; i < patternCount; ++i)
            file.put(recordOf("Material", {{"index", i}, {"diffuse", {0.1, 0.5, i / 16.0}}, {"alpha", 1}}));
    }

    void putVertices()
    {
        std::size_t const size =
            paletteHeadSize + ground.vertexSize() * static_cast<std::size_t>(vertexCount);
        file.put(recordOf("VertexPalette", {{"vertexPaletteTotalLength", static_cast<double>(size)}}));
        for (int i = 0; i < vertexCount; ++i)
            file.put(isShared() ? ground.vertex(i % columns, i / columns)
                                : ground.vertex(columnOf(i), rowOf(i)));
    }

    void putObjects()
    {
        int const faceCount = isShared() ? vertexCount - columns - 1 : vertexCount / corners;
        for (int i = 0; i < faceCount; ++i) {
            if (i % BenchDatabase::facesInObject == 0) {
                if (i > 0)
                    file.pop();
                putObject(i / BenchDatabase::facesInObject);
            }
            file.put(faces[static_cast<std::size_t>(i % patternCount)]);
            file.push();
            putCorners(i);
            file.pop();
        }
        file.pop();
    }

    void putObject(int number)
    {
        std::string name = "o" + std::to_string(number % 1000000);
        name.resize(nameSize);
        patch(object, nameOffset, name);
        file.put(object);
        file.push();
    }

    void putCorners(int face)
    {
        if (vertices == Vertices::old) {
            for (int i = corners * face; i < corners * (face + 1); ++i)
                file.put(ground.oldVertex(columnOf(i), rowOf(i)));
            return;
        }
        bool const isTriangle = isShared() && face % 4 == 3;
        std::string& list = isTriangle ? triangle : quad;
        std::string offsets;
        for (int corner = 0; corner < (isTriangle ? 3 : corners); ++corner)
            offsets += FltWriter::big32(
                static_cast<long>(paletteHeadSize + ground.vertexSize() * vertexAt(face, corner)));
        patch(list, listOffset, offsets);
        file.put(list);
    }

    std::size_t vertexAt(int face, int corner)
    {
        switch (vertices) {
        case Vertices::shared: {
            int const steps[corners] = {0, 1, columns + 1, columns};
            return static_cast<std::size_t>(face) + static_cast<std::size_t>(steps[corner]);
        }
        case Vertices::random:
            random = random * 6364136223846793005U + 1442695040888963407U;
            return static_cast<std::size_t>((random >> 33) % static_cast<std::uint64_t>(vertexCount));
        default:
            return static_cast<std::size_t>(corners) * static_cast<std::size_t>(face) +
                   static_cast<std::size_t>(corner);
        }
    }

    /// Of a vertex that belongs to one face alone.
    /// @{
    int columnOf(int vertex) const
    {
        int const corner = vertex % corners;
        return vertex / corners % columns + (corner == 1 || corner == 2 ? 1 : 0);
    }
    int rowOf(int vertex) const { return vertex / corners / columns + (vertex % corners >= 2 ? 1 : 0); }
    /// @}

    Output file;
    int vertexCount;
    Vertices vertices;
    Appearance appearance;
    int columns;
    Ground ground;
    std::uint64_t random = 1;
    std::vector<std::string> faces;
    std::string object = recordOf("Object");
    std::string quad = recordOf("VertexList", {{"offsets", {0, 0, 0, 0}}});
    std::string triangle = recordOf("VertexList", {{"offsets", {0, 0, 0}}});
};

} // namespace

std::size_t BenchDatabase::writeTerrain(std::string const& path, int vertexCount, Vertices vertices,
                                        Appearance appearance)
{
    return Terrain(path, vertexCount, vertices, appearance).write();
}

std::size_t BenchDatabase::writeObjects(std::string const& path, int count, Names names)
{
    FltWriter palette(revision);
    palette.vertexPalette();
    std::size_t const before = palette.bytes().size();
    auto const corner = [&](int i) { return double(palette.vertex("VertexColorNormal", i, i % 2, 0)); };
    std::vector<double> const triangle = {corner(0), corner(1), corner(2)};
    FltWriter inside(revision);
    std::size_t const head = inside.bytes().size();
    inside.push().face(triangle).pop();
    std::string object = recordOf("Object", {{"idASCII", "o"}});

    Output file(path);
    file.put(recordOf("VertexPalette",
                      {{"vertexPaletteTotalLength",
                        static_cast<double>(paletteHeadSize + palette.bytes().size() - before)}}));
    file.put(palette.bytes().substr(before));
    file.push();
    for (int i = 0; i < count; ++i) {
        if (names == Names::distinct) {
            std::string name = "o" + std::to_string(i % 10000000);
            name.resize(nameSize);
            patch(object, nameOffset, name);
        }
        file.put(object);
        file.put(inside.bytes().substr(head));
    }
    file.pop();
    return file.size;
}

std::size_t BenchDatabase::writeTiles(std::string const& path, int count, int facesInEach)
{
    std::filesystem::path const folder = std::filesystem::path(path).parent_path();
    Output file(path);
    file.push();
    std::size_t size = 0;
    for (int i = 0; i < count; ++i) {
        std::string const name = "tile" + std::to_string(i) + ".flt";
        size += writeTerrain((folder / name).string(), corners * facesInEach, Vertices::ownOfEachFace);
        file.put(recordOf("ExternalReference", {{"asciiPath", name}}));
    }
    file.pop();
    return file.size + size;
}
