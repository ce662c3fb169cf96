#include "inspect/FltCheckPictures.h"

#include "messages/FltFindingNumber.h"
#include "records/FltOpcode.h"

#include <string>
#include <unordered_map>

namespace Number = FltFindingNumber;

namespace
{

bool isPowerOfTwo(int number)
{
    return number > 0 && (number & (number - 1)) == 0;
}

} // namespace

void FltCheckPictures::check(std::vector<FltTexture> const& textures)
{
    std::unordered_map<std::string, std::uint64_t> offsets;
    for (auto const& [index, entry] : inventory.textures)
        offsets.try_emplace(entry.name, entry.offset);
    for (FltTexture const& texture : textures) {
        auto const offset = offsets.find(texture.name);
        checkPicture(texture, offset != offsets.end() ? static_cast<std::int64_t>(offset->second)
                                                      : FltFinding::nowhere);
    }
}

void FltCheckPictures::checkPicture(FltTexture const& texture, std::int64_t offset)
{
    if (!texture.unreadable.empty()) {
        findings.addHere(Number::unreadableTexture, offset, FltOpcode::texturePattern,
                         texture.unreadable + " " + texture.problem);
        return;
    }
    if (texture.pixels == nullptr)
        return;
    int const width = texture.pixels->width;
    int const height = texture.pixels->height;
    if (!isPowerOfTwo(width) || !isPowerOfTwo(height))
        findings.addHere(Number::unevenTexture, offset, FltOpcode::texturePattern,
                         quoted(texture.name) + " has " + std::to_string(width) + " x " +
                             std::to_string(height) + " pixels");
}
