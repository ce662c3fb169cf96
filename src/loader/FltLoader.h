#pragma once

#include "FltLoadError.h"
#include "FltMessage.h"
#include "FltScene.h"
#include "FltVisual.h"
#include "toolkit/VelloReaderExport.h"
#include "visual/FltVisualOptions.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Loads OpenFlight databases.
///
///     FltLoader loader;
///     loader.texturePath = {"/data/textures"};
///     FltScene scene = loader.load("airfield.flt");
///     viewer->setSceneGraph(scene.root());
///
/// The toolkit is started if the host hasn't done so (SoDB::init()); what the host wants besides, such as
/// SoInteraction::init(), is its own to start. std::cout and std::cerr stay as they are, and nothing is
/// written unless a log is asked for.
///
/// Loads from several threads wait for each other (setWait()). A callback may load another database. Debian's
/// toolkit isn't built for several threads: while one thread loads, no other may use the toolkit.
class VELLOREADER_API FltLoader : public FltVisualOptions
{
public:
    /// For FltLoader::log: the name of the database with ".log" after it.
    static constexpr char const* besideDatabase = "";

    /// @param file       the file that is being read or converted: the database, or one that it refers to
    /// @param bytesDone  reading counts for one half of a file, conversion for the other
    /// @param bytesInAll the size of that file
    /// @return whether to go on; if not, load() throws an error of the kind "cancelled"
    using Progress =
        std::function<bool(std::string const& file, std::uint64_t bytesDone, std::uint64_t bytesInAll)>;

    /// @name Options
    /// These, and those of FltVisualOptions. Each has the value that most people want.
    /// @{

    /// Directories in which textures are looked for, besides that of the database and of the file that names
    /// the texture. The subdirectories of a stored path are looked for in each, the longest tail first.
    std::vector<std::string> texturePath;

    /// The directory from which the scene names the textures that are found, for a scene that is going to be
    /// written there. By default it names them as they were found, from the current directory.
    std::optional<std::string> textureNamesFrom;

    /// Where to write the listing of all records, which is about ten times as long as the database: nowhere,
    /// beside the database (besideDatabase), or into the file of this name. A file that stands there already
    /// is replaced if it is such a listing; another one is left alone, and the load is refused.
    std::optional<std::string> log;

    /// Whether to convert as the plug-in does, with all its rules, rather than to show as much as possible.
    bool exact = false;

    /// Whether to join shapes that look alike, so that a scene of many Objects is drawn faster: across all
    /// that moves, changes and is hidden together, in pieces that stand side by side. What blends stays as it
    /// is. Nodes that hold nothing any more are left out, with their names; FltScene::recordOf() of what was
    /// picked still leads to its record. The complete conversion only.
    bool merge = false;

    /// Called now and then during a load, at least once a file. A log that the complete conversion is asked
    /// for has a pass of its own, which tells all files beforehand. What the function throws ends the load
    /// and comes out of load() as it is.
    Progress progress;

    /// The largest file to read, in bytes. A larger database is refused, and a larger external file or
    /// picture is left out.
    std::uint64_t largestFile = UINT64_MAX;

    /// A directory outside of which nothing is read but the database itself: textures and external files that
    /// lie elsewhere are left out. What counts is where they really are, behind links and "..", also while
    /// another process exchanges directories and links. By default everything may be read.
    std::optional<std::string> onlyBelow;

    /// @}

    /// Loads a database.
    /// @param path "airfield.flt", relative to the current directory or absolute
    /// @throw FltLoadError and nothing else; no scene and no storage is left then
    FltScene load(std::string const& path) const;

    /// Loads a database as plain data, from which any form of it can be made. The toolkit isn't started;
    /// options, messages and lists are those of load(). The exact conversion has no such form: where it is
    /// asked for, the load is refused.
    /// @throw FltLoadError as load() does
    FltVisual loadVisual(std::string const& path) const;

    /// Makes the scene of a visual, which stays as it is: the one that load() gives of the same database with
    /// the same options. The toolkit is started if the host hasn't done so.
    /// @param visual from loadVisual()
    /// @throw FltLoadError as load() does
    static FltScene makeScene(FltVisual const& visual);

    /// Whether a file begins like a database that load() takes, by its first 16 bytes. False for a file that
    /// can't be opened.
    static bool canLoad(std::string const& path);

    /// What a thread does before and after it waits for the load of another one.
    struct Wait {
        void* (*begin)();         ///< Gives a lock of the host's away. @return what end() is called with
        void (*end)(void* given); ///< Takes that lock again.
    };

    /// For hosts whose callbacks take a lock that threads hold when they load, such as that of an
    /// interpreter: without this, a callback and a waiting thread would wait for each other for ever. It
    /// holds for the whole process, and for databases that the toolkit reads by itself.
    /// @param wait lives as long as the process; null for nothing to do, as it is at first
    static void setWait(Wait const* wait);
};
