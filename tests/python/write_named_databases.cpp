// Writes databases that can be told apart by the name of a node: FOLDER/alpha.flt and so on, and a long one.

#include "writer/FltWriter.h"

#include <filesystem>
#include <string>

namespace
{

void save(std::string const& folder, std::string const& name, int groups)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", name}});
    for (int group = 1; group < groups; ++group)
        flt.add("Group");
    flt.pop().save(folder + '/' + name + ".flt");
}

} // namespace

int main(int /*count*/, char** arguments)
{
    std::filesystem::create_directories(arguments[1]);
    for (char const* const name : {"alpha", "bravo", "charlie", "delta"})
        save(arguments[1], name, 100);
    save(arguments[1], "long", 20000);
}
