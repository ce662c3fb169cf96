#include "toolkit/LargePages.h"

#include <cstdint>
#include <sys/mman.h>

namespace
{

/// Bytes up to the first address at which a page may begin.
std::size_t bytesBefore(void const* address)
{
    return (LargePages::size - reinterpret_cast<std::uintptr_t>(address) % LargePages::size) %
           LargePages::size;
}

} // namespace

char* LargePages::firstFrom(char* bytes)
{
    return bytes + bytesBefore(bytes);
}

void LargePages::useIn(void* begin, void const* end)
{
    auto* const bytes = static_cast<char*>(begin);
    auto const count = static_cast<std::size_t>(static_cast<char const*>(end) - bytes);
    std::size_t const skipped = bytesBefore(bytes);
    // If it fails, nothing is lost.
    if (count >= skipped + size)
        ::madvise(bytes + skipped, (count - skipped) / size * size, MADV_HUGEPAGE);
}
