#pragma once

#include "convert/FltAllowance.h"
#include "convert/FltConvertedSwitch.h"
#include "convert/FltFaceResources.h"
#include "convert/FltInstanceAccount.h"
#include "convert/FltLODCentres.h"
#include "convert/FltOneTimeWarnings.h"
#include "convert/FltPalettes.h"
#include "convert/FltSilencedScene.h"
#include "convert/FltToInventor.h"
#include "convert/FltVertexPalette.h"
#include "messages/FltLimits.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoLabel.h>
#include <cstddef>
#include <cstdint>
#include <map>
#include <stack>
#include <string>
#include <sys/types.h>
#include <unordered_map>
#include <utility>
#include <vector>

class FltLogStream;

/// What one conversion holds.
struct FltToInventor::State {
    /// A node of the graph with its place in it.
    struct OpenLevel {
        SoGroup* group = nullptr;
        FltInstanceAccount::Place place;
        FltSilencedScene::Order order = 0;
    };

    /// What the conversions of a file and of all that it refers to have in common.
    struct Shared {
        std::vector<std::pair<dev_t, ino_t>>
            chain;      ///< The files from the top one to the one being converted.
        int opened = 0; ///< External files so far.
        FltAllowance commentText{FltLimits::commentText};
        FltAllowance oldVertexIndices{FltLimits::oldVertexIndices};
        FltAllowance lodCentreSteps{FltLimits::lodCentreSteps};
    };

    /// A file that was converted already.
    struct ExternalFile {
        bool isOpen = false; ///< Whether there was anything to read.
        int scope = 0;       ///< Its scene in the account of instances.
    };

    State() : shared(ownShared), instances(warnings) {}

    /// For the conversion of an external file.
    State(Shared& shared, int depthAbove, int hierarchyDepth)
        : shared(shared), instances(warnings, depthAbove), hierarchyDepth(hierarchyDepth)
    {
    }
    ~State();

    State(State const&) = delete;
    State& operator=(State const&) = delete;

    /// Hangs @p attached below the top of the stack, makes @p receiver, which is the same node or a child of
    /// it, the group that the next Push opens, and applies the ancillary records after the record to it.
    void openNode(FltToInventor& converter, SoGroup* attached, SoGroup* receiver, RecordIterator& iterator);

    /// The group that takes what comes next, or null with no level open. What the toolkit remembers of a box
    /// around it is forgotten: that happens when a level is opened again below a finished level of detail.
    SoGroup* stackTop();

    /// A node that hangs nowhere lives until the conversion ends.
    void keepUnattached(SoNode* node);

    /// Hangs the scene of an external file below @p parent, or reports why not.
    void convertExternalFile(std::string const& path, std::string const& fullPath, SoGroup* parent);

    Shared ownShared;
    Shared& shared;

    FltParser* fltParser = nullptr;
    bool ownsFltParser = false;
    bool recordsDestroyed = false;
    std::vector<FltParser*> retiredParsers;
    bool fileLoggingEnabled = false;
    FltLogStream* logStream = nullptr;

    SoSeparator* result = nullptr;
    bool allFltRecordsVisited = false;
    bool visitsRecords = false; ///< While the nodes of a whole file are built.
    bool rgbMode = false;
    std::string relativePath;
    SoNodeRef<SoLabel> minRangeLabel{new SoLabel};
    SoNodeRef<SoLabel> maxRangeLabel{new SoLabel};

    FltPalettes palettes;
    FltVertexPalette vertices{palettes.colorPalette};
    FltFaceResources faceResources{vertices, palettes, shared.oldVertexIndices};

    std::stack<OpenLevel> nodesStack; ///< The open levels of the hierarchy.
    OpenLevel current;                ///< The group that the next Push opens.
    std::vector<SoNodeRef<SoNode>> unattachedNodes;
    FltSilencedScene scene;
    std::unordered_map<SoGroup*, FltConvertedSwitch> switches; ///< Those that were asked for a child.
    FltOneTimeWarnings warnings;
    FltLODCentres lodCentres{scene, shared.lodCentreSteps, warnings};
    FltInstanceAccount instances;
    std::map<std::string, SoSeparator*> externalReferences;
    std::map<std::string, ExternalFile> externalFiles; ///< What is known of the files in externalReferences.
    int hierarchyDepth = 0;
};
