// Makes a tileset of what flt2gltf has written.

#include "convert/TilesetRun.h"

namespace
{

ProgramDescription description()
{
    return {"flttileset",
            "make a tileset of what flt2gltf has written",
            "REPORT...",
            {"A tileset (3D Tiles 1.1) is what globes in browsers and engines load piece by piece, by the "
             "distance of the eye. flt2gltf --tileset writes one by itself. After a run by parts, on one "
             "computer or many, this program makes it of the reports of all parts; it reads none of the "
             "results.",
             "The tileset stands in the directory of the results: their names in it are those of the "
             "reports.",
             "A large tileset is several files: beside tileset.json there are tileset-1.json and so on."},
            {{"flttileset -o globe/tileset.json part-*.jsonl", "of the reports of all parts"}},
            ExitCode::wrongUsage,
            {"flt2gltf"}};
}

} // namespace

int main(int argc, char** argv)
{
    Program program(description());
    std::string output;
    std::vector<std::string> reports;
    program.value("-o,--output", output, "FILE.json", "Where to write, in the directory of the results.",
                  ".json");
    program.inputs(reports);
    return program.run(argc, argv, [&] {
        if (output.empty())
            throw UsageError("add -o DIR/tileset.json, in the directory of the results");
        OutputFile::checkEnding(output, {".json"});
        return TilesetRun(program).write(reports, output);
    });
}
