#include "convert/FltReferenceChain.h"

#include "messages/FltLimits.h"
#include "toolkit/StackSpace.h"

#include <algorithm>
#include <sys/stat.h>

std::optional<FltReferenceChain::Identity> FltReferenceChain::identityOf(char const* path)
{
    struct stat status;
    if (::stat(path, &status) != 0)
        return std::nullopt;
    return Identity(status.st_dev, status.st_ino);
}

bool FltReferenceChain::holds(Identity const& file) const
{
    return std::find(files.begin(), files.end(), file) != files.end();
}

bool FltReferenceChain::isFull() const
{
    std::size_t const left = StackSpace::left();
    return left > 0 ? left < FltLimits::stackForAFile : files.size() > FltLimits::externalReferenceDepth;
}

bool FltReferenceChain::open()
{
    if (opened >= FltLimits::externalReferences)
        return false;
    ++opened;
    return true;
}
