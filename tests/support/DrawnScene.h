#pragma once

#include <Inventor/SbVec3f.h>
#include <array>
#include <string>
#include <vector>

class SoNode;

/// What the toolkit draws of a scene: triangles, lines and points in world coordinates, each with the state
/// in which it is drawn.
struct DrawnScene {
    struct Primitive {
        std::vector<SbVec3f> points; ///< Three of a triangle, two of a line, or one.
        std::vector<SbVec3f> normals;
        std::vector<std::array<int, 4>> colors; ///< Red, green, blue and alpha of each point, from 0 to 255.
        std::vector<std::string> names;         ///< Of the nodes above it, from the root.
        bool isLit = false;
        bool isTwoSided = false;
        bool isClockwise = false; ///< Whether the front is the side from which the points go clockwise.
        SbVec3f emission;

        /// The direction that the front of a triangle looks to.
        SbVec3f front() const;

        /// The colour of the first point, as "255 0 0 255".
        std::string color() const;
    };

    explicit DrawnScene(SoNode* root);

    std::vector<Primitive> triangles;
    std::vector<Primitive> lines;
    std::vector<Primitive> points;

    /// The sum of the triangles' areas.
    double area() const;

    /// The smallest and the largest coordinates of all that is drawn, rounded to a thousandth:
    /// "0 0 0 to 1 1 0".
    std::string extent() const;
};
