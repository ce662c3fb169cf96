// Two threads convert databases, each as long as it holds the lock of the host, as the library asks for.
// Built with the thread sanitizer this shows that nothing of the library runs on without the lock.

#include "support/ConvertedRoot.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/EveryRecord.h"

#include "convert/FltToInventor.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/errors/SoDebugError.h>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <string>
#include <thread>

namespace
{

std::mutex hostLock;
int scenes = 0; // guarded by hostLock, as all that the library keeps

void convertOften(std::string const& path)
{
    for (int i = 0; i < 50; ++i) {
        std::lock_guard<std::mutex> const lock(hostLock);
        std::streambuf* const host = std::cout.rdbuf();
        ConvertedRoot const root(FltToInventor::convertFromFile(path.c_str()));
        std::cout.rdbuf(host);
        scenes += root.get() != nullptr ? 1 : 0;
    }
}

} // namespace

int main()
{
    SoDB::init();
    SoInteraction::init();
    SoDebugError::setHandlerCallback([](SoError const*, void*) {}, nullptr);
    StreamCapture const out(std::cout, CaptureBuffer::nothing);
    StreamCapture const err(std::cerr, CaptureBuffer::nothing);
    ScratchFolder const folder;
    everyRecordInBrief(1570).save(folder.path("a.flt"));
    everyRecordInBrief(1420).save(folder.path("b.flt"));
    std::thread first(convertOften, folder.path("a.flt"));
    std::thread second(convertOften, folder.path("b.flt"));
    first.join();
    second.join();
    std::printf("two threads converted %d databases\n", scenes);
    return scenes == 100 ? EXIT_SUCCESS : EXIT_FAILURE;
}
