#pragma once

#include "toolkit/VelloReaderExport.h"

#include <cstddef>
#include <string>
#include <string_view>

class SoInfo;
class SoNode;

/// Names as nodes bear them.
///
/// The toolkit replaces some characters, and keeps every name that a node ever had as long as the process
/// lives. So a scene for people gives its nodes short names. Where one had to be cut, an SoInfo below the
/// node holds it whole.
class VELLOREADER_API SoNodeName
{
public:
    /// Bytes of a short name.
    static constexpr std::size_t longest = 255;

    /// The name that a node bears for one of a database: what the toolkit would replace is replaced, and the
    /// end is cut off. The toolkit's table of names isn't asked.
    static std::string of(std::string_view name);

    /// The same, but not cut: two names that differ here are different ones.
    static std::string uncut(std::string_view name);

    /// A node without parents that holds a whole name; null if it isn't cut.
    static SoInfo* infoOf(std::string_view name);

    /// The whole name of a node, as the database has it if it was cut.
    static std::string wholeOf(SoNode const& node);

    /// Gives a node a name as long as it is. Only what the toolkit's table can't hold is cut off: it writes
    /// beyond its memory for such a name.
    static void give(SoNode& node, std::string const& name);

    /// The name that a node bears which was given one.
    static std::string given(std::string const& name) { return uncut(name.substr(0, mostOfToolkit)); }

private:
    static constexpr std::size_t mostOfToolkit = 65'502;
};
