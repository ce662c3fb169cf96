#include "ProgramRun.h"
#include "SmallDatabases.h"
#include "support/SmallPictures.h"
#include "support/Text.h"

#include <chrono>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>

namespace
{

namespace fs = std::filesystem;

/// The JSON of a .glb; null unless the file is as long as it says.
nlohmann::json jsonOf(std::string const& glb)
{
    constexpr std::size_t head = 20;
    std::uint32_t length = 0, textLength = 0;
    if (glb.size() < head || glb.compare(0, 4, "glTF") != 0)
        return nullptr;
    std::memcpy(&length, glb.data() + 8, sizeof length);
    std::memcpy(&textLength, glb.data() + 12, sizeof textLength);
    return length == glb.size() ? nlohmann::json::parse(glb.substr(head, textLength)) : nullptr;
}

/// Databases of groups with a triangle each.
class Groups
{
public:
    Groups() : flt(1570)
    {
        flt.vertexPalette();
        for (auto const& [x, y] : {std::pair{0, 0}, {1, 0}, {0, 1}})
            corners.push_back(flt.vertex("VertexColorUv", x, y, 0));
        flt.push();
    }

    void add(std::string const& name, int copies = 0)
    {
        flt.add("Group", {{"idASCII", name}});
        if (copies > 0)
            flt.add("Replicate", {{"numberOfReplications", copies}})
                .add("Matrix", {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 3, 0, 0, 1}}});
        flt.push();
        flt.face(corners, {{"texturePatternIndex", -1}, {"materialIndex", -1}}).pop();
    }

    FltWriter flt;

private:
    std::vector<double> corners;
};

class Flt2gltf : public testing::Test
{
protected:
    std::string database(std::string const& name, SmallDatabase const& small = {}) const
    {
        return folder.write(name, small.bytes());
    }

    ProgramRun run(std::string const& arguments) const { return ProgramRun("flt2gltf", arguments); }

    /// Converts into a file of this name.
    ProgramRun into(std::string const& name, std::string const& input, std::string const& options = "") const
    {
        return run("-q " + options + " -o " + (folder / name) + " " + input);
    }

    std::string contents(std::string const& name) const { return contentsOf(folder / name); }

    /// The bytes of all files below a directory by their names.
    std::map<std::string, std::string> filesIn(std::string const& directory) const
    {
        std::map<std::string, std::string> files;
        for (fs::directory_entry const& file : fs::recursive_directory_iterator(folder / directory))
            if (file.is_regular_file())
                files[file.path().lexically_relative(folder / directory).string()] = contentsOf(file.path());
        return files;
    }

    ScratchFolder folder;
};

} // namespace

TEST_F(Flt2gltf, writesAllInOneFile)
{
    ProgramRun const one = run("-o " + (folder / "a.glb") + " " + database("a.flt"));
    EXPECT_EQ(one.exitCode, 0);
    EXPECT_EQ(one.output + one.errors, "");
    nlohmann::json const json = jsonOf(contents("a.glb"));
    ASSERT_TRUE(json.is_object());
    EXPECT_EQ(json["asset"]["version"], "2.0");
    EXPECT_EQ(json["meshes"].size(), 1U);
}

TEST_F(Flt2gltf, writesWhatTheNameSays)
{
    std::string const input = database("a.flt");
    for (char const* const name : {"a.gltf", "a.html", "a.obj", "A.GLB"})
        EXPECT_EQ(into(name, input).exitCode, 0) << name;
    EXPECT_TRUE(nlohmann::json::parse(contents("a.gltf")).contains("meshes"));
    EXPECT_TRUE(fs::exists(folder / "a.bin"));
    EXPECT_TRUE(holds(contents("a.html").substr(0, 200), "<html"));
    EXPECT_TRUE(holds(contents("a.obj"), "\nf "));
    EXPECT_TRUE(fs::exists(folder / "a.mtl"));
    EXPECT_TRUE(jsonOf(contents("A.GLB")).is_object());
    EXPECT_EQ(into("a.fbx", input).exitCode, 2);
}

TEST_F(Flt2gltf, writesIntoAPipeWhatItWritesIntoAFile)
{
    std::string const input = database("a.flt");
    EXPECT_EQ(into("a.glb", input).exitCode, 0);
    EXPECT_EQ(run(input).output, contents("a.glb"));
    EXPECT_EQ(into("a.html", input).exitCode, 0);
    EXPECT_EQ(run("--to html " + input).output, contents("a.html"));
    for (char const* const form : {"gltf", "obj"}) {
        ProgramRun const refused = run(std::string("--to ") + form + " " + input);
        EXPECT_EQ(refused.exitCode, 2) << form;
        EXPECT_EQ(refused.output, "");
        EXPECT_TRUE(holds(refused.errors, "can't go into a pipe: add -o FILE." + std::string(form)))
            << refused.errors;
    }
}

TEST_F(Flt2gltf, writesADirectoryInOneFormAndTexturesOnce)
{
    for (char const* const name : {"models/tree.rgb", "models/sub/copy.rgb"})
        static_cast<void>(folder.write(name, SmallPictures::plainSgi(4)));
    database("models/a.flt", {{}, "tree.rgb", 0});
    database("models/sub/b.flt", {{}, "copy.rgb", 0});
    database("models/c.flt", {{}, "tree.rgb", 0});
    EXPECT_EQ(run("-o " + (folder / "out") + " " + (folder / "models")).output,
              "3 of 3 databases converted\n");
    fs::directory_iterator const pictures(folder / "out/textures");
    ASSERT_EQ(std::distance(begin(pictures), end(pictures)), 1) << "one content, one file";
    std::string const picture = fs::directory_iterator(folder / "out/textures")->path().filename().string();
    EXPECT_EQ(jsonOf(contents("out/sub/b.glb"))["images"][0]["uri"], "../textures/" + picture);
    EXPECT_EQ(jsonOf(contents("out/c.glb"))["images"][0]["uri"], "textures/" + picture);
    EXPECT_EQ(run("--to gltf -o " + (folder / "text") + " " + (folder / "models")).exitCode, 0);
    EXPECT_TRUE(fs::exists(folder / "text/sub/b.gltf"));
    EXPECT_TRUE(fs::exists(folder / ("text/textures/" + picture)));
    EXPECT_EQ(run("-q --to html -o " + (folder / "pages") + " " + (folder / "models")).exitCode, 0);
    EXPECT_FALSE(fs::exists(folder / "pages/textures")) << "a page has its own";
}

TEST_F(Flt2gltf, writesTheSameBytesByAnyNumberOfJobs)
{
    static_cast<void>(folder.write("models/tree.rgb", SmallPictures::plainSgi(4)));
    for (int i = 0; i < 8; ++i)
        database("models/t" + std::to_string(i) + ".flt", {{}, i < 4 ? "tree.rgb" : "", i % 2 == 0 ? 0 : 4});
    for (char const* const form : {"glb", "gltf", "html", "obj"}) {
        std::string const options = std::string("-q --to ") + form;
        EXPECT_EQ(run(options + " -j 1 -o " + (folder / "one") + " " + (folder / "models")).exitCode, 0);
        EXPECT_EQ(run(options + " -j 5 -o " + (folder / "five") + " " + (folder / "models")).exitCode, 0);
        EXPECT_EQ(run(options + " -j 5 -o " + (folder / "again") + " " + (folder / "models")).exitCode, 0);
    }
    auto const one = filesIn("one");
    EXPECT_GE(one.size(), 8U * 6 + 1) << "four forms, two of them with a file beside it, and the texture";
    EXPECT_EQ(filesIn("five"), one);
    EXPECT_EQ(filesIn("again"), one);
}

TEST_F(Flt2gltf, leavesExtrasOut)
{
    std::string const input = database("a.flt");
    EXPECT_EQ(into("all.glb", input).exitCode, 0);
    EXPECT_EQ(into("none.glb", input, "--extras none").exitCode, 0);
    EXPECT_TRUE(holds(contents("all.glb"), "\"extras\""));
    EXPECT_FALSE(holds(contents("none.glb"), "\"extras\""));
}

TEST_F(Flt2gltf, requiresNoExtensionUnlessAskedFor)
{
    Groups groups;
    for (int i = 0; i < 50; ++i)
        groups.add("part");
    groups.add("trees", 50);
    std::string const input = folder.write("a.flt", groups.flt.pop().bytes());
    using Words = std::vector<std::string>;
    std::map<std::string, Words> const required = {
        {"", {}},
        {"--lod all --hidden keep --lift none --units stored --time night", {}},
        {"--instancing", {"EXT_mesh_gpu_instancing"}},
        {"--quantize", {"KHR_mesh_quantization"}},
        {"--meshopt", {"EXT_meshopt_compression"}}};
    for (auto const& [options, extensions] : required) {
        EXPECT_EQ(into("a.glb", input, options).exitCode, 0) << options;
        EXPECT_EQ(jsonOf(contents("a.glb")).value("extensionsRequired", Words()), extensions) << options;
    }
    EXPECT_EQ(into("a.gltf", input, "--quantize --meshopt --instancing").exitCode, 0);
    EXPECT_EQ(nlohmann::json::parse(contents("a.gltf"))["extensionsRequired"].size(), 3U);
    std::string const help = run("--help").output;
    for (char const* const extension : {"MSFT_lod", "KHR_node_visibility", "EXT_mesh_gpu_instancing",
                                        "KHR_mesh_quantization", "EXT_meshopt_compression"})
        EXPECT_TRUE(holds(help, extension)) << extension;
}

TEST_F(Flt2gltf, writesLevelsAndHiddenPartsIfAskedFor)
{
    Groups groups;
    FltWriter& flt = groups.flt;
    for (auto const& [name, nearest, farthest] : {std::tuple{"fine", 0, 100}, {"coarse", 100, 10000}}) {
        flt.add("LOD", {{"switchInDistance", farthest}, {"switchOutDistance", nearest}}).push();
        groups.add(name);
        flt.pop();
    }
    flt.add("Switch", {{"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {2}}}).push();
    groups.add("hidden");
    groups.add("shown");
    static_cast<void>(folder.write("levels.flt", flt.pop().pop().bytes()));
    auto const textWith = [&](std::string const& options) {
        EXPECT_EQ(into("l.glb", folder / "levels.flt", options).exitCode, 0) << options;
        return jsonOf(contents("l.glb")).dump();
    };
    EXPECT_FALSE(holds(textWith(""), "MSFT_lod"));
    EXPECT_TRUE(holds(textWith("--lod all"), "MSFT_lod"));
    EXPECT_TRUE(holds(textWith(""), "\"fine\""));
    EXPECT_FALSE(holds(textWith(""), "\"coarse\""));
    EXPECT_TRUE(holds(textWith("--lod lowest"), "\"coarse\""));
    EXPECT_FALSE(holds(textWith("--lod lowest"), "\"fine\""));
    EXPECT_FALSE(holds(textWith(""), "\"hidden\""));
    EXPECT_TRUE(holds(textWith("--hidden keep"), "\"hidden\""));
    EXPECT_TRUE(holds(textWith("--hidden keep"), "KHR_node_visibility"));
}

TEST_F(Flt2gltf, writesMetresAndWarnsOfOtherUnits)
{
    std::string const feet = database("feet.flt", {{}, "", 4});
    ProgramRun const stored = run("--units stored -o " + (folder / "stored.glb") + " " + feet);
    EXPECT_TRUE(holds(stored.errors, "places are in feet, which readers take for metres")) << stored.errors;
    EXPECT_EQ(run("-o " + (folder / "metres.glb") + " " + feet).errors, "");
    EXPECT_EQ(run("--units stored -o " + (folder / "m.glb") + " " + database("metres.flt")).errors, "");
    EXPECT_NE(contents("stored.glb"), contents("metres.glb"));
}

TEST_F(Flt2gltf, namesReferencedFilesInExtras)
{
    std::string const input = database("a.flt", {{"library/b.flt"}, "", 0});
    database("library/b.flt");
    EXPECT_EQ(run("--xref file -o " + (folder / "out/a.glb") + " " + input).exitCode, 0);
    EXPECT_TRUE(holds(contents("out/a.glb"), "library/b.glb"));
    EXPECT_TRUE(jsonOf(contents("out/library/b.glb")).is_object());
    EXPECT_EQ(into("inline.glb", input).exitCode, 0);
    EXPECT_EQ(jsonOf(contents("inline.glb"))["meshes"].size(), 2U);
}

TEST_F(Flt2gltf, replacesNoFileOfADatabase)
{
    std::string const picture = folder.write("tree.glb", SmallPictures::plainSgi(4));
    std::string const input = database("a.flt", {{}, "tree.glb", 0});
    EXPECT_EQ(into("tree.glb", input).exitCode, 2);
    EXPECT_EQ(contentsOf(picture), SmallPictures::plainSgi(4));
    database("tree.flt");
    EXPECT_EQ(run("-q -o " + (folder / ".") + " " + (folder / ".")).exitCode, 1);
    EXPECT_EQ(contentsOf(picture), SmallPictures::plainSgi(4));
    EXPECT_EQ(into("kept.glb", input).exitCode, 0);
    EXPECT_EQ(into("kept.glb", input, "--no-clobber").exitCode, 1);
}

TEST_F(Flt2gltf, replacesNoFileThatIsNeededByThatBesideAResult)
{
    std::string const picture = folder.write("models/b.bin", SmallPictures::plainSgi(4));
    database("models/a.flt", {{}, "b.bin", 0});
    database("models/b.flt");
    std::string const models = folder / "models";
    ProgramRun const some = run("-q --to gltf -o " + models + " " + models);
    EXPECT_EQ(some.exitCode, 1);
    EXPECT_TRUE(holds(some.errors, "would replace a texture of " + models + "/a.flt")) << some.errors;
    EXPECT_EQ(contentsOf(picture), SmallPictures::plainSgi(4));
    EXPECT_TRUE(fs::exists(folder / "models/a.gltf"));
    static_cast<void>(folder.write("mine.mtl", "mine"));
    EXPECT_EQ(into("mine.obj", folder / "models/b.flt", "--no-clobber").exitCode, 1);
    EXPECT_EQ(contents("mine.mtl"), "mine");
}

TEST_F(Flt2gltf, removesWhatKilledRunsHaveLeftOfFilesBesideResults)
{
    std::string const input = database("models/a.flt");
    fs::path const shared =
        folder.write("out/textures/.velloreader-somewhere-1-0-1-1.part", "half a shared texture");
    fs::path const own =
        folder.write("out/a_textures/.velloreader-somewhere-1-0-1-1.part", "half of another");
    for (fs::path const& left : {shared, own})
        fs::last_write_time(left, fs::last_write_time(left) - std::chrono::hours(25));
    EXPECT_EQ(run("-q -o " + (folder / "out") + " " + (folder / "models")).exitCode, 0);
    EXPECT_FALSE(fs::exists(shared));
    EXPECT_FALSE(fs::exists(own));
}

TEST_F(Flt2gltf, reportsWhatCanNotBeReadAndGoesOn)
{
    database("models/a.flt");
    static_cast<void>(folder.write("models/broken.flt", "no database"));
    ProgramRun const some = run("-o " + (folder / "out") + " " + (folder / "models"));
    EXPECT_EQ(some.exitCode, 1);
    EXPECT_TRUE(holds(some.errors, "not converted: " + (folder / "models/broken.flt"))) << some.errors;
    EXPECT_TRUE(holds(some.errors, "flt2gltf: 1 of 2 databases converted\n")) << some.errors;
}

TEST_F(Flt2gltf, hasATableOfWhatItWrote)
{
    ProgramRun const table = run("--stat -o " + (folder / "a.glb") + " " + database("a.flt"));
    EXPECT_TRUE(holds(table.output, "triangles")) << table.output;
    EXPECT_TRUE(holds(table.output, " 1            1         0"))
        << "a face, a triangle, no texture: " << table.output;
}

TEST_F(Flt2gltf, refusesOptionsThatDoNotGoTogether)
{
    std::string const input = database("a.flt");
    for (std::string const& options :
         {"--to gltf -o " + (folder / "a.glb"), "--exact -o " + (folder / "a.glb"),
          "--lod some -o " + (folder / "a.glb"), "--names none -o " + (folder / "a.glb"),
          "--lod all -o " + (folder / "a.obj"), "--extras none -o " + (folder / "a.html"),
          "--meshopt -o " + (folder / "a.html"), std::string("--meshopt --to html"),
          "--xref file --units stored -o " + (folder / "a.glb"), "--extras some -o " + (folder / "a.glb")}) {
        ProgramRun const refused = run(options + " " + input);
        EXPECT_EQ(refused.exitCode, 2) << options;
        EXPECT_EQ(refused.output, "") << options;
    }
    for (char const* const name : {"a.glb", "a.obj", "a.html"})
        EXPECT_FALSE(fs::exists(folder / name));
}
