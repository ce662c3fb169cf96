#include "robustness/Endurance.h"

#include "support/ConvertedScene.h"
#include "support/Traversal.h"

#include "records/FltUtils.h"

#include <Inventor/nodes/SoSeparator.h>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <new>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace
{

std::size_t count(std::string const& text, std::string const& part)
{
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++found;
    return found;
}

/// Hands the offset of each whole record to @p visit, as the parser frames them.
template <class Visit>
void forEachRecord(std::string const& bytes, Visit const& visit)
{
    for (std::size_t offset = 0; offset + 4 <= bytes.size();) {
        std::size_t const length = FltUtils::word16At(bytes.data() + offset + 2);
        if (length == 0 || length > bytes.size() - offset)
            return;
        visit(offset);
        offset += length;
    }
}

std::size_t lineOfStatus(std::string const& label)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == label) {
            std::size_t kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    return 0;
}

} // namespace

Endured endure(std::string const& bytes)
{
    Endured endured;
    try {
        ConvertedScene const scene(bytes);
        endured.records = count(scene.log, "\n-- Opcode: ");
        endured.logBytes = scene.log.size();
        traverse(scene.root);
    } catch (std::bad_array_new_length const&) {
        if (!hasNegativeSwitch(bytes))
            throw;
        endured.wasRefused = true;
    }
    return endured;
}

bool hasNegativeSwitch(std::string const& bytes)
{
    bool found = false;
    std::string padded = bytes + std::string(28, '\0');
    forEachRecord(bytes, [&](std::size_t offset) {
        char const* const record = padded.data() + offset;
        if (FltUtils::word16At(record) != 96)
            return;
        std::uint32_t const words = FltUtils::word32At(record + 20) * FltUtils::word32At(record + 24);
        found = found || static_cast<std::int32_t>(words) < 0;
    });
    return found;
}

std::size_t countWholeRecords(std::string const& bytes)
{
    std::size_t records = 0;
    forEachRecord(bytes, [&](std::size_t) { ++records; });
    return records;
}

std::size_t memoryInUse()
{
#ifdef __SANITIZE_ADDRESS__
    return __sanitizer_get_current_allocated_bytes();
#else
    malloc_trim(0);
    return lineOfStatus("VmRSS:");
#endif
}

std::size_t peakMemory()
{
    return lineOfStatus("VmHWM:");
}

void forgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

std::size_t openFiles()
{
    std::size_t files = 0;
    for ([[maybe_unused]] auto const& file : std::filesystem::directory_iterator("/proc/self/fd"))
        ++files;
    return files;
}
