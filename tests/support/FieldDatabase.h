#pragma once

#include "writer/FltLayouts.h"
#include "writer/FltWriter.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

/// A small database with every record, each in a place where its fields can matter, several times where they
/// matter by turns.
class FieldDatabase
{
public:
    FieldDatabase();

    /// A field of one of its records.
    struct Field {
        std::string record; ///< As the writer names it.
        FltField layout;
        std::size_t recordOffset;
        std::size_t recordSize;
        std::size_t offset; ///< Of its first byte in the file.
        std::size_t count;  ///< Of its values, or of its bytes if it is text.
    };

    std::string const& bytes() const { return flt.bytes(); }
    std::vector<Field> const& fields() const { return all; }

    /// The records that stand in it.
    std::set<std::string> records() const;

    /// The file that it refers to.
    static std::string referencedBytes();

private:
    using Fields = FltWriter::Fields;
    using Offsets = std::vector<double>;

    FltWriter& add(std::string_view record, Fields const& fields = {});
    void addRaw(std::string const& record, int opcode, std::vector<FltField> const& layout,
                std::string const& body);
    void note(std::string const& record, std::vector<FltField> const& layout);
    void palettes();
    void addLight(int type);
    void vertices();
    void groups();
    void groupsInPlace();
    void faces();
    void face(Offsets const& corners, Fields const& fields, bool isMorph = false);
    void object(Offsets const& corners);
    void oldFaces();
    void meshes();
    void nodes();
    void lightPoints();

    FltWriter flt;
    std::vector<Field> all;
    Offsets colored, normal, textured, whole, indexed;
};
