#include "scene/FltSceneMaker.h"

#include "support/MadeNodes.h"
#include "support/SceneText.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

using namespace MadeNodes;

/// The scene of a node below a root.
FltMadeScene sceneOf(std::shared_ptr<FltVisualNode> content)
{
    auto root = node();
    root->children.push_back(std::move(content));
    FltMadeScene scene = FltSceneMaker::make(std::move(root), {});
    scene.names.give();
    return scene;
}

std::string textOf(std::shared_ptr<FltVisualNode> content)
{
    return sceneText(sceneOf(std::move(content)).root->getChild(0));
}

} // namespace

TEST(FltSceneMaker, makesAGroupWithItsNameCommentsAndTransformation)
{
    auto const group = named("house");
    group->comments = {"a comment"};
    SbMatrix matrix;
    matrix.setTranslate(SbVec3f(1, 2, 3));
    group->transform = {matrix};
    group->children = {named("below")};
    EXPECT_EQ(textOf(group), R"(DEF house Separator {
  Info {
    string "a comment"
  }
  MatrixTransform {
    matrix 1 0 0 0
      0 1 0 0
      0 0 1 0
      1 2 3 1
  }
  DEF below Separator {
  }
}
)");
}

TEST(FltSceneMaker, givesAMeshThatIsAloneNoSeparatorOfItsOwn)
{
    auto const withMeshes = [](std::size_t count) {
        auto const object = named("object");
        object->meshes.resize(count);
        return object;
    };
    auto const separatorsOf = [](std::shared_ptr<FltVisualNode> const& object) {
        std::string const text = textOf(object);
        std::size_t count = 0;
        for (std::size_t at = text.find("Separator {"); at != std::string::npos;
             at = text.find("Separator {", at + 1))
            ++count;
        return count;
    };
    EXPECT_EQ(separatorsOf(withMeshes(1)), 1U);
    EXPECT_EQ(separatorsOf(withMeshes(2)), 3U);
    auto const hidden = withMeshes(1);
    hidden->meshes.front().isHidden = true;
    EXPECT_EQ(separatorsOf(hidden), 2U);
    auto const above = withMeshes(1);
    above->children = {named("below")};
    EXPECT_EQ(separatorsOf(above), 3U);
    auto const text = withMeshes(1);
    text->become<FltVisualText>();
    EXPECT_EQ(separatorsOf(text), 3U);
}

TEST(FltSceneMaker, keepsTheStateOfAMeshAloneInADoorFromTheNextDoor)
{
    auto const group = named("sock");
    group->become<FltVisualSwitch>();
    group->children = {node()};
    group->children.front()->meshes.resize(1);
    EXPECT_NE(textOf(group).find("Group {\n      Separator {"), std::string::npos) << textOf(group);
}

TEST(FltSceneMaker, keepsNothingOfWhatASwitchOrAJointChanges)
{
    auto const still = [] {
        auto const part = node();
        part->meshes.resize(2);
        return part;
    };
    EXPECT_EQ(sceneOf(still()).root->renderCaching.getValue(), SoSeparator::ON);
    for (bool const isJoint : {false, true}) {
        auto const group = node();
        isJoint ? static_cast<void>(group->become<FltVisualJoint>())
                : static_cast<void>(group->become<FltVisualSwitch>());
        group->children = {still()};
        std::string const text = textOf(group);
        EXPECT_EQ(text.find("renderCaching"), text.find("renderCaching OFF")) << text;
    }
}

TEST(FltSceneMaker, keepsANameThatIsTooLongInAnInfo)
{
    std::string const name(300, 'n');
    EXPECT_NE(textOf(named(name)).find("Info {"), std::string::npos);
    FltVisualLight const light;
    auto const lamp = named(name);
    lamp->become<FltVisualLight>();
    EXPECT_EQ(textOf(lamp).substr(0, 4), "DEF ");
    EXPECT_NE(textOf(lamp).find("Group {"), std::string::npos);
    EXPECT_NE(textOf(lamp).find("DirectionalLight {"), std::string::npos);
}

TEST(FltSceneMaker, letsALightFadeAndNoOther)
{
    auto const lamp = named("lamp");
    FltVisualLight& light = lamp->become<FltVisualLight>();
    light.kind = FltVisualLight::Kind::local;
    light.attenuation[1] = 0.5F;
    EXPECT_EQ(textOf(lamp), R"(Group {
  Environment {
    attenuation 0 0.5 1
  }
  DEF lamp PointLight {
    color 1 1 1
    location 0 0 0
  }
  Environment {
  }
}
)");
}

TEST(FltSceneMaker, makesTheNodesOfASharedPartOnce)
{
    auto const shared = named("shared");
    auto const group = node();
    group->children = {shared, shared};
    SoNodeRef<SoSeparator> const root = sceneOf(group).root;
    auto const* const made = static_cast<SoSeparator*>(root->getChild(0));
    EXPECT_EQ(made->getChild(0), made->getChild(1));
}

TEST(FltSceneMaker, usesUpWhatNobodyElseHolds)
{
    auto group = node();
    std::weak_ptr<FltVisualNode> const watched = group;
    sceneOf(std::move(group));
    EXPECT_TRUE(watched.expired());
}

TEST(FltSceneMaker, turnsASwitchIntoOneDoorAChild)
{
    auto const group = named("sock");
    FltVisualSwitch& choice = group->become<FltVisualSwitch>();
    choice.wordsPerMask = 1;
    choice.masks = {5};
    auto lamp = named("lamp");
    lamp->become<FltVisualLight>();
    group->children = {node(), nullptr, lamp};
    EXPECT_EQ(textOf(group), R"(DEF sock Separator {
  Info {
    string "currentMask 0
wordsPerMask 1
mask 5"
  }
  Switch {
    whichChild -3
    Group {
    }
  }
  Switch {
    whichChild -1
  }
  Switch {
    whichChild -3
    DEF lamp DirectionalLight {
      color 1 1 1
      direction 0 0 -1
    }
  }
}
)");
}

TEST(FltSceneMaker, listsSwitchesAndJointsByTheirNumbers)
{
    auto const group = node();
    for (std::size_t const number : {std::size_t{1}, std::size_t{0}}) {
        group->children.push_back(node());
        FltVisualSwitch& choice = group->children.back()->become<FltVisualSwitch>();
        choice.number = number;
        choice.name = "switch " + std::to_string(number);
        group->children.push_back(node());
        FltVisualJoint& joint = group->children.back()->become<FltVisualJoint>();
        joint.number = number;
        joint.name = "joint " + std::to_string(number);
    }
    FltMadeScene const scene = sceneOf(group);
    ASSERT_EQ(scene.switches.size(), 2U);
    EXPECT_EQ(scene.switches[0].name, "switch 0");
    ASSERT_EQ(scene.joints.size(), 2U);
    EXPECT_EQ(scene.joints[0].name, "joint 0");
}

TEST(FltSceneMaker, movesAJointBetweenItsFrameAndBack)
{
    auto const group = named("door");
    FltVisualJoint& joint = group->become<FltVisualJoint>();
    joint.name = "door";
    joint.translation[2].current = 3;
    joint.frame.emplace();
    joint.frame->setTranslate(SbVec3d(1, 0, 0));
    std::string const text = textOf(group);
    std::size_t const frame = text.find("MatrixTransform");
    std::size_t const motion = text.find("translation 0 0 3");
    std::size_t const back = text.find("MatrixTransform", motion);
    EXPECT_LT(frame, motion);
    EXPECT_LT(motion, back);
    EXPECT_NE(back, std::string::npos);
}

TEST(FltSceneMaker, makesLevelsWithNothingWhereNothingIsDrawn)
{
    auto const group = node();
    FltVisualLevels& levels = group->become<FltVisualLevels>();
    levels.distances = {10, 20};
    levels.center = SbVec3f(1, 2, 3);
    group->children = {nullptr, named("near"), nullptr};
    EXPECT_EQ(textOf(group), R"(LOD {
  center 1 2 3
  range [ 10, 20 ]
  Info {
    string "nothing"
  }
  DEF near Separator {
  }
  Info {
    string "nothing"
  }
}
)");
}

TEST(FltSceneMaker, standsFacesThatTurnOnTheirFeet)
{
    auto const group = node();
    FltVisualTurning& turning = group->become<FltVisualTurning>();
    turning.foot = SbVec3d(1, 2, 3);
    turning.isAboutPoint = false;
    EXPECT_EQ(textOf(group), R"(Separator {
  Translation {
    translation 1 2 3
  }
  Rotation {
    rotation 1 0 0  1.5707963
  }
  VRMLBillboard {
    axisOfRotation 0 1 0
    children 
      DEF _+0 Separator {
        Rotation {
          rotation -1 -0 -0  1.5707963
        }
      }
  }
}
)");
    turning.isAboutPoint = true;
    EXPECT_NE(textOf(group).find("axisOfRotation 0 0 0"), std::string::npos);
}

TEST(FltSceneMaker, makesCopiesScalesAndFiles)
{
    auto const copies = node();
    copies->become<FltVisualCopies>().places.resize(2, SbMatrix::identity());
    copies->children = {named("copied")};
    EXPECT_EQ(textOf(copies).substr(0, 14), "MultipleCopy {");
    auto const scale = node();
    scale->become<FltVisualScale>().factor = 0.3048;
    scale->children = {named("scaled")};
    EXPECT_NE(textOf(scale).find("scaleFactor 0.3048 0.3048 0.3048"), std::string::npos);
    auto const file = node();
    file->become<FltVisualFile>().path = "other.flt";
    EXPECT_NE(textOf(file).find("name \"other.flt\""), std::string::npos);
}

TEST(FltSceneMaker, tellsTheRecordsOfNodes)
{
    auto const group = named("g");
    group->record = {120, 1};
    FltMesh mesh;
    mesh.positions = {SbVec3f(0, 0, 0)};
    group->meshes.push_back(mesh);
    FltMadeScene const scene = sceneOf(group);
    auto* const made = static_cast<SoSeparator*>(scene.root->getChild(0));
    FltNodeRecords::Entry const* const own = scene.records.find(*made);
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(own->first, made);
    EXPECT_EQ(own->second.offset, 120U);
    EXPECT_EQ(own->second.file, 1U);
}

TEST(FltSceneMaker, closesASwitchAroundWhatIsHidden)
{
    auto const hidden = named("secret");
    hidden->isHidden = true;
    EXPECT_EQ(textOf(hidden), R"(DEF hidden Switch {
  DEF secret Separator {
  }
}
)");
}

TEST(FltSceneMaker, drawsCoarserLevelsThatStayTogetherWithFinerOnes)
{
    auto const levels = node();
    levels->children = {named("near"), named("middle"), named("far"), nullptr};
    FltVisualLevels& content = levels->become<FltVisualLevels>();
    content.distances = {10, 20, 30};
    content.nextStays = {true, true, false, false};
    EXPECT_EQ(textOf(levels), R"(LOD {
  range [ 10, 20, 30 ]
  Group {
    DEF far Separator {
    }
    DEF middle Separator {
    }
    DEF near Separator {
    }
  }
  Group {
    USE far
    USE middle
  }
  USE far
  Info {
    string "nothing"
  }
}
)");
}

TEST(FltSceneMaker, makesABlinkerOfAFlipBook)
{
    auto const group = named("flame");
    group->children = {named("low"), named("high"), nullptr};
    group->become<FltVisualFlipBook>().steps = {{0, 1}, {1, 1}, {2, 1}, {1, 1}};
    FltMadeScene const scene = sceneOf(group);
    auto const* const made = static_cast<SoSeparator*>(scene.root->getChild(0));
    EXPECT_EQ(made->getName(), "flame");
    ASSERT_TRUE(made->getChild(0)->isOfType(SoBlinker::getClassTypeId()));
    auto const* const blinker = static_cast<SoBlinker*>(made->getChild(0));
    ASSERT_EQ(blinker->getNumChildren(), 4);
    EXPECT_EQ(blinker->getChild(0)->getName(), "low");
    EXPECT_EQ(blinker->getChild(1), blinker->getChild(3));
    ASSERT_EQ(scene.flipBooks.size(), 1U);
    EXPECT_EQ(scene.flipBooks[0].blinkers[0].get(), blinker);
}

/// So that the scene and the visual are never both held whole.
TEST(FltSceneMaker, letsGoOfAChildAsSoonAsItsNodeIsMade)
{
    std::vector<std::string> gone;
    auto const watched = [&gone](std::string const& name) {
        auto const letGo = [&gone, name](FltVisualNode* node) {
            gone.push_back(name);
            delete node; // NOLINT(cppcoreguidelines-owning-memory): the pointer's own deleter
        };
        return std::shared_ptr<FltVisualNode>(new FltVisualNode, letGo);
    };
    std::shared_ptr<FltVisualNode> parent = watched("parent");
    parent->children.push_back(watched("child"));
    sceneOf(std::move(parent));
    EXPECT_EQ(gone, (std::vector<std::string>{"child", "parent"}));
}
