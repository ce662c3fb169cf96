#pragma once

#include <optional>
#include <sys/types.h>
#include <utility>
#include <vector>

/// The files that lead from a top-level file to the one that is being converted, and the number of external
/// files that were opened on all ways.
class FltReferenceChain
{
public:
    /// What a file is, whatever name leads to it.
    using Identity = std::pair<dev_t, ino_t>;

    /// The file of a name, if there is one.
    static std::optional<Identity> identityOf(char const* path);

    /// Makes a file the last of the chain as long as this object lives.
    class Link
    {
    public:
        Link(FltReferenceChain& chain, Identity const& file) : chain(chain) { chain.files.push_back(file); }
        ~Link() { chain.files.pop_back(); }

        Link(Link const&) = delete;
        Link& operator=(Link const&) = delete;

    private:
        FltReferenceChain& chain;
    };

    bool isEmpty() const { return files.empty(); }

    /// Whether a file is one of the chain.
    bool holds(Identity const& file) const;

    /// Whether no further file may be linked, since the stack might not hold its conversion.
    bool isFull() const;

    /// Counts one more external file.
    /// @return false if there were too many already (FltLimits::externalReferences)
    bool open();

private:
    std::vector<Identity> files;
    int opened = 0;
};
