#include "gltf/GltfInstances.h"

#include <cstring>
#include <gtest/gtest.h>

namespace
{

std::vector<float> numbersIn(std::string const& bytes)
{
    std::vector<float> numbers(bytes.size() / sizeof(float));
    std::memcpy(numbers.data(), bytes.data(), bytes.size());
    return numbers;
}

} // namespace

TEST(GltfInstances, standAtTheirPlacesWithWhatTheMeshAddsToThese)
{
    GltfDocument document;
    GltfTransform turned;
    turned.translation = SbVec3d(10, 20, 30);
    turned.rotation = SbDPRotation(SbVec3d(0, 0, 1), 1.5707963267948966);
    turned.scale = SbVec3d(2, 2, 2);
    EXPECT_EQ(GltfInstances(document).add(7, SbVec3d(1, 0, 0), 0.5, {GltfTransform(), turned}), 0);
    std::vector<float> const numbers = numbersIn(document.binary.bytes(0));
    ASSERT_EQ(numbers.size(), 2U * (3 + 4 + 3));
    std::vector<float> const places(numbers.begin(), numbers.begin() + 6);
    std::vector<float> const wanted = {1, 0, 0, 10, 22, 30};
    for (std::size_t i = 0; i < wanted.size(); ++i)
        EXPECT_NEAR(places[i], wanted[i], 1e-6F);
    EXPECT_EQ(numbers[14], 0.5F);
    EXPECT_EQ(numbers[17], 1.0F);
    std::string const text = document.text(0);
    EXPECT_NE(text.find("\"extensionsRequired\":[\"EXT_mesh_gpu_instancing\"]"), std::string::npos);
    EXPECT_NE(text.find("\"mesh\":7"), std::string::npos);
}
