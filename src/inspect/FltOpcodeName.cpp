#include "inspect/FltOpcodeName.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace
{

struct Row {
    int opcode;
    std::string_view name;
};

constexpr Row rows[] = {
    {1, "header"},
    {2, "group"},
    {3, "old level of detail"},
    {4, "object"},
    {5, "face"},
    {7, "old vertex"},
    {8, "old vertex with colour"},
    {9, "old vertex with colour and normal"},
    {10, "push level"},
    {11, "pop level"},
    {14, "degree of freedom"},
    {19, "push subface"},
    {20, "pop subface"},
    {21, "push extension"},
    {22, "pop extension"},
    {23, "continuation"},
    {31, "comment"},
    {32, "colour palette"},
    {33, "long id"},
    {49, "matrix"},
    {50, "vector"},
    {51, "old bounding box"},
    {52, "multitexture"},
    {53, "uv list"},
    {55, "separating plane"},
    {60, "replicate"},
    {61, "instance reference"},
    {62, "instance definition"},
    {63, "external reference"},
    {64, "texture pattern"},
    {66, "old material palette"},
    {67, "vertex palette"},
    {68, "vertex with colour"},
    {69, "vertex with colour and normal"},
    {70, "vertex with colour, normal and uv"},
    {71, "vertex with colour and uv"},
    {72, "vertex list"},
    {73, "level of detail"},
    {74, "bounding box"},
    {76, "rotate about edge"},
    {78, "translate"},
    {79, "scale"},
    {80, "rotate about point"},
    {81, "rotate and scale to point"},
    {82, "put transform"},
    {83, "eyepoint and trackplane palette"},
    {84, "mesh"},
    {85, "local vertex pool"},
    {86, "mesh primitive"},
    {87, "road segment"},
    {88, "road zone"},
    {89, "morph vertex list"},
    {90, "linkage palette"},
    {91, "sound"},
    {92, "road path"},
    {93, "sound palette"},
    {94, "general matrix"},
    {95, "text"},
    {96, "switch"},
    {97, "line style palette"},
    {98, "clip region"},
    {100, "extension attribute"},
    {101, "light source"},
    {102, "light source palette"},
    {105, "bounding sphere"},
    {106, "bounding cylinder"},
    {107, "bounding convex hull"},
    {108, "bounding volume centre"},
    {109, "bounding volume orientation"},
    {111, "light point"},
    {112, "texture mapping palette"},
    {113, "material"},
    {114, "name palette"},
    {115, "continuously adaptive terrain"},
    {116, "adaptive terrain data"},
    {119, "bounding histogram"},
    {122, "push attribute"},
    {123, "pop attribute"},
    {126, "curve"},
    {127, "road construction"},
    {128, "light point appearance palette"},
    {129, "light point animation palette"},
    {130, "indexed light point"},
    {131, "light point system"},
    {132, "indexed string"},
    {133, "shader palette"},
};

Row const* find(int opcode)
{
    auto const* const row = std::lower_bound(std::begin(rows), std::end(rows), opcode,
                                             [](Row const& one, int wanted) { return one.opcode < wanted; });
    return row != std::end(rows) && row->opcode == opcode ? row : nullptr;
}

} // namespace

std::string FltOpcodeName::of(int opcode)
{
    Row const* const row = find(opcode);
    return row != nullptr ? std::string(row->name) : "record " + std::to_string(opcode);
}

bool FltOpcodeName::isKnown(int opcode)
{
    return find(opcode) != nullptr;
}
