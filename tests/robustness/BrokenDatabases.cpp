#include "robustness/BrokenDatabases.h"

#include <algorithm>
#include <random>

struct BrokenDatabases::Seed {
    explicit Seed(FltTopic&& given) : topic(std::move(given)), mutations(topic.bytes, topic.begin, topic.end)
    {
    }
    Seed(Seed const&) = delete;
    Seed& operator=(Seed const&) = delete;

    FltTopic topic;
    Mutations mutations;
};

BrokenDatabases::BrokenDatabases(std::size_t wanted) : wanted(wanted)
{
    for (int const revision : changingRevisions)
        for (FltTopic& topic : everyTopicInBrief(revision))
            seeds.push_back(std::make_unique<Seed>(std::move(topic)));
    for (auto const& seed : seeds)
        smallChanges += seed->mutations.size();
}

BrokenDatabases::~BrokenDatabases() = default;

std::string BrokenDatabases::operator[](std::size_t index) const
{
    if (wanted <= smallChanges)
        return withSmallChange(static_cast<std::size_t>(
            static_cast<double>(index) * static_cast<double>(smallChanges) / static_cast<double>(wanted)));
    return index < smallChanges ? withSmallChange(index) : withSeveralChanges(index);
}

std::string BrokenDatabases::withSmallChange(std::size_t index) const
{
    for (auto const& seed : seeds) {
        if (index < seed->mutations.size())
            return seed->mutations[index];
        index -= seed->mutations.size();
    }
    return {};
}

std::string BrokenDatabases::withSeveralChanges(std::size_t number) const
{
    std::mt19937 random(static_cast<unsigned>(number));
    FltTopic const& topic = seeds[random() % seeds.size()]->topic;
    std::string bytes = topic.bytes;
    for (unsigned changes = 2 + random() % 6; changes > 0; --changes)
        bytes[topic.begin + random() % (topic.end - topic.begin)] = static_cast<char>(random());
    return bytes;
}
