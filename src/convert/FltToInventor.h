#pragma once

#include "convert/FltInstanceGraph.h"
#include "convert/FltToObject.h"
#include "convert/VertexEntry.h"
#include "toolkit/VelloReaderExport.h"

#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <stack>
#include <string>
#include <sys/types.h>
#include <unordered_map>
#include <utility>
#include <vector>

class FltInput;
class FltLogStream;
class FltRecord;
class FltRecordBoundingBox;
class FltRecordBoundingVolumeCenter;
class FltRecordBoundingVolumeCylinder;
class FltRecordBoundingVolumeOrientation;
class FltRecordBoundingVolumeSphere;
class FltRecordClipRegion;
class FltRecordColorPalette;
class FltRecordComment;
class FltRecordDOF;
class FltRecordExternalReference;
class FltRecordGroup;
class FltRecordHeader;
class FltRecordInstanceDefinition;
class FltRecordInstanceReference;
class FltRecordLightSourcePalette;
class FltRecordLineStylePalette;
class FltRecordLOD;
class FltRecordLongID;
class FltRecordMaterial;
class FltRecordMatrix;
class FltRecordNamePalette;
class FltRecordObject;
class FltRecordOldBoundingBox;
class FltRecordOLDLOD;
class FltRecordOLDMaterialPalette;
class FltRecordReplicate;
class FltRecordRotateAboutPoint;
class FltRecordScaleNonUniform;
class FltRecordSwitch;
class FltRecordText;
class FltRecordTextureMappingPalette;
class FltRecordTexturePattern;
class FltRecordTranslate;
class FltRecordUnknown;
class FltRecordVertexColor;
class FltRecordVertexColorNormal;
class FltRecordVertexColorNormalUv;
class FltRecordVertexColorUv;
class FltRecordVertexPalette;
class SoDrawStyle;
class SoGroup;
class SoInfo;
class SoLabel;
class SoLOD;
class SoMaterial;
class SoNode;
class SoSeparator;
class SoTexture2;
class SoVertexProperty;

/// One conversion of one OpenFlight file into an Open Inventor scene graph.
///
/// Most hosts need convertFromFile() alone. A host that wants to see the records, or statistics of them,
/// makes the object itself: setFltInputToconvert() with an input of its own, setResult(), and convert().
///
/// Conversions share std::cout's buffer, the message console and the factory's memory of the record before,
/// so one runs at a time. After a conversion with a log std::cout stands on the closed log: its output is
/// lost until the host puts its own buffer back, or the next conversion opens the next log. The closed log
/// streams, some hundred bytes each, stay alive for that reason.
class VELLOREADER_API FltToInventor : public FltToObject<SoSeparator>
{
public:
    /// A position in a vector of records that ends with a null entry.
    using RecordIterator = std::vector<FltRecord*>::const_iterator;

    /// Converts a file, and writes the dump of its records into a log beside it: the file's name with ".log"
    /// behind.
    /// @return the root of the scene graph; null for an empty name. A file that can't be opened or isn't
    /// OpenFlight
    ///         gives an empty separator that nobody holds (reference count 0), and a message on std::cerr. A
    ///         file whose header was converted gives one with a reference that nothing gives back: the
    ///         caller's.
    static SoSeparator* convertFromFile(char const* fileName);

    static char const* getProductNameString(); ///< "VelloReader"
    static char const* getVersionString();     ///< "9.6.1"

    /// Readies the toolkit's database if the host has not. @return non-zero
    static int internalInit();

    FltToInventor();

    /// Frees the parsers that setFltInputToconvert() made, closes the log, and lets the tables and their
    /// nodes go.
    ~FltToInventor() override;

    FltToInventor(FltToInventor const&) = delete;
    FltToInventor& operator=(FltToInventor const&) = delete;

    void update(FltRecord const* record) override;

    /// Sets the root; null makes a new one. Takes no reference.
    void setResult(SoSeparator* root) override;
    SoSeparator* getResult() const override;

    /// Takes a parser that belongs to the caller, and attaches itself to it as an observer.
    void setFltParser(FltParser* parser) override;

    /// Lets go of a parser that setFltInputToconvert() made. The object lives on until this one is destroyed.
    void deleteCurrentFltParser() override;

    /// Parses and converts. @return 0, or 1 after a message: no parser, no input, not OpenFlight, or a
    /// revision below
    /// 11. In the last case the records stay alive.
    virtual int convert();

    /// Makes a parser of its own for @p input, which stays the caller's and has to outlive this object.
    virtual void setFltInputToconvert(FltInput* input);

    virtual bool isAllFltRecordsVisited() const;

    /// Builds the scene graph below the result from the parser's records.
    virtual void visitAllFltRecords();

    /// Deletes the parser's records, each once. The vector keeps its size and its entries, which then dangle.
    virtual void destroyAllFltRecords();

    std::string const& getRelativePath() const;
    void setRelativePath(std::string& path);

    /// Sends std::cout into a new file at @p path. A file that can't be made loses the output silently.
    void enableFileLogging(char const* path);

    /// Closes the log. std::cout's buffer isn't put back.
    void disableFileLogging();

    /// Writes the counts of the parser's records by opcode into a file: the input's name with ".stat" behind
    /// it. To be called while the records are alive; afterwards, or without a parser and its input, it does
    /// nothing.
    void makeStats() const;

    /// @name Dispatch
    /// Handlers that take an iterator expect it on the record to handle and leave it on the last one
    /// consumed, or on the null entry at the vector's end.
    /// @{
    void visitPrimaryRecord(RecordIterator& iterator);
    void visitAncillaryRecord(FltRecord* record);
    void visitControlRecord(FltRecord* record);
    void visitPaletteRecord(FltRecord* record);
    void visitUnknownCategoryFltRecord(FltRecord* record);
    void visitPushLevel();
    void visitPopLevel();

    /// Applies the run of ancillary records at the iterator to @p group, and leaves the iterator on the first
    /// record behind the run.
    void visitAncillaryRecords(RecordIterator& iterator, SoGroup* group);
    void iterator2VectorOfAncillaryElements(std::vector<FltRecord*>& out, RecordIterator& iterator);

    /// Converts the level at the iterator; with no level there, the one record.
    void visitGroupChildren(RecordIterator& iterator);
    void visitHeader(FltRecordHeader const* record);
    /// @}

    /// @name Vertex palette
    /// @{
    void visitVertexPalette(FltRecordVertexPalette const* record);
    void visitVertexColor(FltRecordVertexColor const* record);
    void visitVertexColorNormal(FltRecordVertexColorNormal const* record);
    void visitVertexColorUV(FltRecordVertexColorUv const* record);
    void visitVertexColorNormalUV(FltRecordVertexColorNormalUv const* record);

    /// Looks a vertex up by its byte offset in the palette. An unknown offset enters the map with a default
    /// entry.
    int getIndexVertexFromOffset(unsigned long offset);
    int getSizeVertexFromOffset(unsigned long offset);
    SoVertexProperty* getSoVertexPropertyFromOffset(unsigned long offset);

    /// 1 to 4 in the order colour, colour-normal, colour-UV, colour-normal-UV. Another id gives the first,
    /// and a message.
    SoVertexProperty* getVertexPropertyFromIntId(int const& id) const;

    /// The reverse. Another node gives 5, and a message.
    int getIntIdFromVertexProperty(SoVertexProperty const* property) const;

    /// Adds a vertex of the form with normal and UV, made of a vertex of any form and a normal.
    /// @param resultIndex set to the position of the new vertex
    void copyVertexToVertexColorNormalUV(int sourceId, int sourceIndex, SbVec3f normal, int& resultIndex);

    /// Prints the map from offsets to vertices to std::cout, at most @p limit lines if that is above 0.
    void showOffsetToVertexEntryMap(int limit) const;
    /// @}

    /// @name Hierarchy nodes
    /// @{
    void visitGroup(FltRecordGroup const* record, RecordIterator& iterator);
    void visitObject(FltRecordObject const* record, RecordIterator& iterator);
    void visitLOD(FltRecordLOD const* record, RecordIterator& iterator);
    void visitOLDLOD(FltRecordOLDLOD const* record, RecordIterator& iterator);
    void visitSwitch(FltRecordSwitch const* record, RecordIterator& iterator);
    void visitDOF(FltRecordDOF const* record, RecordIterator& iterator);
    void visitClipRegion(FltRecordClipRegion const* record, RecordIterator& iterator);
    void visitText(FltRecordText const* record, RecordIterator& iterator);
    void visitUnknownPrimaryRecord(FltRecordUnknown const* record, RecordIterator& iterator);

    /// Faces that stand outside an Object.
    void visitNextSuccessiveFaces(RecordIterator& iterator);

    /// Turns the records of an Object into geometry below @p destination.
    /// @param transparency of the Object, in the file's units from 0 to 65535
    void visitObjectFaceRecords(RecordIterator& iterator, float const& transparency, SoGroup*& destination);

    void visitComment(FltRecordComment const* record, SoGroup* group);
    void visitLongID(FltRecordLongID const* record, SoNode* node);
    void visitMatrix(FltRecordMatrix const* record, SoGroup* group);
    void visitTranslate(FltRecordTranslate const* record, SoGroup* group);
    void visitScaleNonUniform(FltRecordScaleNonUniform const* record, SoGroup* group);
    void visitRotateAboutPoint(FltRecordRotateAboutPoint const* record, SoGroup* group);
    void visitBoundingBox(FltRecordOldBoundingBox const* record);
    void visitBoundingBox(FltRecordBoundingBox const* record);
    void visitBoundingVolumeSphere(FltRecordBoundingVolumeSphere const* record);
    void visitBoundingVolumeCylinder(FltRecordBoundingVolumeCylinder const* record);
    void visitBoundingVolumeCenter(FltRecordBoundingVolumeCenter const* record);
    void visitBoundingVolumeOrientation(FltRecordBoundingVolumeOrientation const* record);

    /// Hangs a node below the top of the stack; below a converted switch, in a SoSwitch of its own. With no
    /// level open the node isn't attached, and goes with this object.
    void addSoGroupToNodesStackTop(SoGroup* node);

    void setFltSwitchPropertiesToSoInfo(SoInfo*& info, FltRecordSwitch const* record);
    char const* getInfoStringFromAConvertedFltSwitch(SoGroup* group) const;
    int currentNumberOfSwitchChildren(SoGroup* group) const;

    /// Whether the next child of a converted switch is to be drawn, by the text of its masks.
    bool isSoSwitchTraverseHisChildren(SoGroup* group) const;
    /// @}

    /// @name Instancing, replication, external references
    /// @{
    void visitInstanceDefinition(FltRecordInstanceDefinition const* record);
    void visitInstanceReference(FltRecordInstanceReference const* record);
    void visitReplicate(FltRecordReplicate const* record, SoNode* node,
                        std::vector<FltRecord*>::iterator& ancillary, std::vector<FltRecord*>& ancillaries,
                        RecordIterator& iterator);
    void visitExternalReference(FltRecordExternalReference const* record, RecordIterator& iterator);
    /// @}

    /// @name Palettes
    /// @{
    void visitColorPalette(FltRecordColorPalette const* record);
    void visitMaterial(FltRecordMaterial const* record);
    void visitOLDMaterialPalette(FltRecordOLDMaterialPalette const* record);
    void visitTexturePattern(FltRecordTexturePattern const* record);
    void visitLineStylePalette(FltRecordLineStylePalette const* record);
    void visitNamePalette(FltRecordNamePalette const* record);
    void visitLightSourcePalette(FltRecordLightSourcePalette const* record);
    void visitTextureMapping(FltRecordTextureMappingPalette const* record);
    /// @}

private:
    friend class FltObjectToSoSeparator;

    /// The forms of a vertex, in the order of their property ids, which are one higher.
    enum VertexForm { colorForm, colorNormalForm, colorUVForm, colorNormalUVForm, vertexFormCount };

    /// Where a form's values are written: the storage of its fields as they stand, with the number of values
    /// there.
    struct VertexFieldPointers {
        SbVec3f* vertex = nullptr;
        SbVec3f* normal = nullptr;
        SbVec2f* texCoord = nullptr;
        std::uint32_t* orderedRGBA = nullptr;
        int vertexNum = 0;
        int normalNum = 0;
        int texCoordNum = 0;
        int orderedRGBANum = 0;
    };

    /// A node of the graph with its place in it.
    struct OpenLevel {
        SoGroup* group = nullptr;
        FltInstanceGraph::Place place;
        std::size_t order = 0; ///< Among the silenced nodes.
    };

    /// Silenced nodes from one to another.
    struct NodeRange {
        std::size_t begin;
        std::size_t end;
    };

    /// What the conversions of a file and of all that it refers to have in common.
    struct References {
        std::vector<std::pair<dev_t, ino_t>>
            chain;                        ///< The files from the top one to the one being converted.
        int opened = 0;                   ///< External files so far.
        std::size_t commentText = 0;      ///< Bytes of comments so far.
        std::size_t oldVertexIndices = 0; ///< In the face sets of obsolete vertices so far.
        std::int64_t lodCentreSteps = 0;  ///< Spent on the centres of levels of detail so far.
    };

    /// A file that was converted already.
    struct ExternalFile {
        bool isOpen = false; ///< Whether there was anything to read.
        int scope = 0;       ///< Its scene in the account of instances.
    };

    /// The masks of a converted switch, parsed once, and how far its children have been counted.
    struct SwitchState {
        SoInfo* info = nullptr;
        std::vector<std::int32_t> maskNumbers;
        int childrenSeen = 0;
        int switchChildren = 0;
    };

    /// For the conversion of an external file.
    FltToInventor(References& references, int depthAbove, int hierarchyDepth);

    void init();
    void abandonRecords(FltParser* parser);

    // Vertex palette
    SoVertexProperty* propertyOf(int form) const;
    void takeVertexFieldPointers(int form);
    void setVertexFieldSizes(int form, int size);
    void clearVertexFields(int form, int from);
    void growVertexFields(int form);
    void finalizeVertexProperties();
    void makeRoomForIndices(int form);
    void closeVertexProperties();
    VertexEntry& entryAt(unsigned long offset);
    void addVertex(int form, FltRecordVertexColor const& record, float const* normal, float const* texture);
    std::uint32_t packedColorOf(int form, FltRecordVertexColor const& record) const;

    // Hierarchy
    void openNode(SoGroup* attached, SoGroup* receiver, RecordIterator& iterator);
    void passOverLevel(RecordIterator& iterator);
    void keepUnattached(SoNode* node);
    SoGroup* stackTop();
    void silence(SoNode* node);
    void endSilence();
    void addCommentLine(char const* text, SoGroup* group);
    void setCentreFromBox(SoLOD* lod, SoGroup* children, std::size_t order, std::int64_t steps);

    /// Tells an answer other than fine to the console, once for each conversion.
    void notifyRefusal(FltInstanceGraph::Answer answer);
    void notifyOnce(std::string const& text);

    /// Hangs the scene of an external file below @p parent, or tells why not.
    void convertExternalFile(std::string const& path, std::string const& fullPath, SoGroup* parent);

    /// Vertices of each form that there is room for before the first one grows. Tests make it small, so that
    /// small databases grow.
    static int initialVertexCapacity;
    friend class SmallVertexPalettes;

    FltParser* fltParser = nullptr;
    bool ownsFltParser = false;
    SoSeparator* result = nullptr;
    bool allFltRecordsVisited = false;
    SoLabel* minRangeLabel = nullptr;
    SoLabel* maxRangeLabel = nullptr;
    std::string relativePath;
    std::map<std::string, SoSeparator*> externalReferences;
    std::map<unsigned long, VertexEntry> offsetToVertexEntryMap;
    std::map<unsigned long, VertexEntry>::iterator lastVertexEntry = offsetToVertexEntryMap.end();
    unsigned long nextVertexOffset = 8;
    SoVertexProperty* vertexColorProperty = nullptr;
    SoVertexProperty* vertexColorUVProperty = nullptr;
    SoVertexProperty* vertexColorNormalProperty = nullptr;
    SoVertexProperty* vertexColorNormalUVProperty = nullptr;
    int vertexCounts[vertexFormCount] = {};
    int vertexCapacities[vertexFormCount] = {};
    int highestVertexIndices[vertexFormCount] = {-1, -1, -1, -1}; ///< That a face names in each property.
    VertexFieldPointers vertexFieldPointers[vertexFormCount];
    std::uint32_t colorPalette[4152] = {};
    SoMaterial* materialPalette = nullptr;
    std::map<int, SoTexture2*> texturePalette;
    std::map<int, void*> reservedMap;
    std::map<int, std::string> namePalette;
    std::map<int, SoDrawStyle*> lineStylePalette;
    std::map<int, SoNode*> instanceDefinitions;
    bool rgbMode = false;
    bool vertexPropertiesFinalized = false;
    std::stack<OpenLevel> nodesStack; ///< The open levels of the hierarchy.
    OpenLevel current;                ///< The group that the next Push opens.
    bool fileLoggingEnabled = false;
    FltLogStream* logStream = nullptr;

    bool recordsDestroyed = false;
    std::vector<FltParser*> retiredParsers;
    std::vector<SoNode*> unattachedNodes; ///< Ref'd: they go with this object.
    std::vector<SoNode*> silencedNodes;   ///< They tell nobody of their changes until the conversion ends.
    std::vector<NodeRange> boxedNodes;    ///< Of which the toolkit remembers a box, in ascending order.
    std::map<std::string, ExternalFile> externalFiles; ///< What is known of the files in externalReferences.
    std::map<int, int> instanceScopes;
    mutable std::unordered_map<SoGroup*, SwitchState> switchStates;
    bool visitsRecords = false; ///< While the nodes of a whole file are built.
    int vertexTargets[vertexFormCount] = {colorForm, colorNormalForm, colorUVForm, colorNormalUVForm};
    FltInstanceGraph instanceGraph;
    References ownReferences;
    References& references;
    int hierarchyDepth = 0;
    std::set<std::string> toldOnce;
};
