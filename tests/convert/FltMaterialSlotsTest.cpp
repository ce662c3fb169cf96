#include "convert/FltMaterialSlots.h"

#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoMaterial.h>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace
{

FltMaterialFields fieldsOf(float value)
{
    FltMaterialFields fields;
    fields.ambientColor = SbColor(value, 0, 0);
    fields.diffuseColor = SbColor(0, value, 0);
    fields.specularColor = SbColor(0, 0, value);
    fields.emissiveColor = SbColor(value, value, 0);
    fields.shininess = value;
    fields.transparency = value / 2;
    return fields;
}

using Settings = std::vector<std::pair<int, float>>;

/// Whatever is set in whatever order, the fields get what they would get one by one.
void expectTheSameAsOneByOne(Settings const& settings)
{
    SoNodeRef<SoMaterial> const atOnce(new SoMaterial);
    SoNodeRef<SoMaterial> const oneByOne(new SoMaterial);
    FltMaterialSlots slots;
    for (auto const& [index, value] : settings) {
        slots.set(index, fieldsOf(value));
        fieldsOf(value).writeTo(*oneByOne, index);
    }
    slots.writeTo(*atOnce);
    EXPECT_TRUE(atOnce->fieldsAreEqual(oneByOne.get()));
    EXPECT_EQ(atOnce->shininess.isDefault(), oneByOne->shininess.isDefault());
}

TEST(FltMaterialSlotsTest, TheFieldsGetAllValuesAsIfWrittenOneByOne)
{
    expectTheSameAsOneByOne({{0, 0.5F}});
    expectTheSameAsOneByOne({{0, 0.1F}, {1, 0.2F}, {2, 0.3F}});
    expectTheSameAsOneByOne({{1, 0.2F}});
    expectTheSameAsOneByOne({{3, 0.2F}, {7, 0.4F}});
    expectTheSameAsOneByOne({{2, 0.2F}, {0, 0.4F}, {2, 0.6F}});
}

TEST(FltMaterialSlotsTest, WithNothingSetTheMaterialStaysAsItIs)
{
    expectTheSameAsOneByOne({});
    EXPECT_EQ(FltMaterialSlots().getNum(), 0);
}

TEST(FltMaterialSlotsTest, ThePositionsCountUpToTheLastOne)
{
    FltMaterialSlots slots;
    slots.set(4, {});
    EXPECT_EQ(slots.getNum(), 5);
    slots.set(1, {});
    EXPECT_EQ(slots.getNum(), 5);
}

} // namespace
