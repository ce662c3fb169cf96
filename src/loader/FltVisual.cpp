#include "loader/FltVisual.h"

#include <set>
#include <utility>

std::vector<FltTexture> FltVisual::distinctTextures() const
{
    std::set<std::pair<std::string, std::string>> known;
    std::vector<FltTexture> distinct;
    for (FltTexture const& texture : textures)
        if (!texture.name.empty() && known.emplace(texture.name, texture.database).second)
            distinct.push_back(texture);
    return distinct;
}
