#include "support/LoadedLibrary.h"
#include "support/SceneText.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include "toolkit/SoInputReader.h"

#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoSeparator.h>
#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <set>

namespace
{

/// The library as a plug-in, with the functions that a host looks up.
class Plugin : public LoadedLibrary
{
public:
    Plugin() : LoadedLibrary("libzov.inventor.io.flt") {}

    void (*const initPlugin)() = function<void()>("initPlugin");
    void (*const exitPlugin)() = function<void()>("exitPlugin");
    char const* (*const getProductName)() = function<char const*()>("getProductName");
    char const* (*const getVersion)() = function<char const*()>("getVersion");
    SoSeparator* (*const convertFrom)(char const*) = function<SoSeparator*(char const*)>("convertFrom");
};

class PluginTest : public testing::Test
{
protected:
    std::string databaseWithGroup(std::string const& group)
    {
        FltWriter flt;
        flt.push().add("Group", {{"idASCII", group}}).pop();
        flt.save(folder.path(group + ".flt"));
        return folder.path(group + ".flt");
    }

    /// The scene that the registered reader makes of a file, as text. std::cout is put back.
    std::string convertedByReader(std::string const& path)
    {
        SoType const type = SoType::fromName("InputFltReader");
        if (type == SoType::badType())
            return "no reader";
        std::unique_ptr<SoInputReader> const reader(static_cast<SoInputReader*>(type.createInstance()));
        SoInput input;
        if (!input.openFile(path.c_str()) || !reader->canConvert(&input))
            return "not accepted";
        StreamCapture const out(std::cout);
        return textOf(reader->convert(&input));
    }

    static std::string textOf(SoSeparator* root)
    {
        std::string const text = sceneText(root);
        root->unref();
        return text;
    }

    /// Whether std::cout still goes where it went at first.
    static bool isOutputOurs()
    {
        StreamCapture const out(std::cout);
        std::cout << "ours";
        return out.str() == "ours";
    }

    ScratchFolder folder;
    Plugin plugin;
};

/// What a library defines for others: functions with their arguments, objects, types.
std::set<std::string> definedNames(std::string const& library)
{
    std::istringstream lines(outputOf("nm -DC --defined-only " + LoadedLibrary::pathOf(library)));
    std::set<std::string> names;
    for (std::string line; std::getline(lines, line);)
        names.insert(line.substr(19));
    return names;
}

/// The lines of a file, without those that begin with "#".
std::set<std::string> linesOf(std::string const& path)
{
    std::ifstream file(path);
    std::set<std::string> lines;
    for (std::string line; std::getline(file, line);)
        if (line[0] != '#')
            lines.insert(line);
    return lines;
}

/// Whether a line of the kept list stands for a name: as it is, or up to its "*".
bool standsFor(std::string const& line, std::string const& name)
{
    return line.back() == '*' ? name.compare(0, line.size() - 1, line, 0, line.size() - 1) == 0
                              : line == name;
}

} // namespace

TEST_F(PluginTest, tellsItsNameAndVersion)
{
    EXPECT_STREQ(plugin.getProductName(), "VelloReader");
    EXPECT_STREQ(plugin.getVersion(), "9.6.1");
}

TEST_F(PluginTest, convertsByNameAlone)
{
    std::string const path = databaseWithGroup("hangar");
    StreamCapture const out(std::cout);
    EXPECT_NE(textOf(plugin.convertFrom(path.c_str())).find("DEF hangar "), std::string::npos);
    EXPECT_EQ(plugin.convertFrom(""), nullptr);
}

TEST_F(PluginTest, initRegistersTheReaderOnce)
{
    plugin.initPlugin();
    SoType const type = SoType::fromName("InputFltReader");
    plugin.initPlugin();
    EXPECT_TRUE(SoType::fromName("InputFltReader") == type);
    plugin.exitPlugin();
}

TEST_F(PluginTest, exitBeforeInitDoesNothing)
{
    plugin.exitPlugin();
    plugin.exitPlugin();
    plugin.initPlugin();
    EXPECT_NE(convertedByReader(databaseWithGroup("hangar")).find("DEF hangar "), std::string::npos);
    plugin.exitPlugin();
}

TEST_F(PluginTest, convertsAgainAfterExitAndAnotherInit)
{
    std::string const hangar = databaseWithGroup("hangar"), tower = databaseWithGroup("tower");
    plugin.initPlugin();
    EXPECT_NE(convertedByReader(hangar).find("DEF hangar "), std::string::npos);
    plugin.exitPlugin();
    EXPECT_EQ(convertedByReader(hangar), "no reader");
    plugin.initPlugin();
    EXPECT_NE(convertedByReader(tower).find("DEF tower "), std::string::npos);
    EXPECT_NE(convertedByReader(hangar).find("DEF hangar "), std::string::npos);
    plugin.exitPlugin();
}

TEST_F(PluginTest, twoHostsPutOutputBackEachTime)
{
    std::string const hangar = databaseWithGroup("hangar"), tower = databaseWithGroup("tower");
    std::streambuf* const ours = std::cout.rdbuf();
    Plugin const other;
    for (int round = 0; round < 3; ++round) {
        SoSeparator* const first = plugin.convertFrom(hangar.c_str());
        EXPECT_NE(std::cout.rdbuf(), ours);
        std::cout.rdbuf(ours);
        EXPECT_TRUE(isOutputOurs());
        SoSeparator* const second = other.convertFrom(tower.c_str());
        std::cout.rdbuf(ours);
        EXPECT_TRUE(isOutputOurs());
        EXPECT_NE(textOf(first).find("DEF hangar "), std::string::npos);
        EXPECT_NE(textOf(second).find("DEF tower "), std::string::npos);
    }
    EXPECT_EQ(contentsOf(hangar + ".log").find("ours"), std::string::npos);
    EXPECT_EQ(contentsOf(tower + ".log").find("ours"), std::string::npos);
}

TEST(PluginLibrary, outlivesItsUnloading)
{
    Plugin().initPlugin();
    SoType const type = SoType::fromName("InputFltReader");
    std::unique_ptr<SoInputReader> const reader(static_cast<SoInputReader*>(type.createInstance()));
    EXPECT_TRUE(reader->getTypeId() == type);
    Plugin().exitPlugin();
}

TEST(PluginLibrary, hasItsNameInItself)
{
    std::string const dynamic = outputOf("readelf -d " + LoadedLibrary::pathOf("libzov.inventor.io.flt.so"));
    EXPECT_NE(dynamic.find("Library soname: [libzov.inventor.io.flt]"), std::string::npos);
    EXPECT_NE(dynamic.find("NODELETE"), std::string::npos);
}

TEST(PluginLibrary, exportsWhatTheKeptListSaysAndNothingElse)
{
    std::set<std::string> const kept = linesOf(VELLOREADER_EXPORTED);
    std::set<std::string> const found = definedNames("libzov.inventor.io.flt.so");
    for (std::string const& name : found)
        EXPECT_TRUE(
            std::any_of(kept.begin(), kept.end(), [&](auto const& line) { return standsFor(line, name); }))
            << "exported, but not in " VELLOREADER_EXPORTED ": " << name;
    // What makes no object of an abstract class itself needn't have its table.
    for (std::string const& line : kept)
        EXPECT_TRUE(
            line == "vtable for FltInput" || line == "vtable for FltWarningMessageConsole::Listener" ||
            std::any_of(found.begin(), found.end(), [&](auto const& name) { return standsFor(line, name); }))
            << "in " VELLOREADER_EXPORTED ", but not exported: " << line;
}

TEST(PluginLibrary, theModulesBesideItExportWhatTheirLoadersLookFor)
{
    for (std::string const& name : definedNames("libSoFLTFileKit.so"))
        EXPECT_NE(name.find("SoFLTFileKit"), std::string::npos) << name;
    EXPECT_EQ(definedNames("libvelloreader_python.so"),
              (std::set<std::string>{"velloreader_array", "velloreader_begin", "velloreader_columns",
                                     "velloreader_load", "velloreader_loader", "velloreader_meshes",
                                     "velloreader_next", "velloreader_next_mesh", "velloreader_options",
                                     "velloreader_records", "velloreader_register", "velloreader_save",
                                     "velloreader_scene", "velloreader_set"}));
}
