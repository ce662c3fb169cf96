#pragma once

#include "parser/FltRecordScan.h"
#include "toolkit/VelloReaderExport.h"

#include <array>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// What a database holds, found in one pass over its records: no scene is made, no other file is opened, and
/// nothing is printed.
///
/// Positions in the lists serve as numbers of nodes, faces and vertices: `none` stands for no such thing.
/// Lists are in the order of the file. Names are UTF-8, and may hold control characters.
class VELLOREADER_API FltInventory
{
public:
    static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

    /// What the offsets of vertex lists count.
    enum class Offsets {
        byPlace, ///< All bytes from the palette's head on, as the complete conversion takes them.
        bySums,  ///< Those of the vertices alone, as the exact conversion takes them.
    };

    /// Reads a database.
    /// @throw std::runtime_error as FltRecordScan does
    explicit FltInventory(std::string const& path, Offsets rule = Offsets::byPlace);

    /// What the header record says.
    struct Header {
        std::string name;
        int revision = 0;
        int editRevision = 0;
        std::string lastChange; ///< Date and time as the tool wrote them.
        int units = 0;          ///< 0 metres, 1 kilometres, 4 feet, 5 inches, 8 nautical miles.
        int unitMultiplier = 1; ///< Has a meaning up to revision 12 only.
        int projection = 0;
        int ellipsoid = 0;
        double originLatitude = 0, originLongitude = 0;       ///< Degrees.
        double southWestLatitude = 0, southWestLongitude = 0; ///< Degrees.
        double northEastLatitude = 0, northEastLongitude = 0; ///< Degrees.
    };

    /// A node of the hierarchy: the header itself, which is the first, groups, objects and so on. Faces and
    /// meshes have lists of their own. What stands in an extension, or in levels that are nested too deeply,
    /// is in none.
    struct Node {
        std::uint64_t offset = 0;
        std::uint64_t end = 0; ///< After the last byte of what belongs to it.
        std::string name;      ///< Its long id if it has one.
        int opcode = 0;
        std::uint32_t parent = none;
        std::uint32_t depth = 0;    ///< Nodes above it.
        std::uint32_t children = 0; ///< Nodes directly below it, also those that are left out.
        std::uint32_t faces = 0;    ///< Faces and meshes directly below it.
    };

    /// A vertex of the palette, or one of the old forms, which stand below a face.
    /// There may be millions, so they are kept small.
    struct Vertex {
        Vertex(std::uint64_t offset, int opcode, bool isWhole)
            : offset(offset), opcode(static_cast<std::uint8_t>(opcode)), isWhole(isWhole)
        {
        }

        std::uint64_t offset : 56;
        std::uint8_t opcode : 7;
        bool isWhole : 1; ///< Whether the file holds all of its coordinates.
    };

    /// What a face and a mesh have in common.
    struct Surface {
        std::uint64_t offset = 0;
        std::uint32_t node = none; ///< Whose face it is.
        std::int32_t color = -1;   ///< Index times 128 plus intensity; -1 if it has none.
        std::int32_t texture = -1;
        std::int32_t detailTexture = -1;
        std::int32_t material = -1;
        std::int32_t mapping = -1;
        std::uint32_t flags = 0;
        std::int8_t drawType = 0;
        std::uint8_t templateMode = 0;
        std::uint8_t lightMode = 0;
        std::uint8_t lineStyle = 0;
        bool isSubface = false;

        bool hasPackedColor() const { return (flags >> 28 & 1) != 0; }
        bool hasNoColor() const { return (flags >> 30 & 1) != 0; }
    };

    struct Face : Surface {
        std::uint32_t firstVertex = 0; ///< In faceVertices.
        std::uint32_t vertexCount = 0;
    };

    /// A primitive of a mesh.
    struct Primitive {
        std::uint64_t offset = 0;
        int type = 0; ///< 1 triangle strip, 2 fan, 3 quad strip, 4 polygon.
        std::uint32_t indexCount = 0;
        std::uint32_t badIndices = 0; ///< Those that the pool doesn't have, or the record doesn't hold.
    };

    struct Mesh : Surface {
        std::string name;
        bool hasPool = false;
        std::uint32_t poolVertices = 0;  ///< As the record says.
        std::uint32_t wholeVertices = 0; ///< Those that the pool's record holds.
        std::uint32_t poolMask = 0;
        std::vector<Primitive> primitives;
    };

    /// An offset of a vertex list that hits no vertex.
    struct LostOffset {
        std::uint64_t record = 0; ///< The list.
        std::uint32_t face = none;
        std::int64_t value = 0;
    };

    /// An entry of a palette that others name by its index.
    struct PaletteEntry {
        std::uint64_t offset = 0;
        std::string name;
        std::uint64_t uses = 0;
        std::uint64_t repetition = 0; ///< Where a later entry of the same index stands; 0 if none does.
    };
    using Palette = std::map<int, PaletteEntry>;

    struct Reference {
        std::uint64_t offset = 0;
        std::uint32_t node = none;
        std::string path; ///< As stored.
    };

    struct LevelOfDetail {
        std::uint32_t node = none;
        double switchIn = 0;  ///< Drawn nearer than this
        double switchOut = 0; ///< and not nearer than this, in units of the database.
        std::array<double, 3> centre{};
    };

    struct Switch {
        std::uint32_t node = none;
        int currentMask = 0;
        int maskCount = 0;
        int wordsPerMask = 0;
        std::vector<std::uint32_t> words; ///< Of all masks, as far as the record holds them.

        /// Whether a mask shows a child. False for what isn't there.
        bool shows(int mask, std::uint32_t child) const;
    };

    struct DegreeOfFreedom {
        struct Range {
            double least = 0, most = 0, current = 0;
            bool isLimited = false;
        };
        std::uint32_t node = none;
        std::array<Range, 9> ranges; ///< Translation x, y, z; pitch, roll, yaw; scale x, y, z.
        static char const* nameOf(std::size_t range);
    };

    struct Instance {
        std::uint32_t node = none;
        int number = 0;
    };

    /// A matrix of a node.
    struct Matrix {
        std::uint64_t offset = 0;
        std::uint32_t node = none;
        double determinant = 0; ///< Of its linear part.
    };

    /// A record that ends its level, or opens one, where none is to be.
    struct Imbalance {
        enum class Kind { popWithoutPush, pushWithoutNode, neverClosed };
        Kind kind;
        std::uint64_t offset = 0;
    };

    /// A record that says more about a node, and follows none: a Pop ends what belongs to one.
    struct Stray {
        std::uint64_t offset = 0;
        int opcode = 0;
    };

    /// A node that is left out, with all that stands beside and below it, because it is nested too deeply.
    struct TooDeep {
        std::uint64_t offset = 0;
        int opcode = 0;
        std::uint32_t node = none; ///< Below which it stands.
    };

    struct Complaint {
        std::uint64_t offset = 0;
        int opcode = 0;
        std::string text;
    };

    struct ShortRecord {
        std::uint64_t offset = 0;
        int opcode = 0;
        unsigned int length = 0;
        std::size_t leastLength = 0;
    };

    struct Opcode {
        std::uint64_t count = 0;
        std::uint64_t bytes = 0;
        std::uint64_t first = 0; ///< Where the first one stands.
    };

    std::string const& path() const { return fileName; }
    std::string_view file() const { return scan.file(); }
    std::uint64_t bytes() const { return scan.file().size(); }
    std::uint64_t records() const { return recordCount; }

    Header header;
    std::map<int, Opcode> opcodes;
    std::vector<Node> nodes; ///< In preorder; the first is the header.
    std::vector<Vertex> vertices;
    std::vector<Face> faces;
    std::vector<std::uint32_t> faceVertices; ///< Positions in vertices; none for one that is lost.
    std::vector<LostOffset> lostOffsets;
    std::vector<Mesh> meshes;
    Palette textures, materials, lineStyles, textureMappings, lights;
    bool hasColorPalette = false;
    bool hasOldMaterialPalette = false;
    std::vector<Reference> references;
    std::vector<LevelOfDetail> levelsOfDetail;
    std::vector<Switch> switches;
    std::vector<DegreeOfFreedom> degreesOfFreedom;
    std::vector<Instance> instanceDefinitions, instanceReferences;
    std::vector<Instance> lightSources; ///< With the index in the palette as number.
    std::vector<Matrix> matrices;
    std::vector<Imbalance> imbalances;
    std::vector<Stray> strays;
    std::vector<TooDeep> tooDeep;
    std::vector<Complaint> complaints;
    std::vector<ShortRecord> shortRecords;

    /// Why and where the records end before the bytes do.
    FltFraming::Fault fault() const { return scan.fault(); }
    std::uint64_t faultOffset() const { return scan.offset(); }

    /// The position of a vertex in units of the database.
    /// Of one that the file doesn't hold in whole, what is missing is zero.
    std::array<double, 3> position(std::uint32_t vertex) const;

    /// Triangles that faces and meshes make.
    std::uint64_t triangles() const;

    /// The names of the nodes from the header's children down to a node: "airport/tower". Of a
    /// long way only the lower end.
    std::string pathOf(std::uint32_t node) const;

    /// Whether the bytes hold no carriage return although there are enough of them for some: a transfer as
    /// text has replaced or removed them.
    bool lacksCarriageReturns() const;

private:
    friend class FltInventoryBuilder;

    std::string fileName;
    FltRecordScan scan;
    std::uint64_t recordCount = 0;
};
