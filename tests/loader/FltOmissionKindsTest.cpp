#include "loader/FltOmissionKinds.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

TEST(FltOmissionKinds, NamesWhatTheExactConversionLeavesOut)
{
    std::vector<FltOmission> const omissions = FltOmissionKinds::ofExactConversion(
        {{1, 1}, {5, 9}, {84, 2}, {85, 2}, {86, 7}, {87, 1}, {91, 3}, {127, 4}, {150, 5}});
    std::vector<std::pair<std::string, std::uint64_t>> found;
    for (FltOmission const& omission : omissions)
        found.emplace_back(omission.kind, omission.count);
    EXPECT_EQ(found, (std::vector<std::pair<std::string, std::uint64_t>>{
                         {"meshes", 2}, {"records of opcode 150", 5}, {"roads", 5}, {"sounds", 3}}));
}
