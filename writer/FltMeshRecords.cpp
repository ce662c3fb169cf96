#include "writer/FltMeshRecords.h"

#include "writer/FltWriter.h"

std::string FltMeshRecords::mesh(std::string const& name)
{
    constexpr std::size_t size = 80;
    constexpr std::size_t detailTexture = 26;
    constexpr std::size_t texture = 28;
    constexpr std::size_t material = 30;
    constexpr std::size_t mapping = 64;
    std::string body = name + std::string(size - name.size(), '\0');
    for (std::size_t const index : {detailTexture, texture, material, mapping})
        body.replace(index, 2, FltWriter::big16(-1));
    return body;
}

std::string FltMeshRecords::poolHead(std::size_t vertexCount, unsigned mask)
{
    return FltWriter::big32(static_cast<long>(vertexCount)) + FltWriter::big32(static_cast<long>(mask));
}

std::string FltMeshRecords::pool(std::vector<std::vector<double>> const& places)
{
    std::string body = poolHead(places.size(), hasPlace);
    for (std::vector<double> const& place : places)
        for (double const coordinate : place)
            body += FltWriter::bigDouble(coordinate);
    return body;
}

std::string FltMeshRecords::primitiveHead(int type, int bytesOfIndex, std::size_t indexCount)
{
    return FltWriter::big16(type) + FltWriter::big16(bytesOfIndex) +
           FltWriter::big32(static_cast<long>(indexCount));
}

std::string FltMeshRecords::primitive(int type, int bytesOfIndex, std::vector<int> const& indices)
{
    std::string body = primitiveHead(type, bytesOfIndex, indices.size());
    for (int const index : indices)
        body += FltWriter::big32(index).substr(4 - static_cast<std::size_t>(bytesOfIndex));
    return body;
}
