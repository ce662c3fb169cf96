// Has memory run out at each point of a conversion in turn, and looks at what becomes of the process.
//
//     allocation_failures [STRIDE]
//
// The Nth allocation fails, once and then for ever, N from 1 in steps of STRIDE until a conversion passes,
// each in a process of its own, by the plug-in and by the loader. A conversion may end with a scene, with
// std::bad_alloc by the plug-in, and with FltLoadError alone by the loader. It must not end the process,
// std::cout must be usable after it, and the next conversion must be right. The toolkit itself doesn't
// survive most failures of its own allocations: where the innermost frame of a crash is the toolkit's, or
// that of a library that it calls, the point is counted apart.

#include "support/ConvertedRoot.h"
#include "support/SceneText.h"
#include "support/ScratchFolder.h"
#include "writer/EveryRecord.h"

#include "convert/FltToInventor.h"
#include "loader/FltLoader.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/errors/SoDebugError.h>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <iostream>
#include <new>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/// Allocations until one fails; negative while none does.
long allocationsLeft = -1;
bool failsForEver = false;

bool isToFail()
{
    if (allocationsLeft < 0)
        return false;
    if (allocationsLeft > 0) {
        --allocationsLeft;
        return false;
    }
    if (!failsForEver)
        allocationsLeft = -1;
    return true;
}

void* noMemory()
{
    errno = ENOMEM;
    return nullptr;
}

} // namespace

// The C library's own names, by which its allocator is reached when these stand in its place.
extern "C" {
void* __libc_malloc(std::size_t size);                    // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size); // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* old, std::size_t size);        // NOLINT(bugprone-reserved-identifier)

void* malloc(std::size_t size)
{
    return isToFail() ? noMemory() : __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size)
{
    return isToFail() ? noMemory() : __libc_calloc(count, size);
}
void* realloc(void* old, std::size_t size)
{
    return isToFail() ? noMemory() : __libc_realloc(old, size);
}
}

namespace
{

enum class Door { plugin, loader };

/// The toolkit leaves a lock locked where memory runs out while it holds it, and waits for ever at the next.
constexpr unsigned secondsOfAHang = 15;

enum Outcome : int { passed, survived, endedInToolkit, wrong };

void say(char const* text)
{
    static_cast<void>(!::write(STDERR_FILENO, text, std::strlen(text)));
}

/// The file name of the object that a frame belongs to.
char const* objectOf(void* frame)
{
    Dl_info info;
    if (::dladdr(frame, &info) == 0 || info.dli_fname == nullptr)
        return "";
    char const* const slash = std::strrchr(info.dli_fname, '/');
    return slash != nullptr ? slash + 1 : info.dli_fname;
}

bool startsWith(char const* text, char const* beginning)
{
    return std::strncmp(text, beginning, std::strlen(beginning)) == 0;
}

/// Ends the process with an exit code that tells whose frame crashed.
void crash(int /*signal*/)
{
    allocationsLeft = -1;
    std::array<void*, 64> frames;
    int const count = ::backtrace(frames.data(), static_cast<int>(frames.size()));
    int const inSignal = 2; // this function, and the return from the signal
    for (int i = inSignal; i < count; ++i) {
        char const* const object = objectOf(frames[static_cast<std::size_t>(i)]);
        if (startsWith(object, "libc.") || startsWith(object, "libstdc++.") ||
            startsWith(object, "libgcc_s."))
            continue;
        if (startsWith(object, "lib"))
            ::_exit(endedInToolkit);
        break;
    }
    say("the library's own code crashed or aborted:\n");
    ::backtrace_symbols_fd(frames.data(), count, STDERR_FILENO);
    ::_exit(wrong);
}

class Conversion
{
public:
    Conversion()
    {
        FltWriter flt = everyRecordInBrief(1570);
        flt.push().add("ExternalReference", {{"asciiPath", "part.flt"}}).pop();
        flt.save(database);
        everyRecordInBrief(1420).save(folder.path("part.flt"));
        quiet();
        expected = convert();
    }

    /// Runs in a process of its own.
    Outcome runWithFailure(Door door, long at, bool forEver) const
    {
        for (int const signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGALRM})
            std::signal(signal, crash);
        ::alarm(secondsOfAHang);
        std::streambuf* const host = std::cout.rdbuf();
        bool ran = false;
        try {
            failsForEver = forEver;
            allocationsLeft = at;
            door == Door::plugin ? convertByPlugin() : convertByLoader();
            ran = allocationsLeft > 0;
            allocationsLeft = -1;
        } catch (std::bad_alloc const&) {
            allocationsLeft = -1;
            if (door == Door::loader)
                return wrong;
        } catch (FltLoadError const&) {
            allocationsLeft = -1;
        }
        std::cout << "still there" << std::flush;
        std::cout.rdbuf(host);
        std::cout.clear();
        if (convert() != expected) {
            say("the next conversion was wrong\n");
            return wrong;
        }
        return ran ? passed : survived;
    }

private:
    static void quiet()
    {
        SoDebugError::setHandlerCallback([](SoError const*, void*) {}, nullptr);
        int const nowhere = ::open("/dev/null", O_WRONLY);
        ::dup2(nowhere, STDOUT_FILENO);
        ::close(nowhere);
        std::cerr.setstate(std::ios_base::badbit);
    }

    void convertByPlugin() const
    {
        ConvertedRoot const root(FltToInventor::convertFromFile(database.c_str()));
    }
    void convertByLoader() const { static_cast<void>(FltLoader().load(database)); }

    std::string convert() const
    {
        std::streambuf* const host = std::cout.rdbuf();
        ConvertedRoot const root(FltToInventor::convertFromFile(database.c_str()));
        std::cout.rdbuf(host);
        return sceneText(root.get());
    }

    ScratchFolder const folder;
    std::string const database = folder.path("main.flt");
    std::string expected;
};

Outcome outcomeOf(Conversion const& conversion, Door door, long at, bool forEver)
{
    pid_t const child = ::fork();
    if (child == 0)
        ::_exit(conversion.runWithFailure(door, at, forEver));
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? static_cast<Outcome>(WEXITSTATUS(status)) : wrong;
}

/// Has each allocation fail in turn, and prints what became of it.
bool survivesAll(Conversion const& conversion, Door door, bool forEver, long stride)
{
    std::array<long, 4> count{};
    Outcome outcome = survived;
    for (long at = 0; outcome != passed; at += stride) {
        outcome = outcomeOf(conversion, door, at, forEver);
        ++count[outcome];
        if (outcome == wrong)
            std::fprintf(stderr, "allocation %ld failed%s: wrong\n", at + 1,
                         forEver ? " and all after it" : "");
    }
    std::fprintf(stderr, "By the %s, an allocation fails %s: ", door == Door::plugin ? "plug-in" : "loader",
                 forEver ? "and all after it do" : "once");
    std::fprintf(stderr, "%ld points, %ld survived, %ld ended in the toolkit, %ld wrong\n",
                 count[survived] + count[endedInToolkit] + count[wrong], count[survived],
                 count[endedInToolkit], count[wrong]);
    return count[wrong] == 0 && count[survived] > 0;
}

} // namespace

int main(int argc, char** argv)
{
    long const stride = argc > 1 ? std::max(std::atol(argv[1]), 1L) : 1;
    SoDB::init();
    SoInteraction::init();
    std::array<void*, 1> warmUp;
    ::backtrace(warmUp.data(), 1); // what it loads can't be loaded in a signal handler
    Conversion const conversion;

    bool isRight = true;
    for (Door const door : {Door::plugin, Door::loader})
        for (bool const forEver : {false, true})
            isRight = survivesAll(conversion, door, forEver, stride) && isRight;
    return isRight ? EXIT_SUCCESS : EXIT_FAILURE;
}
