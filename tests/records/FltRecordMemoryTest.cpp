#include "records/FltRecordMemory.h"

#include "records/FltRecordControl.h"
#include "records/FltRecordFace.h"
#include "support/ProcessUsage.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

namespace
{

class Objects
{
public:
    ~Objects()
    {
        while (!objects.empty())
            freeAt(0);
    }

    /// An object whose bytes are all the number of it.
    void make(std::size_t size)
    {
        void* const memory = FltRecordMemory::allocate(size);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % alignof(std::max_align_t), 0U);
        auto const value = static_cast<unsigned char>(++count);
        std::memset(memory, value, size);
        objects.push_back({static_cast<unsigned char*>(memory), size, value});
    }

    void freeAt(std::size_t position)
    {
        Object const object = objects[position];
        EXPECT_EQ(object.bytes[0], object.value);
        EXPECT_EQ(object.bytes[object.size - 1], object.value);
        objects[position] = objects.back();
        objects.pop_back();
        FltRecordMemory::free(object.bytes, object.size);
    }

    std::size_t getCount() const { return objects.size(); }

private:
    struct Object {
        unsigned char* bytes;
        std::size_t size;
        unsigned char value;
    };

    std::vector<Object> objects;
    int count = 0;
};

TEST(FltRecordMemoryTest, ObjectsOfAllSizesKeepTheirBytesWhileOthersComeAndGo)
{
    Objects objects;
    for (int i = 0; i < 30000; ++i) {
        objects.make(static_cast<std::size_t>(1 + i * 37 % 400));
        if (i % 3 == 0)
            objects.freeAt(static_cast<std::size_t>(i) * 7919 % objects.getCount());
    }
    for (std::size_t const size : {FltRecordMemory::largestObject, FltRecordMemory::largestObject + 1,
                                   FltRecordMemory::blockSize, 3 * FltRecordMemory::blockSize})
        objects.make(size);
}

TEST(FltRecordMemoryTest, BlocksAreFilledAgainOnceTheirObjectsHaveGone)
{
    constexpr int rounds = 400, objectsOfARound = 1000;
    constexpr std::size_t size = 2000;
    std::size_t const before = ProcessUsage::memoryInUse();
    for (int round = 0; round < rounds; ++round) {
        Objects objects;
        for (int i = 0; i < objectsOfARound; ++i)
            objects.make(size);
    }
    // A sanitizer keeps what was freed for a while.
    EXPECT_LT(ProcessUsage::memoryInUse(), before + rounds * objectsOfARound * size / 2);
}

TEST(FltRecordMemoryTest, ABlockThatWasFilledTwiceIsFreedAsAnyOther)
{
    constexpr int rounds = 400, alone = 2000, together = 1200;
    constexpr std::size_t size = 2000;
    std::size_t const before = ProcessUsage::memoryInUse();
    for (int round = 0; round < rounds; ++round) {
        Objects objects;
        for (int i = 0; i < alone; ++i) {
            objects.make(size);
            objects.freeAt(0);
        }
        for (int i = 0; i < together; ++i)
            objects.make(size);
    }
    EXPECT_LT(ProcessUsage::memoryInUse(), before + rounds * FltRecordMemory::blockSize / 2);
}

TEST(FltRecordMemoryTest, AnObjectMayGoOnAnotherThreadThanItCameFrom)
{
    auto objects = std::make_unique<Objects>();
    std::thread([&objects] {
        for (int i = 0; i < 20000; ++i)
            objects->make(300);
    }).join();
    objects.reset();
}

TEST(FltRecordMemoryTest, RecordsAreMadeInIt)
{
    std::unique_ptr<FltRecord> const first(new FltRecordPushLevel(4));
    std::unique_ptr<FltRecord> const second(new FltRecordFace(80));
    EXPECT_EQ(first->getOpcode(), FltOpcode::pushLevel);
    EXPECT_EQ(second->getLength(), 80U);
    FltRecordMemory::free(nullptr, 16);
}

} // namespace
