#include "robustness/EveryDoor.h"

#include "iv/SceneFile.h"
#include "support/ConvertedRoot.h"
#include "support/MemoryStream.h"
#include "support/SceneTraversal.h"
#include "support/StreamCapture.h"

#include "convert/FltToInventor.h"
#include "inspect/FltCheck.h"
#include "loader/FltLoader.h"
#include "loader/FltRecordReader.h"
#include "messages/FltWarningMessageConsole.h"
#include "vrml/FltVrmlWriter.h"

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <new>
#include <stdexcept>
#include <vector>

namespace
{

using EveryDoor::Passage;

/// A loader for each value of each option, the others being at their defaults.
std::vector<FltLoader> loadersOfEachOption(std::string const& path)
{
    std::vector<FltLoader> loaders(11);
    loaders[1].exact = true;
    loaders[2].references = FltLoader::References::skip;
    loaders[3].references = FltLoader::References::asFile;
    loaders[4].levelsOfDetail = FltLoader::LevelsOfDetail::highest;
    loaders[5].levelsOfDetail = FltLoader::LevelsOfDetail::lowest;
    loaders[6].units = FltLoader::Units::stored;
    loaders[7].salvage = false;
    loaders[8].log = path + ".listing";
    loaders[9].onlyBelow = std::filesystem::path(path).parent_path().string();
    loaders[10].largestFile = 4000;
    return loaders;
}

/// A combination of the options by a number.
FltLoader loaderOf(unsigned number, std::string const& path)
{
    FltLoader loader;
    auto const take = [&number](unsigned values) {
        unsigned const value = number % values;
        number /= values;
        return value;
    };
    loader.exact = take(4) == 0;
    loader.references = static_cast<FltLoader::References>(take(loader.exact ? 2 : 3));
    loader.salvage = take(3) != 0;
    if (!loader.exact) {
        loader.levelsOfDetail = static_cast<FltLoader::LevelsOfDetail>(take(3));
        loader.units = static_cast<FltLoader::Units>(take(2));
    }
    if (take(2) == 0)
        loader.log = path + ".listing";
    loader.progress = [](std::string const&, std::uint64_t, std::uint64_t) { return true; };
    return loader;
}

/// Writes a scene as the programs do, and reads it back.
template <class Write>
void writeAndRead(Write write)
{
    MemoryStream const stream;
    write(stream);
    useWritten(stream.text());
}

void useFully(SoNode* root)
{
    useScene(root);
    for (SceneForm const form : {SceneForm{}, SceneForm{false, true}, SceneForm{true}})
        writeAndRead([&](FILE* stream) { SceneFile::write(root, stream, form); });
}

void useVisual(FltVisual const& visual)
{
    FltVrmlWriter vrml(visual.root, visual.textures);
    writeAndRead([&](FILE* stream) { SceneFile::write(vrml, {}, stream, SceneForm{true}); });
}

/// @param isFull whether the scene is used in every way, or traversed alone
void load(FltLoader const& loader, std::string const& path, bool isFull, Passage& passage)
{
    try {
        FltScene const scene = loader.load(path);
        traverseScene(scene.root());
        countTriangles(scene.root());
        if (isFull)
            useFully(scene.root());
        if (isFull && !loader.exact)
            useVisual(loader.loadVisual(path));
        ++passage.scenes;
    } catch (FltLoadError const&) {
        ++passage.refusals;
    }
}

void convertAsPlugin(std::string const& path, bool mayThrow)
{
    StreamCapture const out(std::cout, CaptureBuffer::nothing);
    StreamCapture const err(std::cerr, CaptureBuffer::nothing);
    try {
        ConvertedRoot const root(FltToInventor::convertFromFile(path.c_str()));
        useFully(root.get());
    } catch (std::bad_array_new_length const&) {
        if (!mayThrow)
            throw;
    }
    FltWarningMessageConsole::setOfMessages.clear();
}

void inspect(std::string const& path)
{
    try {
        FltInventory const inventory(path);
        FltDependencies const dependencies(
            inventory, [](std::string const&, std::string const&) { return std::string(); });
        FltCheck check(inventory);
        check.checkRecords();
        check.checkGeometry();
        check.checkPalettes();
        check.checkFiles(dependencies);
        check.checkHierarchy();
        check.checkVisibility();
        check.checkExactConversion();
        static_cast<void>(check.findings());
        static_cast<void>(inventory.triangles());
        for (std::uint32_t node = 0; node < inventory.nodes.size(); ++node)
            static_cast<void>(inventory.pathOf(node));
    } catch (std::runtime_error const&) {
        return; // no database
    }
}

void readRecords(std::string const& path)
{
    try {
        FltRecordReader records(path);
        while (records.next())
            static_cast<void>(records.json());
        static_cast<void>(records.fault());
    } catch (FltLoadError const&) {
        return; // no database
    }
}

} // namespace

Passage EveryDoor::go(std::string const& path, unsigned number, bool mayThrow)
{
    Passage passage;
    std::vector<FltLoader> const loaders = loadersOfEachOption(path);
    for (std::size_t i = 0; i < loaders.size(); ++i)
        load(loaders[i], path, i < 2, passage);
    load(loaderOf(number, path), path, true, passage);
    convertAsPlugin(path, mayThrow);
    inspect(path);
    readRecords(path);
    return passage;
}
