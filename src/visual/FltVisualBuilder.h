#pragma once

#include "model/FltInstanceDefinitions.h"
#include "parser/FltFileInput.h"
#include "visual/FltFaceReader.h"
#include "visual/FltLODChains.h"
#include "visual/FltVisualSetting.h"

#include <map>
#include <string>
#include <vector>

/// Builds the visual of one database.
class FltVisualBuilder
{
public:
    /// @param worldPerUnit how long a unit of the file is in the world of the visual
    FltVisualBuilder(FltModel& model, FltVisualSetting& setting, double worldPerUnit);

    /// Has build() give the bytes of the file back as it goes on, so that the visual takes their place.
    void dropBytesOf(FltFileInput& input);

    /// The whole visual, in the units of the file.
    FltVisualPart build();

    /// The visual of one node with what stands below it, without those above it.
    FltVisualPart buildAlone(FltModelTree::Number number);

private:
    using Number = FltModelTree::Number;

    /// What children of one node are collected in.
    struct Collected {
        explicit Collected(FltVisualBuilder& builder)
            : faces(builder.tools),
              levels(builder.setting.levelsOfDetail, builder.worldPerUnit,
                     [&builder](std::int64_t visits) { return builder.mayRepeat(visits); })
        {
        }

        /// Levels and meshes stand behind all other children.
        void finish(FltNodeBuilder& node)
        {
            levels.finish(node);
            faces.finish(node);
        }

        FltFaceCollector faces;
        FltLODChains levels;
    };

    FltVisualPart buildNode(Number number, FltObjectLook const& object);
    bool hasRoomFor(FltRecordView const& record);
    bool isAlone(Number number) const;
    FltVisualPart buildGroup(Number number, FltObjectLook const& object);
    FltVisualPart buildObject(Number number);
    FltVisualPart buildSwitch(Number number, FltObjectLook const& object);
    FltVisualPart buildAlone(Number child, FltObjectLook const& object);
    FltVisualPart buildReference(Number number);
    FltVisualPart buildInstance(Number number);
    FltVisualPart buildLight(Number number);
    FltVisualPart buildBillboard(Number number, FltObjectLook const& object);
    FltVisualPart const& buildDefinition(Number number);
    FltVisualPart wrapped(Number number, FltVisualPart const& content);
    FltNodeBuilder begin(Number number) const;
    void addContents(Number number, FltNodeBuilder& node, FltObjectLook const& object);
    void addChildren(Number number, FltNodeBuilder& node, FltObjectLook const& object);
    void addChild(Number child, FltNodeBuilder& node, FltObjectLook const& object, Collected& collected);
    void readFaces(Number number, FltFaceCollector& collector, FltObjectLook const& object,
                   FltPlacement const* placement = nullptr);
    void addBelowLightPoint(Number number, FltNodeBuilder& node, FltObjectLook const& object,
                            Collected& collected);
    bool addFrames(Number number, FltNodeBuilder& node, FltObjectLook const& object);
    std::vector<Number> framesOf(Number number) const;
    void addReplications(FltNodeBuilder& node, FltVisualPart const& content, SbDPMatrix const& step,
                         int count);
    bool mayShare(FltVisualPart const& part);
    bool mayRepeat(std::int64_t visits);
    void countLeftOut(FltRecordView const& record);

    FltModel& model;
    FltVisualSetting& setting;
    double worldPerUnit;
    double allowedError; ///< How far rounding may move a place, in units of the file.
    std::uint32_t file;  ///< Its number in the visual.
    FltMeshTools tools;
    FltFaceReader faces;
    FltInstanceDefinitions definitions;
    std::map<Number, FltVisualPart> builtDefinitions;
    std::vector<Number> definitionsInWork;
    int childrenUntilProgress = 0;
    FltFileInput* spent = nullptr; ///< Whose bytes are given back.
};
