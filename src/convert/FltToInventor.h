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

    /// Does what the conversion of an input does, external files included, but makes no node: the same
    /// records are dumped in the same order, and the host learns of all but textures. Of what is wrong it
    /// reports what concerns records. The toolkit needn't have been started.
    /// @return 0, or 1 where convert() gives 1, or no record is whole
    static int list(FltInput& input, FltConversionHost& host);

    static char const* getProductNameString(); ///< "VelloReader"
    static char const* getVersionString();     ///< "9.6.1"

    /// Readies the toolkit's database if the host has not.
    /// @return non-zero
    static int internalInit();

    FltToInventor(); ///< No parser, no result, and empty tables.

    /// Frees the parsers that setFltInputToconvert() made, closes the log, and lets the tables and their
    /// nodes go.
    ~FltToInventor() override;

    FltToInventor(FltToInventor const&) = delete;
    FltToInventor& operator=(FltToInventor const&) = delete;

    /// Does nothing: the records are visited when all of them are there.
    void update(FltRecord const* record) override;

    /// Sets the root; null makes a new one. Takes no reference.
    void setResult(SoSeparator* root) override;

    /// The root of the scene graph; null before there is one. It takes no reference.
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

    virtual bool isAllFltRecordsVisited() const; ///< Whether visitAllFltRecords() has come to its end.

    /// Builds the scene graph below the result from the parser's records.
    virtual void visitAllFltRecords();

    /// Deletes the parser's records, each once. The vector keeps its size and its entries, which then dangle.
    virtual void destroyAllFltRecords();

    /// What is put before the names of textures: empty, or a directory with a slash.
    std::string const& getRelativePath() const;
    void setRelativePath(std::string& path); ///< Sets it.

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

    /// Makes the nodes of a primary record, of the records that belong to it, and of the level below it.
    void visitPrimaryRecord(RecordIterator& iterator);

    /// Does nothing: ancillary records are applied with the node that they follow.
    void visitAncillaryRecord(FltRecord* record);

    /// Opens or closes a level, or defines or places an instance.
    void visitControlRecord(FltRecord* record);

    /// Takes an entry of a palette, a vertex among them, into the tables.
    void visitPaletteRecord(FltRecord* record);
    void visitUnknownCategoryFltRecord(FltRecord* record); ///< Does nothing.

    /// Opens a level below the node that was made last. The first one ends the vertex palette.
    void visitPushLevel();
    void visitPopLevel(); ///< Closes a level. With none open that is reported.

    /// Applies the run of ancillary records at the iterator to @p group, and leaves the iterator on the first
    /// record after the run.
    void visitAncillaryRecords(RecordIterator& iterator, SoGroup* group);

    /// Appends the run of ancillary records at the iterator, and leaves it on the first record after them.
    void iterator2VectorOfAncillaryElements(std::vector<FltRecord*>& out, RecordIterator& iterator);

    /// Converts the level at the iterator; with no level there, the one record.
    void visitGroupChildren(RecordIterator& iterator);

    /// Names the root, takes a reference to it, and gives it the scale to metres and what all shapes share.
    void visitHeader(FltRecordHeader const* record);
    /// @}

    /// @name Vertex palette
    /// @{

    /// Does nothing: the vertices come as records of their own.
    void visitVertexPalette(FltRecordVertexPalette const* record);
    void visitVertexColor(FltRecordVertexColor const* record); ///< Adds a vertex with a colour.

    /// Adds a vertex with a colour and a normal.
    void visitVertexColorNormal(FltRecordVertexColorNormal const* record);

    /// Adds a vertex with a colour and texture coordinates.
    void visitVertexColorUV(FltRecordVertexColorUv const* record);

    /// Adds a vertex with a colour, a normal and texture coordinates.
    void visitVertexColorNormalUV(FltRecordVertexColorNormalUv const* record);

    /// Looks a vertex up by its byte offset in the palette. An unknown offset enters the map with zeros.
    int getIndexVertexFromOffset(unsigned long offset);
    int getSizeVertexFromOffset(unsigned long offset); ///< The bytes of the record of that vertex.

    /// The node that holds that vertex.
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

    /// A separator, and in it the level.
    void visitGroup(FltRecordGroup const* record, RecordIterator& iterator);

    /// A separator, and in it the faces.
    void visitObject(FltRecordObject const* record, RecordIterator& iterator);

    /// An SoLOD: the level between two empty labels, for the eye too near and too far.
    void visitLOD(FltRecordLOD const* record, RecordIterator& iterator);

    /// The same for the old form of the record.
    void visitOLDLOD(FltRecordOLDLOD const* record, RecordIterator& iterator);

    /// A separator whose name marks a switch, its masks as an SoInfo, and in it the level.
    void visitSwitch(FltRecordSwitch const* record, RecordIterator& iterator);

    /// A separator, and in it the level. Nothing moves.
    void visitDOF(FltRecordDOF const* record, RecordIterator& iterator);

    /// A separator with the clip planes.
    void visitClipRegion(FltRecordClipRegion const* record, RecordIterator& iterator);
    void visitText(FltRecordText const* record, RecordIterator& iterator); ///< A separator without the text.

    /// A separator that tells of the record by its name alone.
    void visitUnknownPrimaryRecord(FltRecordUnknown const* record, RecordIterator& iterator);

    /// Faces that stand outside an Object.
    void visitNextSuccessiveFaces(RecordIterator& iterator);

    /// Turns the records of an Object into geometry below @p destination.
    /// @param transparency of the Object, in the file's units from 0 to 65535
    void visitObjectFaceRecords(RecordIterator& iterator, float const& transparency, SoGroup*& destination);

    /// Adds an SoInfo for each line, with the text from there on.
    void visitComment(FltRecordComment const* record, SoGroup* group);
    void visitLongID(FltRecordLongID const* record, SoNode* node);   ///< Names the node.
    void visitMatrix(FltRecordMatrix const* record, SoGroup* group); ///< Adds an SoMatrixTransform.

    /// Does nothing: the matrix holds it.
    void visitTranslate(FltRecordTranslate const* record, SoGroup* group);

    /// Does nothing: the matrix holds it.
    void visitScaleNonUniform(FltRecordScaleNonUniform const* record, SoGroup* group);

    /// Does nothing: the matrix holds it.
    void visitRotateAboutPoint(FltRecordRotateAboutPoint const* record, SoGroup* group);
    void visitBoundingBox(FltRecordOldBoundingBox const* record);                          ///< Does nothing.
    void visitBoundingBox(FltRecordBoundingBox const* record);                             ///< Does nothing.
    void visitBoundingVolumeSphere(FltRecordBoundingVolumeSphere const* record);           ///< Does nothing.
    void visitBoundingVolumeCylinder(FltRecordBoundingVolumeCylinder const* record);       ///< Does nothing.
    void visitBoundingVolumeCenter(FltRecordBoundingVolumeCenter const* record);           ///< Does nothing.
    void visitBoundingVolumeOrientation(FltRecordBoundingVolumeOrientation const* record); ///< Does nothing.

    /// Hangs a node below the top of the stack; below a converted switch, in a SoSwitch of its own. With no
    /// level open the node isn't attached, and goes with this object.
    void addSoGroupToNodesStackTop(SoGroup* node);

    /// Writes the masks of a switch into the text of a node.
    void setFltSwitchPropertiesToSoInfo(SoInfo*& info, FltRecordSwitch const* record);

    /// That text of a converted switch; "No_SoInfo_switch_found" if it has none.
    char const* getInfoStringFromAConvertedFltSwitch(SoGroup* group) const;

    /// How many children a converted switch has got so far.
    int currentNumberOfSwitchChildren(SoGroup* group) const;

    /// Whether the next child of a converted switch is to be drawn, by the text of its masks.
    bool isSoSwitchTraverseHisChildren(SoGroup* group) const;
    /// @}

    /// @name Instancing, replication, external references
    /// @{

    /// A separator under a number, for what stands in the level after it.
    void visitInstanceDefinition(FltRecordInstanceDefinition const* record);

    /// Adds the separator of that number to the level; nothing if there is none yet.
    void visitInstanceReference(FltRecordInstanceReference const* record);

    /// Adds a node several more times, each behind the second of the next two matrices.
    /// @param ancillary   on the record; left on the last one used, or at the end
    /// @param ancillaries all that belong to the node
    /// @param iterator    goes on by one for each time
    void visitReplicate(FltRecordReplicate const* record, SoNode* node,
                        std::vector<FltRecord*>::iterator& ancillary, std::vector<FltRecord*>& ancillaries,
                        RecordIterator& iterator);

    /// A separator with the root of another file, which is converted here and now, once.
    void visitExternalReference(FltRecordExternalReference const* record, RecordIterator& iterator);
    /// @}

    /// @name Palettes
    /// @{
    void visitColorPalette(FltRecordColorPalette const* record); ///< Replaces the colours of indices.
    void visitMaterial(FltRecordMaterial const* record);         ///< Sets the material of an index.

    /// Sets all 64 materials of the old form.
    void visitOLDMaterialPalette(FltRecordOLDMaterialPalette const* record);
    void visitTexturePattern(FltRecordTexturePattern const* record); ///< Makes the texture of an index.

    /// Makes the line style of an index, which no node has.
    void visitLineStylePalette(FltRecordLineStylePalette const* record);
    void visitNamePalette(FltRecordNamePalette const* record); ///< Replaces the names, which nobody reads.
    void visitLightSourcePalette(FltRecordLightSourcePalette const* record); ///< Does nothing.
    void visitTextureMapping(FltRecordTextureMappingPalette const* record);  ///< Does nothing.
    /// @}

private:
    struct VELLOREADER_INNER State;

    /// For the conversion of an external file, or without a scene.
    explicit FltToInventor(std::unique_ptr<State> state);

    std::unique_ptr<State> state;
};
