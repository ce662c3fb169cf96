#include "complete/FltCompleteOpcode.h"

#include <algorithm>
#include <iterator>

namespace
{

using FltCompleteOpcode::Role;

struct Row {
    int opcode;
    Role role;
    unsigned int shortest;
    unsigned int longest;
    char const* name;
};

constexpr unsigned int any = 65535;

/// In the order of the opcodes.
constexpr Row rows[] = {
    {1, Role::palette, 128, 1024, "header"},
    {2, Role::node, 24, 64, "group"},
    {3, Role::node, 24, 80, "old level of detail"},
    {4, Role::node, 16, 64, "object"},
    {5, Role::node, 24, 128, "face"},
    {7, Role::node, 16, 24, "old vertex"},
    {8, Role::node, 20, 28, "old vertex with colour"},
    {9, Role::node, 32, 40, "old vertex with colour and normal"},
    {10, Role::push, 4, 4, "push level"},
    {11, Role::pop, 4, 4, "pop level"},
    {14, Role::node, 100, 512, "degree of freedom"},
    {19, Role::push, 4, 4, "push subface"},
    {20, Role::pop, 4, 4, "pop subface"},
    {21, Role::pushExtension, 4, 32, "push extension"},
    {22, Role::popExtension, 4, 32, "pop extension"},
    {23, Role::ancillary, 4, any, "continuation"},
    {31, Role::ancillary, 4, any, "comment"},
    {32, Role::palette, 4, any, "color palette"},
    {33, Role::ancillary, 4, any, "long id"},
    {49, Role::ancillary, 68, 68, "matrix"},
    {50, Role::ancillary, 16, 16, "vector"},
    {51, Role::ancillary, 4, 64, "old bounding box"},
    {52, Role::ancillary, 8, 72, "multitexture"},
    {53, Role::ancillary, 8, any, "uv list"},
    {55, Role::node, 4, any, "binary separating plane"},
    {60, Role::ancillary, 8, 12, "replicate"},
    {61, Role::node, 8, 8, "instance reference"},
    {62, Role::node, 8, 8, "instance definition"},
    {63, Role::node, 84, 256, "external reference"},
    {64, Role::palette, 96, 256, "texture pattern"},
    {65, Role::palette, 4, any, "eyepoint palette"},
    {66, Role::palette, 4, any, "old material palette"},
    {67, Role::palette, 8, 8, "vertex palette"},
    {68, Role::vertex, 36, 40, "vertex"},
    {69, Role::vertex, 52, 56, "vertex with normal"},
    {70, Role::vertex, 60, 64, "vertex with normal and texture"},
    {71, Role::vertex, 44, 48, "vertex with texture"},
    {72, Role::node, 4, any, "vertex list"},
    {73, Role::node, 64, 128, "level of detail"},
    {74, Role::ancillary, 4, 64, "bounding box"},
    {76, Role::ancillary, 32, 64, "rotate about edge"},
    {78, Role::ancillary, 32, 56, "translate"},
    {79, Role::ancillary, 32, 48, "scale"},
    {80, Role::ancillary, 32, 48, "rotate about point"},
    {81, Role::ancillary, 32, 64, "rotate and scale to point"},
    {82, Role::ancillary, 64, 152, "put"},
    {83, Role::palette, 4, any, "eyepoint and trackplane palette"},
    {84, Role::node, 80, 128, "mesh"},
    {85, Role::ancillary, 12, any, "local vertex pool"},
    {86, Role::node, 12, any, "mesh primitive"},
    {87, Role::node, 4, any, "road segment"},
    {88, Role::ancillary, 4, any, "road zone"},
    {89, Role::node, 4, any, "morph vertex list"},
    {90, Role::palette, 4, any, "linkage palette"},
    {91, Role::node, 4, 128, "sound"},
    {92, Role::node, 4, any, "road path"},
    {93, Role::palette, 4, any, "sound palette"},
    {94, Role::ancillary, 68, 68, "general matrix"},
    {95, Role::node, 64, 512, "text"},
    {96, Role::node, 24, any, "switch"},
    {97, Role::palette, 8, 16, "line style palette"},
    {98, Role::node, 64, 512, "clip region"},
    {100, Role::ancillary, 4, any, "extension attribute"},
    {101, Role::node, 48, 128, "light source"},
    {102, Role::palette, 128, 512, "light source palette"},
    {103, Role::palette, 4, any, "reserved"},
    {104, Role::palette, 4, any, "reserved"},
    {105, Role::ancillary, 4, 64, "bounding sphere"},
    {106, Role::ancillary, 4, 64, "bounding cylinder"},
    {107, Role::ancillary, 4, 64, "bounding convex hull"},
    {108, Role::ancillary, 4, 64, "bounding volume centre"},
    {109, Role::ancillary, 4, 64, "bounding volume orientation"},
    {110, Role::ancillary, 4, 64, "histogram bounding volume"},
    {111, Role::node, 32, 256, "light point"},
    {112, Role::palette, 32, any, "texture mapping palette"},
    {113, Role::palette, 64, 128, "material"},
    {114, Role::palette, 4, any, "name palette"},
    {115, Role::node, 4, any, "CAT"},
    {116, Role::node, 4, any, "CAT data"},
    {119, Role::ancillary, 4, any, "bounding histogram"},
    {122, Role::ancillary, 4, any, "push attribute"},
    {123, Role::ancillary, 4, any, "pop attribute"},
    {126, Role::node, 4, any, "curve"},
    {127, Role::node, 4, any, "road construction"},
    {128, Role::palette, 4, any, "light point appearance palette"},
    {129, Role::palette, 4, any, "light point animation palette"},
    {130, Role::node, 16, 64, "indexed light point"},
    {131, Role::node, 16, 64, "light point system"},
    {132, Role::ancillary, 8, any, "indexed string"},
    {133, Role::palette, 4, any, "shader palette"},
};

Row const* find(int opcode)
{
    Row const* const row = std::lower_bound(std::begin(rows), std::end(rows), opcode,
                                            [](Row const& left, int right) { return left.opcode < right; });
    return row != std::end(rows) && row->opcode == opcode ? row : nullptr;
}

} // namespace

FltCompleteOpcode::Role FltCompleteOpcode::roleOf(int opcode)
{
    Row const* const row = find(opcode);
    return row != nullptr ? row->role : Role::unknown;
}

char const* FltCompleteOpcode::nameOf(int opcode)
{
    Row const* const row = find(opcode);
    return row != nullptr ? row->name : "unknown opcode";
}

bool FltCompleteOpcode::isPlausible(int opcode, unsigned int length)
{
    Row const* const row = find(opcode);
    return row != nullptr && length >= row->shortest && length <= row->longest;
}
