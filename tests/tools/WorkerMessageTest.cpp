#include "convert/WorkerMessage.h"

#include <gtest/gtest.h>

TEST(WorkerMessage, isTheSameAfterTheWay)
{
    WorkerMessage const sent{WorkerMessage::Kind::reply, {"", std::string("a\0b", 3), "c"}};
    std::string bytes = sent.bytes() + WorkerMessage{WorkerMessage::Kind::note, {"n"}}.bytes();
    std::optional<WorkerMessage> const first = WorkerMessage::takeFrom(bytes);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->kind, sent.kind);
    EXPECT_EQ(first->fields, sent.fields);
    std::optional<WorkerMessage> const second = WorkerMessage::takeFrom(bytes);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->kind, WorkerMessage::Kind::note);
    EXPECT_EQ(bytes, "");
}

TEST(WorkerMessage, waitsUntilAllOfItIsThere)
{
    std::string const bytes = WorkerMessage{WorkerMessage::Kind::request, {"abc", "d"}}.bytes();
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        std::string arrived = bytes.substr(0, size);
        EXPECT_FALSE(WorkerMessage::takeFrom(arrived)) << size;
        EXPECT_EQ(arrived.size(), size);
    }
}
