#pragma once

#include <gtest/gtest.h>
#include <string>

/// A program that converts databases, and the ending of its results.
struct Converter {
    char const* program;
    char const* ending;

    static auto each() { return testing::Values(Converter{"flt2iv", ".iv"}, Converter{"flt2gltf", ".glb"}); }
    static std::string nameOf(testing::TestParamInfo<Converter> const& one) { return one.param.program; }
};
