#include "PageExamples.h"

TEST(ToolDocs, haveExamplesThatRun)
{
    for (char const* const page : {"fltinfo.md", "fltcheck.md", "flt2iv.md", "flt2gltf.md", "many.md",
                                   "fltreport.md", "flttileset.md"}) {
        SCOPED_TRACE(page);
        PageExamples(contentsOf(VELLOREADER_DOCS + ("tools/" + std::string(page)))).expectThatAllRun();
    }
}
