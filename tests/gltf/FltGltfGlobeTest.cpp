#include "ReadGltf.h"
#include "globe/FltGlobeFrame.h"
#include "gltf/FltGltf.h"

#include <gtest/gtest.h>

TEST(FltGltfGlobe, isToldInTheExtrasOfTheTop)
{
    FltVisual visual;
    visual.root = std::make_shared<FltVisualNode>();
    FltGltfOptions options;
    EXPECT_FALSE(ReadGltf(FltGltf::glb(visual, options)).node("database").at("extras").contains("globe"));
    options.globe = FltProjection::Place{48, 9, 123.5};
    auto const globe = ReadGltf(FltGltf::glb(visual, options)).node("database").at("extras").at("globe");
    EXPECT_EQ(globe.at("latitude"), 48);
    EXPECT_EQ(globe.at("longitude"), 9);
    EXPECT_EQ(globe.at("height"), 123.5);
    SbDPMatrix const matrix = FltGlobeFrame(*options.globe).matrix();
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_EQ(globe.at("matrix").at(i), matrix[static_cast<int>(i / 4)][static_cast<int>(i % 4)]);
}
