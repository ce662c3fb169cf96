#include "writer/FltWriter.h"

#include "writer/FltLayouts.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace
{

std::string bigEndian(std::uint64_t value, int bytes)
{
    std::string result;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        result += static_cast<char>(value >> shift & 0xff);
    return result;
}

FltLayout const& layoutOf(std::string_view record)
{
    for (FltLayout const& layout : fltLayouts())
        if (layout.name == record)
            return layout;
    throw std::logic_error("no layout for the record " + std::string(record));
}

} // namespace

std::string FltWriter::big16(long value)
{
    return bigEndian(static_cast<std::uint64_t>(value), 2);
}
std::string FltWriter::big32(long value)
{
    return bigEndian(static_cast<std::uint64_t>(value), 4);
}

std::string FltWriter::bigFloat(double value)
{
    auto const narrow = static_cast<float>(value);
    std::uint32_t word;
    std::memcpy(&word, &narrow, sizeof word);
    return bigEndian(word, 4);
}

std::string FltWriter::bigDouble(double value)
{
    std::uint64_t word;
    std::memcpy(&word, &value, sizeof word);
    return bigEndian(word, 8);
}

FltWriter::FltWriter(int revision, Fields const& header) : revision(revision)
{
    Fields fields = header;
    fields.insert(fields.begin(), {"formatRevisionLevel", revision});
    add("Header", fields);
}

FltWriter& FltWriter::add(std::string_view record, Fields const& fields)
{
    FltLayout const& layout = layoutOf(record);
    begin(layout.opcode);
    std::vector<bool> used(fields.size(), false);
    for (FltField const& field : layout.fields) {
        if (revision < field.fromRevision || revision >= field.belowRevision)
            continue;
        FltValue const* value = nullptr;
        for (std::size_t i = 0; i < fields.size(); ++i)
            if (!field.name.empty() && fields[i].first == field.name) {
                value = &fields[i].second;
                used[i] = true;
            }
        put(field, value);
    }
    auto const stray = std::find(used.begin(), used.end(), false);
    if (stray != used.end())
        throw std::logic_error(std::string(record) + " has no field " +
                               std::string(fields[static_cast<std::size_t>(stray - used.begin())].first) +
                               " at revision " + std::to_string(revision));
    end();
    return *this;
}

void FltWriter::put(FltField const& field, FltValue const* value)
{
    auto const fail = [&](char const* why) {
        throw std::logic_error("field " + std::string(field.name) + ": " + why);
    };
    bool const takesText = field.kind == FltKind::chars || field.kind == FltKind::bytes;
    if (value != nullptr && value->isText) {
        auto const size =
            field.count == FltField::rest ? value->text.size() : static_cast<std::size_t>(field.count);
        if (!takesText)
            fail("takes numbers");
        if (value->text.size() > size)
            fail("the text is too long");
        data += value->text;
        data.append(size - value->text.size(), '\0');
        return;
    }
    std::size_t const given = value != nullptr ? value->numbers.size() : 0;
    auto const count = field.count == FltField::rest ? given : static_cast<std::size_t>(field.count);
    if (given > count)
        fail("too many values");
    for (std::size_t i = 0; i < count; ++i)
        putNumber(field, i < given ? value->numbers[i] : static_cast<double>(field.initial));
}

void FltWriter::putNumber(FltField const& field, double number)
{
    if (field.kind == FltKind::f32)
        data += bigFloat(number);
    else if (field.kind == FltKind::f64)
        data += bigDouble(number);
    else
        data += bigEndian(static_cast<std::uint64_t>(static_cast<std::int64_t>(number)), sizeOf(field.kind));
}

void FltWriter::begin(int opcode)
{
    last = data.size();
    data += big16(opcode) + big16(0);
}

void FltWriter::end()
{
    claimLength(static_cast<unsigned>(data.size() - last));
}

FltWriter& FltWriter::addRaw(int opcode, std::string const& body)
{
    begin(opcode);
    data += body;
    end();
    return *this;
}

FltWriter& FltWriter::addBytes(std::string const& bytes)
{
    data += bytes;
    return *this;
}

FltWriter& FltWriter::vertexPalette(unsigned totalLength)
{
    nextVertexOffset = 8;
    paletteHead = data.size();
    return add("VertexPalette", {{"vertexPaletteTotalLength", totalLength}});
}

FltWriter& FltWriter::endVertexPalette()
{
    constexpr std::size_t headOfRecord = 4;
    data.replace(paletteHead + headOfRecord, 4, big32(nextVertexOffset));
    return *this;
}

int FltWriter::vertex(std::string_view form, double x, double y, double z, Fields fields)
{
    fields.insert(fields.end(), {{"Xcoordinate", x}, {"Ycoordinate", y}, {"Zcoordinate", z}});
    add(form, fields);
    int const offset = nextVertexOffset;
    nextVertexOffset += static_cast<int>(data.size() - last);
    return offset;
}

FltWriter& FltWriter::face(std::vector<double> const& offsets, Fields const& fields)
{
    return add("Face", fields).push().add("VertexList", {{"offsets", offsets}}).pop();
}

FltWriter& FltWriter::resizeLast(std::size_t length)
{
    data.resize(last + length, '\0');
    return claimLength(static_cast<unsigned>(length));
}

FltWriter& FltWriter::claimLength(unsigned length)
{
    data.replace(last + 2, 2, big16(length));
    return *this;
}

void FltWriter::save(std::string const& path) const
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(data.data(), static_cast<std::streamsize>(data.size()));
    if (!file.flush())
        throw std::runtime_error("cannot write " + path);
}
