#pragma once

#include "pictures/PictureDatabases.h"

#include <vector>

/// Databases of one triangle each, whose numbers in glTF are worked out by hand in triangles_test.mjs.
std::vector<PictureDatabase> smallTriangles();
