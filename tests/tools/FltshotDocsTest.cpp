#include "PageExamples.h"

TEST(FltshotDocs, haveExamplesThatRun)
{
    PageExamples(contentsOf(VELLOREADER_DOCS "tools/fltshot.md")).expectThatAllRun();
}
