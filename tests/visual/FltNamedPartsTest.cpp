#include "visual/FltNamedParts.h"

#include "model/FltModelReader.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <iostream>

namespace
{

FltWriter::Fields named(char const* name)
{
    return {{"idASCII", name}};
}

/// A file, open for its parts.
struct Parts {
    explicit Parts(FltWriter const& flt) : parts(open(folder.write("parts.flt", flt.bytes()))) {}

    FltNamedParts open(std::string const& name)
    {
        StreamCapture const out(std::cout);
        auto input = std::make_unique<FltFileInput>(name.c_str());
        auto model = std::make_unique<FltModel>(name, input->getBuffer(),
                                                static_cast<std::size_t>(input->getSize()), true);
        FltModelReader::read(*model, setting.leftOut, [](std::size_t) {});
        return {std::move(input), std::move(model), setting, 1};
    }

    std::int64_t bytesOf(char const* name) const { return parts.bytesOf(parts.find(name)); }

    ScratchFolder folder;
    FltVisualSetting setting;
    FltNamedParts parts;
};

} // namespace

TEST(FltNamedParts, haveTheBytesOfTheirRecordsToTheLastOneBelow)
{
    FltWriter flt;
    flt.push();
    std::size_t const house = flt.bytes().size();
    flt.add("Group", named("house")).push().add("Group", named("wall")).push().pop();
    std::size_t const door = flt.bytes().size();
    flt.add("Group", named("door")).push().add("Group", named("handle")).add("Object", named("key"));
    std::size_t const end = flt.bytes().size();
    flt.pop().pop();
    std::size_t const tree = flt.bytes().size();
    flt.add("Group", named("tree"));
    std::size_t const endOfTree = flt.bytes().size();
    flt.pop();
    Parts const file(flt);
    EXPECT_EQ(file.bytesOf("house"), static_cast<std::int64_t>(end - house));
    EXPECT_EQ(file.bytesOf("door"), static_cast<std::int64_t>(end - door));
    EXPECT_EQ(file.bytesOf("tree"), static_cast<std::int64_t>(endOfTree - tree));
}
