#pragma once

#include "robustness/RandomValues.h"

#include <string>
#include <string_view>
#include <vector>

/// Writes one well-formed file of a StructuralDatabase: palettes, vertices of all forms, and a hierarchy of
/// random nodes with all that may decorate them.
class StructuralFile
{
public:
    /// How large the hierarchy becomes.
    struct Extent {
        unsigned nodes = 40;  ///< At most, and those of one level besides.
        unsigned levels = 12; ///< At most, below the nest.
        unsigned nest = 0;    ///< Levels of one node each, around all others.
        std::string next;     ///< A file that is referred to from the innermost of them; empty for none.
    };

    /// @param references names that external references bear
    StructuralFile(RandomValues& random, int revision, std::vector<std::string> references, Extent extent);

    /// The whole file. Call it once.
    std::string write();

private:
    using Fields = FltWriter::Fields;

    FltWriter& add(std::string_view record, Fields const& given = {});

    void addPalettes();
    void addVertices();
    std::vector<double> corners();

    void addLevel(unsigned depth);
    void addNode(unsigned depth);
    void addDecoration();
    void addTransformations();

    void addReplicate();
    void addExtension();
    void addSwitch();
    void addInstance();
    void addReference();
    void addRecordWithoutLayout();

    void addFaces(unsigned depth);
    void addFace(unsigned depth);
    std::string vertexPool(unsigned count, unsigned mask);
    void addMesh();
    void addPrimitive(unsigned vertexCount);
    void addOldFace();
    void addLightPoints();

    RandomValues& random;
    std::vector<std::string> references;
    Extent extent;
    FltWriter flt;
    std::vector<double> vertices; ///< Their offsets.
};
