#include "inspect/FltFinding.h"
#include "messages/FltFindingNumber.h"

#include <algorithm>
#include <iterator>

namespace Number = FltFindingNumber;

namespace
{

constexpr auto note = FltFindingKind::Severity::note;
constexpr auto warning = FltFindingKind::Severity::warning;
constexpr auto error = FltFindingKind::Severity::error;

// clang-format off
constexpr FltFindingKind kinds[] = {
    {Number::zeroLength, error, "A record has the length zero",
     "A record's length leads to the next one. After this record nothing can be read.",
     "Fetch or export the file again. The bytes before the record are read."},
    {Number::recordPastEnd, error, "A record ends after the file does",
     "The file is cut off, or a length is damaged. The record and what follows it are not read.",
     "Fetch the file again: mostly a copy broke off."},
    {Number::cutHead, warning, "Bytes are left after the last record",
     "The file ends inside the first four bytes of a record, so it is cut off, or something was added to it.",
     "Fetch or export the file again."},
    {Number::shorterThanHead, warning, "A record is shorter than four bytes",
     "Opcode and length alone take four bytes. The records after it are read from the wrong place.",
     "Export the file again; if it comes again, report it to the maker of the exporter."},
    {Number::shorterThanLayout, warning, "A record is shorter than its layout",
     "Its last fields aren't there. Readers take zeros, or the bytes that follow, in their place.",
     "Export at the revision that the header says, with an exporter that writes whole records."},
    {Number::brokenPromise, warning, "A list promises more than its record holds",
     "A count and the length of its record don't agree. What is there is kept.",
     "Export the file again."},
    {Number::unknownOpcode, warning, "A record has an opcode that the format doesn't have",
     "It is passed over. Either an exporter has added it, or the file is damaged before this place.",
     "If the records after it look wrong too, fetch the file again."},
    {Number::textTransfer, error, "The file was damaged by a transfer as text",
     "It holds no carriage return, and offsets with a line feed hit nothing: each byte 0D has become 0A. "
     "Coordinates, colours and offsets are wrong here and there.",
     "Fetch the file again in binary mode. What was lost can't be found again in this copy."},

    {Number::lostVertex, error, "A vertex list names no vertex",
     "At an offset of the list no vertex begins. The face loses a corner, or isn't drawn.",
     "Export the file again. If it was edited by hand, the offsets count from the vertex palette's first byte."},
    {Number::noArea, warning, "A face has no area",
     "Its vertices lie on one line or in one place, so nothing is drawn of it.",
     "Delete the face, or move its vertices apart."},
    {Number::noVertices, warning, "A face has no vertices",
     "Nothing is drawn of it.",
     "Delete the face, or give it a vertex list."},
    {Number::concaveFace, note, "A face is concave",
     "It has to be cut into triangles each time that it is read, and simple readers draw it wrong.",
     "Split it into convex faces."},
    {Number::unevenFace, note, "A face isn't flat",
     "Its picture depends on how a reader cuts it into triangles.",
     "Split it into triangles."},
    {Number::unusablePlace, error, "A vertex has no usable place",
     "A coordinate is infinite or not a number, or the file ends within it.",
     "Export the file again; look for a division by zero in what made it."},
    {Number::noTextureCoordinates, warning, "A textured face has vertices without texture coordinates",
     "The texture shows as one colour.",
     "Map the texture onto the face, or take the texture away."},
    {Number::lostMeshVertex, error, "A mesh primitive names no vertex",
     "An index is beyond the mesh's vertices, or the list is cut off.",
     "Export the file again."},
    {Number::emptyMesh, warning, "A mesh has no vertices",
     "Nothing is drawn of it.",
     "Delete the mesh, or export the file again."},
    {Number::nothingToSee, warning, "Nothing is to be seen",
     "The database holds no face, mesh, text, light point or reference to another file.",
     "Check that this is the right file, and that the exporter was given something to export."},
    {Number::unusableNormal, warning, "A normal has no direction",
     "It is zero, infinite or not a number. Lit faces take their own normal in its place, or are black in other "
     "readers.",
     "Have the normals calculated anew."},
    {Number::unevenNormal, note, "A normal isn't of length 1",
     "Readers that take it as it is draw its face too dark or too bright.",
     "Have the normals calculated anew, or export with normals of length 1."},
    {Number::unusableTextureCoordinates, warning, "A texture coordinate isn't a number",
     "The texture is smeared or missing there.",
     "Map the texture onto the face again."},
    {Number::opposedNormals, warning, "Normals point to the side of a face that isn't seen",
     "The face is seen from one side alone, by the order of its vertices, and lit as if it were seen from the "
     "other one: it is dark in the light.",
     "Turn the face round, or its normals."},
    {Number::coincidingFaces, warning, "Faces coincide",
     "Faces of the same vertices lie in one place without one being a sub-face of the other. Which of them is "
     "seen is left to chance, or one is drawn in vain.",
     "Delete one, or make it a sub-face."},
    {Number::unusedVertices, note, "Vertices are used by nothing",
     "They take room and time.",
     "Export the file again with an exporter that leaves them out."},
    {Number::transparentFace, warning, "A face is fully transparent",
     "By the transparencies of the face, the Object and the material nothing is seen of it.",
     "Lower the transparency, or delete the face. If programs need it unseen, mark it as hidden."},
    {Number::lostDetail, note, "Coordinates are too large for their detail",
     "Readers that hold places as single precision numbers move vertices by as much as is told: walls tremble, "
     "and small parts are lost.",
     "Move the model towards the origin, and place it by a matrix or by a reference."},
    {Number::wrongBox, warning, "A stored box isn't that of the geometry",
     "Programs that trust it leave out what is in sight, or draw what isn't.",
     "Have the boxes calculated anew."},

    {Number::undefinedTexture, warning, "A texture index isn't defined",
     "The texture palette has no entry of this index. The face is drawn without a texture.",
     "Add the texture to the palette, or take it from the face."},
    {Number::undefinedMaterial, warning, "A material index isn't defined",
     "The material palette has no entry of this index. The face is drawn without its material.",
     "Add the material to the palette, or take it from the face."},
    {Number::undefinedColor, warning, "A colour index is outside of the palette",
     "The face is drawn in a wrong colour.",
     "Give the face a colour of the palette, or a packed colour."},
    {Number::undefinedLineStyle, warning, "A line style isn't defined",
     "The lines are drawn in the usual width.",
     "Add the line style to its palette, or choose another."},
    {Number::undefinedMapping, note, "A texture mapping isn't defined",
     "Modelling tools can't move the texture on the face any more. The picture doesn't change.",
     "Add the mapping to its palette, or take it from the face."},
    {Number::undefinedLight, warning, "A light source isn't defined",
     "The light source palette has no entry of this index: the light's colour and kind are unknown.",
     "Add the light source to the palette."},
    {Number::repeatedIndex, warning, "A palette index is given twice",
     "The later entry replaces the earlier one, also for the faces that meant that.",
     "Give one of them another index."},
    {Number::wrongPaletteLength, warning, "The length of the vertex palette is false",
     "Readers that skip the palette by its length go on in the wrong place.",
     "Export the file again."},

    {Number::missingTexture, warning, "A texture is missing",
     "Faces that show it are drawn without it.",
     "Put the image beside the database, give its directory with --texture-path, or correct its name."},
    {Number::missingReference, error, "A referenced database is missing",
     "Its place stays empty.",
     "Put the file where the reference says, relative to the database."},
    {Number::circularReference, error, "References lead back to where they began",
     "A database can't be a part of itself. The reference that closes the circle is left out.",
     "Take that reference out."},
    {Number::unreadableReference, error, "A referenced database can't be read",
     "Its place stays empty.",
     "Check the file with fltcheck."},
    {Number::textureElsewhere, note, "A texture is found at another place than stored",
     "It is found here by its name; on another machine it may not be.",
     "Store names relative to the database."},
    {Number::tooDeepReference, error, "References go too deep",
     "The chain of files that refer to one another is longer than is followed.",
     "Put databases together."},
    {Number::unreadableTexture, warning, "The picture of a texture can't be read",
     "Faces that show it are drawn without it.",
     "Save it anew as a PNG, JPEG, TIFF, GIF, SGI or TGA picture."},
    {Number::unevenTexture, note, "The sides of a texture aren't powers of two",
     "Old graphics cards and some programs scale it, which blurs it and takes time.",
     "Scale it to sides such as 256 or 512 pixels."},
    {Number::wrongAttributes, warning, "The attributes of a texture are not as they should be",
     "What a NAME.attr file says wrongly counts as not said: the texture repeats, and its colours multiply "
     "those of the face.",
     "Save the attributes again in the modelling tool, or delete the file."},
    {Number::referenceElsewhere, note, "A referenced database is found under another spelling",
     "The case of letters differs. Other programs, and the exact conversion, may not find it.",
     "Rename the file, or correct the reference."},
    {Number::missingNode, error, "A reference names a node that isn't there",
     "Its place stays empty. The exact conversion looks for a file of the whole name.",
     "Correct the name in angle brackets, or leave it out for the whole file."},

    {Number::popWithoutPush, error, "A level is closed that isn't open",
     "Nodes after it stand in the wrong place.",
     "Export the file again."},
    {Number::neverClosed, warning, "A level is never closed",
     "The file may be cut off.",
     "Fetch or export the file again."},
    {Number::pushWithoutNode, note, "A level opens after no node",
     "Its contents belong to the node above.",
     "Export the file again."},
    {Number::emptyGroup, note, "A group is empty",
     "It costs a little time and shows nothing.",
     "Delete it, unless a program looks for its name."},
    {Number::repeatedName, note, "Several nodes have the same name",
     "Programs and people find only one of them by it.",
     "Give each node a name of its own."},
    {Number::undefinedInstance, error, "An instance isn't defined",
     "The reference shows nothing.",
     "Define the instance, or take the reference out."},
    {Number::unusedDefinition, warning, "A defined instance is never used",
     "It isn't drawn where it stands.",
     "Refer to it, or delete it."},
    {Number::repeatedDefinition, warning, "An instance number is defined twice",
     "References show only one of the two.",
     "Give one of them another number."},
    {Number::circularInstance, error, "An instance is a part of itself",
     "The reference is left out.",
     "Take the reference out of the definition."},
    {Number::tooDeepLevels, error, "Levels are nested too deep",
     "What is deeper is left out, to protect programs that go through the scene.",
     "Flatten the hierarchy."},
    {Number::strayRecord, warning, "A record belongs to no node",
     "It follows the end of a level, which ends all that belongs to a node: it has no effect.",
     "Put it right after the node that it is about."},

    {Number::emptyRange, warning, "A level of detail has an empty range",
     "Its switch-in distance isn't above its switch-out distance: by the format it is never seen.",
     "Exchange the two distances, or set both to zero to show it always."},
    {Number::hiddenRange, warning, "A level of detail is hidden by the one above it",
     "There is no distance at which both are shown.",
     "Have the ranges of nested levels of detail overlap."},
    {Number::noSuchMask, error, "A switch has no such mask",
     "Its current mask isn't one of its masks, so nothing below it is shown.",
     "Choose one of its masks."},
    {Number::neverShownChild, warning, "A child of a switch is shown by no mask",
     "It is never seen.",
     "Set its bit in a mask, or delete it."},
    {Number::impossibleLimits, warning, "A degree of freedom has impossible limits",
     "Its least value is above its greatest, or its current value isn't between them.",
     "Correct limits or value."},
    {Number::flatMatrix, warning, "A matrix presses its node flat",
     "Its determinant is zero, or not a number: what is below it has no volume, or isn't seen.",
     "Give it a scale other than zero."},
    {Number::unusableRange, error, "A range isn't a number",
     "A distance or a centre of a level of detail is infinite or not a number.",
     "Correct the distances."},
    {Number::gapInLevels, warning, "Levels of detail leave a gap",
     "At distances between one level and the next nothing is seen.",
     "Have each level begin where the one before it ends."},
    {Number::overlappingLevels, warning, "Levels of detail overlap",
     "At some distances both are seen, one through the other.",
     "Have each level begin where the one before it ends."},
    {Number::mirroringMatrix, note, "A matrix mirrors its node",
     "Its determinant is below zero. Readers that don't turn the faces round draw them inside out.",
     "Mirror the geometry itself, and turn its faces round."},
    {Number::replicationInPlace, warning, "Copies stand in one place",
     "A replication has no matrix that moves the copies on, so they aren't drawn, or all in one place.",
     "Give it a matrix, or delete the replication."},

    {Number::unknownUnit, warning, "The unit isn't known",
     "The header names none that the format has. Metres are taken.",
     "Set the unit of the database."},
    {Number::zeroMultiplier, note, "The multiplier of the unit is zero",
     "No database has the size zero, so it is taken as one. Other readers may not do so.",
     "Set it to one."},

    {Number::lostMesh, warning, "Meshes aren't drawn",
     "The exact conversion takes mesh records as unknown ones.",
     "Use the complete conversion, or convert meshes to faces."},
    {Number::tooManyVertices, warning, "There are more than 100,000 vertices of one kind",
     "In the exact conversion their colours, and those after them, may come from elsewhere.",
     "Use the complete conversion, or split the database."},
    {Number::lostSubfaces, warning, "Sub-faces are lost",
     "The exact conversion draws sub-faces only if the object has a face of the same vertices that is none.",
     "Use the complete conversion."},
    {Number::passedOverInstance, warning, "An instance reference is passed over",
     "The exact conversion sees references only at the top level, and only after the definition.",
     "Use the complete conversion, or copy the instance."},
    {Number::drawnDefinition, warning, "An instance definition is drawn where it stands",
     "The exact conversion draws a definition in its own place as well.",
     "Use the complete conversion."},
    {Number::lostCopies, warning, "Copies of a replicated node are lost",
     "The exact conversion takes the matrices after a replicate record in pairs, and uses each second one.",
     "Use the complete conversion, or make the copies yourself."},
    {Number::wrongChildren, warning, "A switch shows the wrong children",
     "In the exact conversion a switch with a long id shows all, mask 10 is misread, and more than 32 children "
     "are taken in another order.",
     "Use the complete conversion."},
    {Number::mixedVertices, warning, "A face of mixed vertices is dropped",
     "The exact conversion takes faces whose vertices are all of one kind, or all with texture coordinates.",
     "Use the complete conversion, or give all vertices of a face the same attributes."},
    {Number::pointOrLine, warning, "A face of one or two vertices ends its set",
     "The toolkit stops drawing a face set there: the faces after it aren't seen.",
     "Use the complete conversion, or move points and lines into objects of their own."},
    {Number::jointAtZero, warning, "A degree of freedom stands at its zero",
     "The exact conversion doesn't move a node by its degree of freedom.",
     "Use the complete conversion."},
    {Number::lostLightSource, warning, "Light sources don't light",
     "The exact conversion makes no node of them.",
     "Use the complete conversion, or add lights in the host."},
    {Number::lostPointOrText, warning, "Light points and texts aren't drawn",
     "The exact conversion makes no shape of them.",
     "Use the complete conversion."},
    {Number::fixedBillboard, warning, "A billboard doesn't turn",
     "The exact conversion draws it as a plain face.",
     "Use the complete conversion."},
    {Number::drawnHiddenFace, warning, "A hidden face is drawn",
     "The exact conversion doesn't look at that flag.",
     "Use the complete conversion, or delete the face."},
    {Number::lostTransformation, warning, "A transformation isn't applied",
     "The exact conversion applies matrix records alone. No matrix goes with this one.",
     "Use the complete conversion."},
    {Number::lostEverSeenLevel, warning, "A level of detail that is always seen isn't drawn",
     "Both of its distances are zero. The exact conversion takes them as a range in which nothing is.",
     "Use the complete conversion, or give it a switch-in distance."},

    {Number::notShown, note, "Something isn't shown",
     "The scene graph has no node for it.",
     "Nothing needs to be done if nobody expects to see it."},
};
// clang-format on

constexpr bool isAscending()
{
    int before = 0;
    for (FltFindingKind const& kind : kinds) {
        if (kind.number <= before)
            return false;
        before = kind.number;
    }
    return true;
}
static_assert(isAscending());

} // namespace

FltFindingKind const* FltFindingTable::begin()
{
    return std::begin(kinds);
}

FltFindingKind const* FltFindingTable::end()
{
    return std::end(kinds);
}

FltFindingKind const& FltFindingTable::of(int number)
{
    return *std::lower_bound(begin(), end(), number,
                             [](FltFindingKind const& kind, int wanted) { return kind.number < wanted; });
}

FltFindingKind const* FltFindingTable::find(std::string_view code)
{
    auto const* const kind =
        std::find_if(begin(), end(), [&](FltFindingKind const& one) { return one.code() == code; });
    return kind != end() ? kind : nullptr;
}
