#pragma once

#include "support/ConvertedScene.h"
#include "support/SceneOutline.h"
#include "writer/FltWriter.h"

#include <string>
#include <string_view>
#include <vector>

/// Adds three vertices of a form to the palette. @return their offsets
inline std::vector<double> triangle(FltWriter& flt, std::string_view form)
{
    auto const vertex = [&](int x) { return static_cast<double>(flt.vertex(form, x, 0, 0)); };
    return {vertex(0), vertex(1), vertex(2)};
}

/// Opens the first level, and in it the level of an Object named "object".
inline FltWriter& beginObject(FltWriter& flt, FltWriter::Fields fields = {})
{
    fields.insert(fields.begin(), {"idASCII", "object"});
    return flt.push().add("Object", fields).push();
}

/// Closes what beginObject() opened.
inline FltWriter& endObject(FltWriter& flt)
{
    return flt.pop().pop();
}

/// The outline of the node named "object" in a scene.
inline std::string objectOutline(ConvertedScene const& scene)
{
    return sceneOutline(scene.find("object"));
}

/// The same of a database.
inline std::string objectOutline(FltWriter const& flt)
{
    return objectOutline(ConvertedScene(flt));
}
