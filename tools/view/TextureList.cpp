#include "view/TextureList.h"

#include "textures/Picture.h"
#include "toolkit/SoSilentField.h"

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoNode.h>
#include <Inventor/nodes/SoTexture2.h>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>

namespace
{

/// The last part of a name, in small letters. Names may come from systems with backslashes.
std::string baseName(std::string const& name)
{
    std::size_t const slash = name.find_last_of("/\\");
    std::string base = slash == std::string::npos ? name : name.substr(slash + 1);
    std::transform(base.begin(), base.end(), base.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return base;
}

void measure(TextureList::Texture& texture)
{
    SbVec2s size(0, 0);
    int components = 0;
    texture.nodes.front()->image.getValue(size, components);
    texture.width = size[0];
    texture.height = size[1];
}

/// Gives a node a picture and its name, without having the toolkit open the file. What is written is the
/// name.
void show(SoTexture2& node, PicturePixels const& pixels, std::string const& path)
{
    SbVec2s const size(static_cast<short>(pixels.width), static_cast<short>(pixels.height));
    node.image.setValue(size, pixels.components, pixels.bytes.data());
    node.image.setDefault(TRUE);
    SoSilentField::set(node.filename, path.c_str());
}

} // namespace

TextureList::TextureList(SoNode* scene)
{
    SoSearchAction search;
    search.setType(SoTexture2::getClassTypeId());
    search.setInterest(SoSearchAction::ALL);
    search.setSearchingAll(TRUE);
    search.apply(scene);
    std::map<std::string, std::size_t> places;
    std::set<SoNode*> seen;
    for (int i = 0; i < search.getPaths().getLength(); ++i) {
        SoNode* const node = search.getPaths()[i]->getTail();
        auto* const texture = static_cast<SoTexture2*>(node);
        std::string const name = texture->filename.getValue().getString();
        if (name.empty() || !seen.insert(node).second)
            continue;
        auto const [place, isNew] = places.try_emplace(name, list.size());
        if (isNew)
            list.push_back({name, {}, 0, 0});
        list[place->second].nodes.push_back(texture);
    }
    for (Texture& texture : list)
        measure(texture);
}

int TextureList::missingCount() const
{
    return static_cast<int>(
        std::count_if(list.begin(), list.end(), [](Texture const& texture) { return texture.isMissing(); }));
}

bool TextureList::setImage(std::size_t index, std::string const& path)
{
    Picture const picture = Picture::read(path);
    if (picture.pixels == nullptr)
        return false;
    Texture& texture = list[index];
    for (SoTexture2* node : texture.nodes)
        show(*node, *picture.pixels, path);
    measure(texture);
    return !texture.isMissing();
}

int TextureList::findIn(std::string const& directory)
{
    std::map<std::string, std::string> files;
    std::error_code problem;
    for (std::filesystem::directory_iterator entry(directory, problem), end; !problem && entry != end;
         entry.increment(problem))
        files[baseName(entry->path().string())] = entry->path().string();
    int found = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        auto const file = files.find(baseName(list[i].name));
        if (list[i].isMissing() && file != files.end() && setImage(i, file->second))
            ++found;
    }
    return found;
}
