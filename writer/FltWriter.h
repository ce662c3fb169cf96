#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct FltField;

/// A value for a field of a record: a number, a text, or several numbers.
class FltValue
{
public:
    FltValue(int number) : numbers{static_cast<double>(number)} {}
    FltValue(unsigned number) : numbers{static_cast<double>(number)} {}
    FltValue(long number) : numbers{static_cast<double>(number)} {}
    FltValue(unsigned long number) : numbers{static_cast<double>(number)} {}
    FltValue(double number) : numbers{number} {}
    FltValue(char const* text) : text(text), isText(true) {}
    FltValue(std::string text) : text(std::move(text)), isText(true) {}
    FltValue(std::initializer_list<double> numbers) : numbers(numbers) {}
    FltValue(std::vector<double> numbers) : numbers(std::move(numbers)) {}

    std::vector<double> numbers;
    std::string text;
    bool isText = false;
};

/// Writes OpenFlight databases record by record, so that a test reads as the description of one.
///
/// A record is named as its class without the "FltRecord", its fields as the system names them
/// (FltLayouts.cpp has the list); what isn't given is zero. An unknown name, a text for a number or too many
/// values throw std::logic_error.
///
///     FltWriter flt(1570);
///     flt.add("Group", {{"idASCII", "g1"}}).push();
///     flt.add("Object", {{"idASCII", "o1"}}).push().face({a, b, c}).pop().pop();
class FltWriter
{
public:
    using Fields = std::vector<std::pair<std::string_view, FltValue>>;

    /// Begins a database with its header.
    explicit FltWriter(int revision = 1570, Fields const& header = {});

    /// Adds a record.
    FltWriter& add(std::string_view record, Fields const& fields = {});

    /// Adds a record of any opcode with these bytes after its length.
    FltWriter& addRaw(int opcode, std::string const& body = {});

    /// Adds bytes that are no record.
    FltWriter& addBytes(std::string const& bytes);

    FltWriter& push() { return add("PushLevel"); }
    FltWriter& pop() { return add("PopLevel"); }

    /// Adds the head of the vertex palette, from which offsets count.
    FltWriter& vertexPalette(unsigned totalLength = 8);

    /// Has the head of the vertex palette say how long the palette is, once all of its vertices are added.
    FltWriter& endVertexPalette();

    /// Adds a vertex ("VertexColor", "VertexColorNormal", "VertexColorUv" or "VertexColorNormalUv") at a
    /// place.
    /// @return its offset in the palette
    int vertex(std::string_view form, double x, double y, double z, Fields fields = {});

    /// Adds a face and its vertex list in a level of its own.
    FltWriter& face(std::vector<double> const& offsets, Fields const& fields = {});

    /// Cuts the last record to a length, or fills it up with zeros, and has its length word say so.
    FltWriter& resizeLast(std::size_t length);

    /// Has the length word of the last record say something else than it is.
    FltWriter& claimLength(unsigned length);

    /// Where the last record begins.
    std::size_t lastOffset() const { return last; }

    /// The database so far.
    std::string const& bytes() const { return data; }

    /// The last record alone.
    std::string lastRecord() const { return data.substr(last); }

    int getRevision() const { return revision; }

    /// Writes the database into a file. Throws std::runtime_error if that fails.
    void save(std::string const& path) const;

    /// @name Bytes in the order of the format
    /// @{
    static std::string big16(long value);
    static std::string big32(long value);
    static std::string bigFloat(double value);
    static std::string bigDouble(double value);
    /// @}

private:
    void put(FltField const& field, FltValue const* value);
    void putNumber(FltField const& field, double number);
    void begin(int opcode);
    void end();

    int revision;
    std::string data;
    std::size_t last = 0;
    std::size_t paletteHead = 0;
    int nextVertexOffset = 8;
};
