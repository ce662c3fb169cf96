// What the programs make of files that lead from one to the next, each with many levels.

#include "support/DeepChain.h"
#include "ProgramRun.h"
#include "support/Text.h"

#include <gtest/gtest.h>

TEST(DeepChain, isReadByEveryProgramAndToldOnce)
{
    DeepChain const chain(32, 200);
    for (char const* const output : {"scene.wrl", "exact.iv --exact", "names.iv --xref file"}) {
        ProgramRun const run("flt2iv", "-o " + (chain.folder / output) + " " + chain.first());
        EXPECT_EQ(run.exitCode, 0) << output << run.errors;
    }
    ProgramRun const scene("flt2iv", "-o " + (chain.folder / "scene.iv") + " " + chain.first());
    EXPECT_EQ(countOf(scene.errors, "nested too deeply"), 1) << scene.errors;
    EXPECT_EQ(countOf(scene.errors, "f5.flt"), 1) << scene.errors;
    EXPECT_EQ(ProgramRun("fltinfo", chain.first()).exitCode, 0);
    EXPECT_EQ(ProgramRun("fltinfo", "--deps " + chain.first()).exitCode, 0);
    ProgramRun const check("fltcheck", chain.first());
    EXPECT_EQ(check.exitCode, 3) << check.errors;
    EXPECT_EQ(countOf(check.output, "FLT-510"), 1) << check.output;
}
