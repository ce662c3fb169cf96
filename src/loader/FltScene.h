#pragma once

#include "FltLoadReport.h"
#include "toolkit/VelloReaderExport.h"
#include "visual/FltDegreeOfFreedom.h"
#include "visual/FltSwitch.h"
#include "visual/FltVisualFlipBook.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class SoNode;
class SoPickedPoint;
class SoSeparator;

/// Where the record of a node stands.
struct FltRecordPlace {
    std::string file; ///< The database, or a file that it refers to.

    /// Of the first byte in the file. The hierarchy of a file as a whole counts as its header.
    std::uint64_t offset = 0;

    /// Whether the node stands for the record. Otherwise it is a part of the node that does.
    bool isOwn = true;
};

/// A loaded database: its scene graph, and what is to be known about it.
///
/// It owns one reference to the root. It can be moved, not copied. An object that was moved from, and one
/// made without a database, has a null root and empty lists.
class VELLOREADER_API FltScene
{
public:
    FltScene();
    ~FltScene();
    FltScene(FltScene&& other) noexcept;            ///< Takes the scene over.
    FltScene& operator=(FltScene&& other) noexcept; ///< The same; an earlier scene goes.
    FltScene(FltScene const&) = delete;
    FltScene& operator=(FltScene const&) = delete;

    /// The scene graph. It lives as long as this object, or longer if somebody else holds a reference to it,
    /// as a viewer does. Null after release().
    SoSeparator* root() const;

    /// Hands the scene graph over with this object's reference: call unref() on it some day. The lists stay.
    [[nodiscard]] SoSeparator* release();

    std::vector<FltMessage> const& messages() const;     ///< In the order in which they came.
    std::vector<FltTexture> const& textures() const;     ///< Each once, with its place, found or missing.
    std::vector<FltReference> const& references() const; ///< In the order of the records.
    std::vector<FltOmission> const& omissions() const;   ///< What the scene doesn't show, by kind.
    FltDatabaseInfo const& info() const;                 ///< From the header of the top-level file.

    /// The record that a node of the scene comes from. A node that no record stands for, such as a material,
    /// has that of the nearest node above it (above one of its places if it has several), and a part that
    /// stands at several places that of its definition. FltRecordReader::goTo() leads to the record.
    ///
    /// The exact conversion knows of none. A node that was added later has none either; don't ask for one
    /// that doesn't live any more. It works after release() too.
    std::optional<FltRecordPlace> recordOf(SoNode const& node) const;

    /// The record of what was picked: that of its shape, or, where FltLoader::merge joined shapes of several
    /// records, that of the face, line or point.
    std::optional<FltRecordPlace> recordOf(SoPickedPoint const& picked) const;

    /// @name What can be moved
    /// The exact conversion knows of none.
    /// @{
    std::vector<FltSwitch> switches() const; ///< All switches, as they are at present.

    /// Has all switches of a name show a mask. @return whether there is one that has it
    bool chooseMask(std::string const& switchName, int mask);

    /// Has the switch at a place in the list show a mask. @return whether there is one that has it
    bool show(std::size_t index, int mask);

    /// The place in the list of the switch that a node stands for; none if it isn't the node of a switch.
    std::optional<std::size_t> switchOf(SoNode const& node) const;

    /// All degrees of freedom, as they are at present.
    std::vector<FltDegreeOfFreedom> degreesOfFreedom() const;

    /// Moves the degree of freedom at a place in the list to the current values of @p values.
    /// @return whether there is one
    bool move(std::size_t index, FltDegreeOfFreedom const& values);

    /// The place in the list of the degree of freedom that a node stands for; none for other nodes.
    std::optional<std::size_t> degreeOfFreedomOf(SoNode const& node) const;

    /// All flip-books. At first each stands still, and shows its first frame.
    std::vector<FltVisualFlipBook> flipBooks() const;

    /// Starts all flip-books, or stops them where they are. Frames change as the toolkit's clock goes on, as
    /// long as the host has it handle its sensors; each loop is followed by the next one, whatever their
    /// number in the database.
    /// @return whether there is any
    bool play(bool isPlaying);
    /// @}

    /// What a scene is made of; for the loader.
    struct Content;
    explicit FltScene(std::unique_ptr<Content> content); ///< Takes the content over; for the loader.

private:
    std::unique_ptr<Content> content;
};
