#include "convert/FltConvertedFiles.h"

#include "messages/FltLimits.h"

void FltConvertedFiles::begin(Identity const& file, std::int64_t size)
{
    if (files.try_emplace(file).second)
        distinctBytes += size;
}

FltConvertedFiles::Scene const* FltConvertedFiles::findInstead(Identity const& file, std::int64_t size,
                                                               int names) const
{
    auto const found = files.find(file);
    if (found == files.end() || !found->second.isFinished)
        return nullptr;
    bool const mayBeRead = names < FltLimits::namesOfAFile &&
                           bytesRead + size <= distinctBytes * FltLimits::externalBytesPerByte;
    return mayBeRead ? nullptr : &found->second.scene;
}

bool FltConvertedFiles::read(Identity const& file, std::int64_t size)
{
    bytesRead += size;
    bool const isFirst = files.try_emplace(file).second;
    if (isFirst)
        distinctBytes += size;
    return isFirst;
}

void FltConvertedFiles::finish(Identity const& file, Scene const& scene)
{
    File& entry = files[file];
    if (entry.isFinished)
        return;
    entry.scene = scene;
    entry.isFinished = true;
}
