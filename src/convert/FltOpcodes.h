#pragma once

/// The opcodes that steer the walk over the faces of a hierarchy.
namespace FltOpcodes
{

constexpr int object = 4;
constexpr int face = 5;
constexpr int oldVertex = 7;
constexpr int oldVertexColor = 8;
constexpr int oldVertexColorNormal = 9;
constexpr int pushLevel = 10;
constexpr int popLevel = 11;
constexpr int pushSubface = 19;
constexpr int popSubface = 20;
constexpr int vertexList = 72;
constexpr int morphVertexList = 89;

/// A record above ends the contents of an Object.
constexpr int lastOfObject = 132;

} // namespace FltOpcodes
