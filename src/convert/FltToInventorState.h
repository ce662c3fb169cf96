#pragma once

#include "convert/FltAllowances.h"
#include "convert/FltConvertedFiles.h"
#include "convert/FltConvertedSwitch.h"
#include "convert/FltExternalFiles.h"
#include "convert/FltFaceResources.h"
#include "convert/FltFileLog.h"
#include "convert/FltInstanceAccount.h"
#include "convert/FltLODCentres.h"
#include "convert/FltOneTimeWarnings.h"
#include "convert/FltPalettes.h"
#include "convert/FltParserHolder.h"
#include "convert/FltReferenceChain.h"
#include "convert/FltSilencedScene.h"
#include "convert/FltTextures.h"
#include "convert/FltToInventor.h"
#include "convert/FltVertexPalette.h"
#include "messages/FltLimits.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoLabel.h>
#include <Inventor/nodes/SoSwitch.h>
#include <cstddef>
#include <optional>
#include <stack>
#include <string>
#include <unordered_map>
#include <vector>

/// What one conversion holds.
struct FltToInventor::State {
    /// A node of the graph with its place in it.
    struct OpenLevel {
        SoGroup* group = nullptr;
        FltInstanceAccount::Place place;
        FltSilencedScene::Order order = 0;
        std::optional<bool> isSwitch =
            std::nullopt; ///< Whether it is a converted switch, once somebody has looked.
    };

    /// What the conversions of a file and of all that it refers to have in common.
    struct Shared {
        explicit Shared(bool makesNodes) : makesNodes(makesNodes) {}

        bool const makesNodes; ///< If not, the same is walked, read and told, and every node is null.
        FltReferenceChain chain;
        FltConvertedFiles files;
        FltAllowances allowances;
        FltTextures textures;
        FltConversionHost* host = nullptr;
    };

    explicit State(bool makesNodes)
        : ownShared(makesNodes), shared(ownShared), instances(warnings, shared.allowances)
    {
    }

    /// For the conversion of an external file.
    State(Shared& shared, FltInstanceGraph::Surroundings const& surroundings, int hierarchyDepth)
        : ownShared(false), shared(shared), instances(warnings, shared.allowances, surroundings),
          hierarchyDepth(hierarchyDepth)
    {
    }

    State(State const&) = delete;
    State& operator=(State const&) = delete;

    /// Whether this is no conversion of an external file.
    bool isTopLevel() const { return &shared == &ownShared; }

    /// A new node.
    template <class Node>
    Node* make() const
    {
        return shared.makesNodes ? new Node : nullptr;
    }

    /// A new group that bears a name, and is to be opened next.
    template <class Node>
    Node* makeNamed(std::string const& name)
    {
        Node* const node = make<Node>();
        giveName(node, name);
        return node;
    }

    /// Gives the group that is opened next, or was opened last, its name.
    void giveName(SoNode* node, std::string const& name);

    /// Hangs a node below a group.
    static void hang(SoGroup* parent, SoNode* child);

    /// Hangs a group below the top of the stack, makes it the one that the next Push opens, and applies the
    /// ancillary records after the record to it.
    void openNode(FltToInventor& converter, SoGroup* group, RecordIterator& iterator);

    /// The same for a group whose child, which isn't hung yet, is the one that the next Push opens.
    void openNode(FltToInventor& converter, SoGroup* outer, SoGroup* inner, RecordIterator& iterator);

    /// Lets the host know, once in a while, how far the conversion is.
    void reportProgress(RecordIterator const& iterator)
    {
        if (shared.host != nullptr)
            reportConverted(iterator);
    }
    void reportConverted(RecordIterator const& iterator);

    /// The node of a texture that the file at hand names.
    SoNodeRef<SoTexture2> makeTexture(std::string const& fileName);

    /// Whether a level is open.
    bool isLevelOpen() const;

    /// The group that takes what comes next, or null with no level open. What the toolkit remembers of a box
    /// around it is forgotten: that happens when a level is opened again below a finished level of detail.
    SoGroup* stackTop();

    /// Whether the top of the stack, which has to be there, is a converted switch.
    bool isTopSwitch();

    SoLabel* makeLabel(std::string const& text) const;

    void nameAsChildOf(SoGroup const& group, SoSwitch& child);

    /// A node that hangs nowhere lives until the conversion ends.
    void keepUnattached(SoNode* node);

    /// Hangs the scene of an external file below @p parent, or reports why not.
    void convertExternalFile(std::string const& path, std::string const& fullPath, SoGroup* parent);

    /// Hangs a scene below @p parent that was made of the file for another place.
    void placeFinishedFile(std::string const& name, std::string const& path,
                           FltConvertedFiles::Scene const& scene, FltInstanceAccount::Place place,
                           SoGroup* parent);

    Shared ownShared;
    Shared& shared;

    FltFileLog log;
    FltParserHolder parser;

    SoSeparator* result = nullptr;
    bool allFltRecordsVisited = false;
    bool visitsRecords = false; ///< While the nodes of a whole file are built.
    std::string relativePath;
    SoNodeRef<SoLabel> minRangeLabel{makeLabel("MinRangeLimitForLOD")};
    SoNodeRef<SoLabel> maxRangeLabel{makeLabel("MaxRangeLimitForLOD")};

    FltPalettes palettes{shared.makesNodes};
    FltVertexPalette vertices{palettes.colorPalette, shared.makesNodes};
    FltFaceResources faceResources{vertices, palettes, shared.allowances.oldVertexIndices};

    std::stack<OpenLevel> nodesStack; ///< The open levels of the hierarchy.
    OpenLevel current;                ///< The group that the next Push opens.
    std::vector<SoNodeRef<SoNode>> unattachedNodes;
    FltSilencedScene scene;
    std::unordered_map<SoGroup*, FltConvertedSwitch> switches; ///< Those that were asked for a child.
    FltOneTimeWarnings warnings;
    FltLODCentres lodCentres{scene, shared.allowances.lodCentreSteps, warnings};
    FltInstanceAccount instances;
    FltExternalFiles externalFiles;
    int hierarchyDepth = 0;
    std::ptrdiff_t reportedRecords = 0; ///< How many the host knows to be converted.
};
