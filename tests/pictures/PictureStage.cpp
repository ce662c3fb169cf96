#include "pictures/PictureStage.h"

#include <utility>

PictureStage::PictureStage(int revision, Fields const& header, Place at)
    : flt(revision, header), at(std::move(at))
{
    flt.vertexPalette();
    ground = vertices({{-6, -2, 0}, {6, -2, 0}, {6, 2, 0}, {-6, 2, 0}});
}

std::vector<double> PictureStage::vertices(std::vector<Place> const& places, std::string const& form,
                                           Fields const& fields)
{
    std::vector<double> offsets;
    for (Place const& place : places)
        offsets.push_back(flt.vertex(form, at[0] + place[0], at[1] + place[1], at[2] + place[2], fields));
    return offsets;
}

std::vector<double> PictureStage::panel(double x, std::string const& form, Fields const& fields, double y)
{
    return vertices({{x, y, 0}, {x + 2, y, 0}, {x + 2, y, 3}, {x, y, 3}}, form, fields);
}

std::vector<double> PictureStage::texturedPanel(double x, double y)
{
    std::vector<double> offsets;
    for (std::vector<double> const& uv : {Place{0, 0}, {1, 0}, {1, 1}, {0, 1}})
        for (double const offset :
             vertices({{x + 2 * uv[0], y, 3 * uv[1]}}, "VertexColorUv", {{"texture", uv}}))
            offsets.push_back(offset);
    return offsets;
}

FltWriter& PictureStage::begin()
{
    flt.push();
    object(ground, face({255, 130, 130, 130}), {{"idASCII", "ground"}});
    return flt;
}

void PictureStage::object(std::vector<double> const& offsets, Fields const& face, Fields const& fields)
{
    flt.add("Object", fields).push().face(offsets, face).pop();
}

PictureStage::Fields PictureStage::face(std::vector<double> const& color, Fields const& more)
{
    Fields fields = {{"packedColor", color}, {"flags", 0x10000000}, {"lightMode", 2}};
    fields.insert(fields.end(), more.begin(), more.end());
    return fields;
}
