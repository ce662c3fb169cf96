#include "pictures/PictureStage.h"

PictureStage::PictureStage(int revision, Fields const& header) : flt(revision, header)
{
    flt.vertexPalette();
    ground = vertices({{-6, -2, 0}, {6, -2, 0}, {6, 2, 0}, {-6, 2, 0}});
}

std::vector<double> PictureStage::vertices(std::vector<Place> const& places, std::string const& form,
                                           Fields const& fields)
{
    std::vector<double> offsets;
    for (Place const& place : places)
        offsets.push_back(flt.vertex(form, place[0], place[1], place[2], fields));
    return offsets;
}

std::vector<double> PictureStage::panel(double x, std::string const& form, Fields const& fields, double y)
{
    return vertices({{x, y, 0}, {x + 2, y, 0}, {x + 2, y, 3}, {x, y, 3}}, form, fields);
}

std::vector<double> PictureStage::texturedPanel(double x, double y)
{
    std::vector<double> offsets;
    for (std::vector<double> const& at : {Place{0, 0}, {1, 0}, {1, 1}, {0, 1}})
        offsets.push_back(flt.vertex("VertexColorUv", x + 2 * at[0], y, 3 * at[1], {{"texture", at}}));
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
