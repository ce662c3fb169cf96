#include "loader/FltLoader.h"
#include "robustness/Endurance.h"
#include "robustness/Mutations.h"
#include "robustness/StructuralDatabase.h"
#include "support/ConvertedFile.h"
#include "support/RecordText.h"
#include "support/SameText.h"
#include "support/ScratchFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <new>
#include <string>

namespace
{

/// Expects the log beside the complete conversion, which is made without a scene, to be that of the exact
/// one.
class LogAloneTest : public testing::TestWithParam<std::size_t>
{
protected:
    LogAloneTest()
    {
        loader.log = folder / "complete.log";
        std::filesystem::create_directories(folder / "top");
    }

    /// @return whether there is a log: a file of which nothing can be shown has none
    bool expectSameLog(std::string const& path)
    {
        std::filesystem::remove(*loader.log);
        try {
            ConvertedFile const exact(path);
        } catch (std::bad_alloc const&) {
            return false; // it counts fewer than nothing, which the loader passes over
        }
        try {
            static_cast<void>(loader.load(path));
        } catch (FltLoadError const&) {
            if (!std::filesystem::exists(*loader.log))
                return false;
        }
        expectSameText(withoutAddress(contentsOf(*loader.log)), withoutAddress(contentsOf(path + ".log")));
        return true;
    }

    QuietToolkit const quiet;
    ScratchFolder const folder;
    FltLoader loader;
};

} // namespace

TEST_P(LogAloneTest, LogOfADatabaseWithASmallChangeIsTheSame)
{
    FltTopic const& topic = topics()[GetParam()];
    Mutations const mutations(topic.bytes, topic.begin, topic.end);
    std::size_t const step = isSanitized ? 211 : 41;
    std::size_t logs = 0;
    for (std::size_t i = 0; i < mutations.size(); i += step) {
        SCOPED_TRACE(mutations.describe(i));
        logs += expectSameLog(folder.write("a.flt", mutations[i])) ? step : 0;
    }
    EXPECT_GT(logs, mutations.size() / 2);
}

INSTANTIATE_TEST_SUITE_P(Topic, LogAloneTest, testing::Range<std::size_t>(0, topics().size()), nameOfTopic);

using LogAloneOfStructuresTest = LogAloneTest;

TEST_P(LogAloneOfStructuresTest, LogOfADatabaseOfRandomStructureIsTheSame)
{
    StructuralDatabase const database(static_cast<unsigned>(GetParam()));
    static_cast<void>(expectSameLog(database.save(folder / "top")));
}

// The last one is nested deeper than a conversion goes.
INSTANTIATE_TEST_SUITE_P(Number, LogAloneOfStructuresTest, testing::Range<std::size_t>(820, 1020));
