#pragma once

#include <Inventor/SbName.h>
#include <cstddef>
#include <string>

/// The toolkit's table of names, which never forgets one.
namespace NameTable
{

/// The table puts one name behind the other into a block, as long as that has room.
constexpr std::ptrdiff_t blockSize = 65'504;

/// Of each name that is added, with the zero at its end.
constexpr std::ptrdiff_t ownSize = 9;

/// Puts a name into the table that isn't there, and says where it stands.
inline char const* addOne()
{
    static int count = 10'000'000;
    return SbName(std::to_string(++count).c_str()).getString();
}

/// Fills the table until there is half a block for what comes next.
/// @return the name that was added last
inline char const* makeRoom()
{
    static char const* block = nullptr; // where one is known to begin
    char const* last = addOne();
    while (block == nullptr || last < block || last - block > blockSize / 2) {
        char const* const next = addOne();
        if (next != last + ownSize)
            block = next;
        last = next;
    }
    return last;
}

/// Bytes that the table grows by while something is done; a block's if it is more than half of one.
template <class Action>
std::size_t growth(Action action)
{
    char const* const last = makeRoom();
    action();
    std::ptrdiff_t const grown = addOne() - last - ownSize;
    return static_cast<std::size_t>(grown >= 0 && grown < blockSize / 2 ? grown : blockSize);
}

} // namespace NameTable
