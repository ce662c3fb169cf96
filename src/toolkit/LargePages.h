#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

/// The large pages of the system, which makes one of them in little more time than a small one. Where it has
/// none, nothing changes.
class LargePages
{
public:
    /// Bytes of one.
    static constexpr std::size_t size = std::size_t(2) << 20;

    /// The first address from @p bytes on at which one may begin.
    static char* firstFrom(char* bytes);

    /// Asks for them in memory that nobody has used yet. Less than one page of them stays as it is.
    static void useIn(void* begin, void const* end);

    /// Gives a list room for @p more values. It grows in steps, and on large pages once it is that long.
    template <class Value>
    static void makeRoom(std::vector<Value>& list, std::size_t more = 1)
    {
        if (list.capacity() - list.size() < more)
            moveInto(list, std::max(list.size() + more, 2 * list.size()));
    }

    /// Adds a value to such a list.
    template <class Value>
    static void add(std::vector<Value>& list, typename std::vector<Value>::value_type const& value)
    {
        makeRoom(list);
        list.push_back(value);
    }

private:
    template <class Value>
    [[gnu::noinline]] static void moveInto(std::vector<Value>& list, std::size_t room)
    {
        std::vector<Value> larger;
        larger.reserve(room);
        useIn(larger.data(), larger.data() + larger.capacity());
        larger.assign(list.begin(), list.end());
        list.swap(larger);
    }
};
