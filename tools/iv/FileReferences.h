#pragma once

#include "convert/ReferenceNames.h"

#include <cstddef>

class SoNode;

/// References in scenes, whose files have become other files.
namespace FileReferences
{

/// Names the converted files in a scene whose references are SoFile nodes. A reference to a database that
/// isn't among the targets is taken out; an empty group keeps its place.
/// @return how many were taken out
std::size_t rename(SoNode* root, ReferenceNames const& names);

} // namespace FileReferences
