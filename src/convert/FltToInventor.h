#pragma once

#include "convert/FltRecordDeclarations.h"
#include "convert/FltToObject.h"
#include "toolkit/VelloReaderExport.h"

#include <Inventor/SbVec3f.h>
#include <memory>
#include <string>
#include <vector>

class FltConversionHost;
class FltInput;
class SoGroup;
class SoInfo;
class SoNode;
class SoSeparator;
class SoVertexProperty;
struct FltFaceResources;

/// One conversion of one OpenFlight file into an Open Inventor scene graph.
///
/// Most hosts need convertFromFile() alone. A host that wants to see the records, or statistics of them,
/// makes the object itself: setFltInputToconvert() with an input of its own, setResult(), and convert().
///
/// Conversions share std::cout's buffer, the message console and the factory's memory of the previous
/// record, so one runs at a time. After a conversion with a log std::cout stands on the closed log: its
/// output is lost until the host puts its own buffer back, or the next conversion opens the next log. The
/// closed log streams, some hundred bytes each, stay alive for that reason.
class VELLOREADER_API FltToInventor : public FltToObject<SoSeparator>
{
public:
    /// A position in a vector of records that ends with a null entry.
    using RecordIterator = std::vector<FltRecord*>::const_iterator;

    /// Converts a file, and writes the dump of its records into a log beside it: the file's name and ".log".
    /// A file whose header was converted gives a root with one reference, which is the caller's to give back.
    /// A file that can't be opened or isn't OpenFlight gives an empty separator without any reference, and a
    /// message on std::cerr.
    /// @return the root of the scene graph; null for an empty name
    static SoSeparator* convertFromFile(char const* fileName);

    static char const* getProductNameString(); ///< "VelloReader"
    static char const* getVersionString();     ///< "9.6.1"

    /// Readies the toolkit's database if the host has not.
    /// @return non-zero
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

    /// Lets go of a parser that setFltInputToconvert() made. It lives on until this object is destroyed.
    void deleteCurrentFltParser() override;

    /// Parses and converts. A revision below 11 isn't converted; the records stay alive then.
    /// @return 0, or 1 after a message: no parser, no input, not OpenFlight, or a revision below 11
    virtual int convert();

    /// Makes a parser of its own for @p input, which stays the caller's and has to outlive this object.
    virtual void setFltInputToconvert(FltInput* input);

    /// Sets who takes part in the conversion, also in that of external files; null by default. Not owned.
    void setHost(FltConversionHost* host);

    virtual bool isAllFltRecordsVisited() const;

    /// Builds the scene graph below the result from the parser's records.
    virtual void visitAllFltRecords();

    /// Deletes the parser's records, each once. The vector keeps its size and its entries, which then dangle.
    virtual void destroyAllFltRecords();

    std::string const& getRelativePath() const;
    void setRelativePath(std::string& path);

    /// Sends std::cout into a new file at @p path. If the file can't be made, the output is lost silently.
    void enableFileLogging(char const* path);

    /// Closes the log. std::cout's buffer isn't put back.
    void disableFileLogging();

    /// Writes the counts of the parser's records by opcode into a file: the input's name and ".stat". To be
    /// called while the records are alive; afterwards, or without a parser and its input, it does nothing.
    void makeStats() const;

    /// What faces share, for the library's own FltObjectToSoSeparator. Valid as long as this object lives.
    FltFaceResources const& getFaceResources() const;

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
    /// record after the run.
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

    /// Looks a vertex up by its byte offset in the palette. An unknown offset enters the map with zeros.
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
    struct VELLOREADER_INNER State;

    /// For the conversion of an external file.
    explicit FltToInventor(std::unique_ptr<State> state);

    std::unique_ptr<State> state;
};
