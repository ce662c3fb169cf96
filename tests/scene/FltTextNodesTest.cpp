#include "scene/FltTextNodes.h"

#include "support/SceneText.h"
#include "toolkit/SoNodeRef.h"

#include <gtest/gtest.h>

namespace
{

FltVisualText twoLines()
{
    FltVisualText text;
    text.lines = {"Gate 7", "open"};
    text.place = SbVec3d(1, 2, 3);
    text.size = 2;
    text.color = 0xff0000ff;
    return text;
}

std::string textOf(FltVisualText const& text)
{
    SoNodeRef<SoNode> const node(FltTextNodes::make(text));
    return sceneText(node.get());
}

} // namespace

TEST(FltTextNodes, standUprightWithTheFirstLineAbove)
{
    EXPECT_EQ(textOf(twoLines()), R"(Separator {
  Transform {
    translation 1 2 5
    rotation 1 0 0  1.5707963
  }
  Font {
    size 2
  }
  LightModel {
    model BASE_COLOR
  }
  Material {
    diffuseColor 1 0 0
  }
  AsciiText {
    string [ "Gate 7",
        "open" ]
    justification LEFT
  }
}
)");
}

TEST(FltTextNodes, lieWithTheFirstLineFartherAlongY)
{
    FltVisualText text = twoLines();
    text.isLying = true;
    EXPECT_NE(textOf(text).find("translation 1 4 3"), std::string::npos);
    EXPECT_EQ(textOf(text).find("rotation"), std::string::npos);
}

TEST(FltTextNodes, stayWhereTheirCornerSays)
{
    FltVisualText text = twoLines();
    text.alignment = FltVisualText::Alignment::right;
    EXPECT_NE(textOf(text).find("justification RIGHT"), std::string::npos);
    text.alignment = FltVisualText::Alignment::center;
    EXPECT_NE(textOf(text).find("justification CENTER"), std::string::npos);
}

TEST(FltTextNodes, riseByTheSizeForEachFurtherLine)
{
    FltVisualText text = twoLines();
    text.lines = {"a", "b", "c", "d"};
    EXPECT_NE(textOf(text).find("translation 1 2 9\n"), std::string::npos) << textOf(text);
    text.lines = {"a"};
    EXPECT_NE(textOf(text).find("translation 1 2 3\n"), std::string::npos) << textOf(text);
}
