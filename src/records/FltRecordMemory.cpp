#include "records/FltRecordMemory.h"

#include <atomic>
#include <cstdint>
#include <new>
#include <sys/mman.h>
#include <utility>

namespace
{

#if defined(__SANITIZE_ADDRESS__)
constexpr bool usesBlocks = false;
#elif defined(__has_feature)
constexpr bool usesBlocks = !__has_feature(address_sanitizer);
#else
constexpr bool usesBlocks = true;
#endif

constexpr std::size_t blockSize = FltRecordMemory::blockSize;
constexpr std::size_t alignment = alignof(std::max_align_t);

/// The head of a block, which begins at a multiple of its size: so it is found from any object in it.
struct alignas(alignment) Block {
    /// Objects alive. While a thread fills the block, its own count of those it made isn't in it yet, but a
    /// number that keeps the block from going.
    std::atomic<std::int64_t> objects;
};

constexpr std::int64_t whileFilled = std::int64_t(1) << 40;

void unmap(char* begin, std::size_t size)
{
    if (size > 0)
        munmap(begin, size);
}

/// A block that went is kept for the next one who needs one.
std::atomic<Block*> spare{nullptr};

Block* makeBlock()
{
    Block* block = spare.exchange(nullptr);
    if (block == nullptr) {
        void* const memory =
            mmap(nullptr, 2 * blockSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED)
            throw std::bad_alloc();
        auto* const begin = static_cast<char*>(memory);
        std::size_t const before =
            (blockSize - reinterpret_cast<std::uintptr_t>(begin) % blockSize) % blockSize;
        unmap(begin, before);
        unmap(begin + before + blockSize, blockSize - before);
        block = new (begin + before) Block;
        static std::atomic<bool> isFirst{true};
        if (!isFirst.exchange(false, std::memory_order_relaxed)) // a small database fills a part of one
            madvise(block, blockSize, MADV_HUGEPAGE);
    }
    block->objects.store(whileFilled, std::memory_order_relaxed);
    return block;
}

void freeBlock(Block* block)
{
    Block* const other = spare.exchange(block);
    if (other != nullptr)
        munmap(other, blockSize);
}

/// Takes objects, or the thread's share, off a block.
void leave(Block* block, std::int64_t objects)
{
    if (block->objects.fetch_sub(objects, std::memory_order_acq_rel) == objects)
        freeBlock(block);
}

/// The block that a thread fills. It has nothing to construct or destroy, so that a thread reaches its own at
/// once.
class Filling
{
public:
    void* allocate(std::size_t size)
    {
        size = (size + alignment - 1) / alignment * alignment;
        if (size > static_cast<std::size_t>(limit - at))
            begin();
        ++count;
        return std::exchange(at, at + size);
    }

    void end()
    {
        at = limit = nullptr;
        if (block != nullptr)
            leave(std::exchange(block, nullptr), whileFilled - count);
    }

private:
    void begin();

    Block* block = nullptr;
    std::int64_t count = 0; ///< Objects that the block was asked for.
    char* at = nullptr;
    char* limit = nullptr;
};

[[gnu::tls_model("initial-exec")]] thread_local Filling filling;

/// Ends the filling together with its thread.
struct EndOfThread {
    ~EndOfThread() { filling.end(); }
    bool isSet = false;
};

thread_local EndOfThread endOfThread;

void Filling::begin()
{
    endOfThread.isSet = true;
    bool const isEmpty =
        block != nullptr && block->objects.load(std::memory_order_acquire) == whileFilled - count;
    if (isEmpty) {
        block->objects.store(whileFilled, std::memory_order_relaxed);
    } else {
        end();
        block = makeBlock();
    }
    count = 0;
    at = reinterpret_cast<char*>(block + 1);
    limit = reinterpret_cast<char*>(block) + blockSize;
}

bool hasOwnAllocation(std::size_t size)
{
    return !usesBlocks || size > FltRecordMemory::largestObject;
}

} // namespace

void* FltRecordMemory::allocate(std::size_t size)
{
    return hasOwnAllocation(size) ? ::operator new(size) : filling.allocate(size);
}

void FltRecordMemory::free(void* object, std::size_t size)
{
    if (object == nullptr)
        return;
    if (hasOwnAllocation(size))
        return ::operator delete(object);
    auto* const bytes = static_cast<char*>(object);
    leave(reinterpret_cast<Block*>(bytes - reinterpret_cast<std::uintptr_t>(bytes) % blockSize), 1);
}
