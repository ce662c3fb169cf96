#pragma once

#include <set>
#include <string>

/// The warnings of one conversion whose causes may come up any number of times: each is given once.
class FltOneTimeWarnings
{
public:
    /// Sends a warning of level 2 to the console, unless this very text was sent before.
    void notify(std::string const& text);

private:
    std::set<std::string> given;
};
