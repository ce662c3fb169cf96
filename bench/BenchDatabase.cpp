#include "BenchDatabase.h"

#include "writer/FltWriter.h"

#include <cmath>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace
{

constexpr int revision = 1570;

/// Places in the records, in bytes from their beginning.
constexpr std::size_t placeOffset = 8;
constexpr std::size_t normalOffset = 32;
constexpr std::size_t colorOffset = 44;
constexpr std::size_t nameOffset = 4;
constexpr std::size_t listOffset = 4;

std::string recordOf(std::string_view name, FltWriter::Fields const& fields = {})
{
    return FltWriter(revision).add(name, fields).lastRecord();
}

void patch(std::string& record, std::size_t offset, std::string const& bytes)
{
    record.replace(offset, bytes.size(), bytes);
}

/// A file in blocks.
class Output
{
public:
    explicit Output(std::string const& path) : file(std::fopen(path.c_str(), "wb"), std::fclose)
    {
        if (file == nullptr)
            throw std::runtime_error("cannot write " + path);
    }
    void put(std::string const& bytes)
    {
        if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
            throw std::runtime_error("the disk is full");
        size += bytes.size();
    }

    std::size_t size = 0;

private:
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file;
};

class Terrain
{
public:
    explicit Terrain(int vertexCount)
        : columns(static_cast<int>(std::sqrt(vertexCount / BenchDatabase::verticesInFace)) + 1)
    {
    }

    /// The bytes of one corner of a face.
    std::string const& vertex(int face, int corner)
    {
        int const column = face % columns + (corner == 1 || corner == 2 ? 1 : 0);
        int const row = face / columns + (corner >= 2 ? 1 : 0);
        double const x = 2.5 * column + jitter(column, row);
        double const y = 2.5 * row + jitter(row, column);
        double const height = 120.0 * std::sin(0.01 * x) * std::cos(0.013 * y);
        double const slopeX = 1.2 * std::cos(0.01 * x) * std::cos(0.013 * y);
        double const slopeY = -1.56 * std::sin(0.01 * x) * std::sin(0.013 * y);
        double const norm = std::sqrt(slopeX * slopeX + slopeY * slopeY + 1.0);
        patch(record, placeOffset,
              FltWriter::bigDouble(x) + FltWriter::bigDouble(y) + FltWriter::bigDouble(height));
        patch(record, normalOffset,
              FltWriter::bigFloat(-slopeX / norm) + FltWriter::bigFloat(-slopeY / norm) +
                  FltWriter::bigFloat(1.0 / norm));
        patch(record, colorOffset, FltWriter::big32(0xff204000L + (column * 7 + row) % 256));
        return record;
    }

    std::size_t vertexSize() const { return record.size(); }

private:
    /// Whole millimetres, up to half a metre.
    static double jitter(int a, int b) { return (a * 7919 + b * 104729) % 500 / 1000.0; }

    int columns;
    std::string record = recordOf("VertexColorNormal", {{"flags", 0x1000}, {"vertexColorIndex", 127}});
};

} // namespace

std::size_t BenchDatabase::write(std::string const& path, int vertexCount)
{
    int const faceCount = vertexCount / verticesInFace;
    Terrain terrain(vertexCount);
    std::string const push = recordOf("PushLevel");
    std::string const pop = recordOf("PopLevel");
    std::string const face = recordOf("Face", {{"flags", 0x10000000L},
                                               {"packedColor", {255, 64, 128, 32}},
                                               {"materialIndex", -1},
                                               {"primaryColorIndex", 127}});
    std::string object = recordOf("Object");
    std::string list = recordOf("VertexList", {{"offsets", {0, 0, 0, 0}}});

    Output file(path);
    file.put(FltWriter(revision).bytes());
    file.put(recordOf("VertexPalette",
                      {{"vertexPaletteTotalLength", 8 + terrain.vertexSize() * std::size_t(vertexCount)}}));
    for (int i = 0; i < faceCount; ++i)
        for (int corner = 0; corner < verticesInFace; ++corner)
            file.put(terrain.vertex(i, corner));

    file.put(push + recordOf("Group", {{"idASCII", "terrain"}}) + push);
    long offset = 8;
    for (int i = 0; i < faceCount; ++i) {
        if (i % facesInObject == 0) {
            std::string name = "o" + std::to_string(i / facesInObject % 1000000);
            name.resize(8);
            patch(object, nameOffset, name);
            if (i > 0)
                file.put(pop);
            file.put(object);
            file.put(push);
        }
        std::string offsets;
        for (int corner = 0; corner < verticesInFace; ++corner) {
            offsets += FltWriter::big32(offset);
            offset += static_cast<long>(terrain.vertexSize());
        }
        patch(list, listOffset, offsets);
        file.put(face);
        file.put(push);
        file.put(list);
        file.put(pop);
    }
    file.put(pop + pop + pop);
    return file.size;
}
