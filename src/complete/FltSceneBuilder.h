#pragma once

#include "complete/FltCompleteScene.h"
#include "complete/FltFaceReader.h"
#include "complete/FltLODChains.h"
#include "complete/FltNodeNames.h"
#include "messages/FltLimits.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

/// Builds the scene of one database.
class FltSceneBuilder
{
public:
    /// What all files of a conversion have in common.
    struct Setting {
        FltLODChoice lod = FltLODChoice::stored;
        FltAppearanceNodes::MakeTexture makeTexture;

        /// Gives the scene of an external file, in the units of the file that refers to it.
        std::function<FltScenePart(FltModel const& from, std::string const& path, std::uint32_t overrides)>
            refer;

        /// Is told at which byte of its file the conversion is, now and then. It may end it by an exception.
        std::function<void(FltModel const& model, std::size_t offset)> progress;

        FltLeftOut leftOut;
        FltNodeNames names;
        std::vector<FltCompleteSwitch> switches;
        std::vector<FltCompleteDOF> dofs;
        int levels = 0; ///< That are open, those of the files that lead to the present one included.

        /// Copies that replications may still make.
        std::int64_t copiesLeft = FltLimits::copies;

        /// Nodes that shared parts may still add to what a traversal visits: instances of instances could
        /// make a scene of a small file endless.
        std::int64_t visitsLeft = FltLimits::sceneNodes.floor;
    };

    /// @param worldPerUnit how long a unit of the file is in the world of the scene
    FltSceneBuilder(FltModel& model, Setting& setting, double worldPerUnit);

    /// The whole scene, in the units of the file.
    FltScenePart build();

private:
    using Number = FltModelTree::Number;

    FltScenePart buildNode(Number number, float objectTransparency);
    bool hasRoomFor(FltRecordView const& record);
    bool isAlone(Number number) const;
    FltScenePart buildGroup(Number number, float objectTransparency);
    FltScenePart buildSwitch(Number number, float objectTransparency);
    FltScenePart buildReference(Number number);
    FltScenePart buildInstance(Number number);
    FltScenePart buildLight(Number number);
    FltScenePart buildBillboard(Number number, float objectTransparency);
    FltScenePart const& buildDefinition(Number number);
    void addContents(Number number, FltGroupBuilder& group, float objectTransparency);
    void addChildren(Number number, FltGroupBuilder& group, float objectTransparency);
    void addChild(Number child, FltGroupBuilder& group, float objectTransparency, FltFaceCollector& faces,
                  FltLODChains& levels);
    void addBelowLightPoint(Number number, FltGroupBuilder& group, float objectTransparency,
                            FltFaceCollector& collector, FltLODChains& levels);
    void addReplications(FltGroupBuilder& group, FltScenePart const& content, SbMatrix const& step,
                         int count);
    FltGroupBuilder namedGroup(Number number);
    bool mayShare(FltScenePart const& part);
    void addInfos(Number number, FltGroupBuilder& group);
    FltScenePart wrapped(Number number, FltScenePart const& content);
    FltScenePart buildSwitchChild(Number child, float objectTransparency);
    FltCompleteSwitch readSwitch(Number number) const;
    Number findDefinition(Number reference) const;
    void countLeftOut(FltRecordView const& record);
    std::string nameOf(Number number) const;
    std::string textOf(Number number) const;

    FltModel& model;
    Setting& setting;
    double worldPerUnit;
    FltAppearanceNodes nodes;
    FltShapeTools tools;
    FltFaceReader faces;
    std::map<int, std::vector<Number>> definitions; ///< By their number in the file.
    std::map<Number, FltScenePart> builtDefinitions;
    std::vector<Number> definitionsInWork;
    int childrenUntilProgress = 0;
};
