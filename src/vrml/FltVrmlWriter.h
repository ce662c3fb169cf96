#pragma once

#include "toolkit/VelloReaderExport.h"
#include "visual/FltOmission.h"
#include "visual/FltVisualNode.h"
#include "vrml/FltVrmlPictures.h"

#include <cstdint>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Writes a visual as a VRML97 file. The toolkit needn't be started.
///
/// What an unlit face is has no material, or shines; what turns to the eye is a Billboard; parts that stand
/// at several places are written once, or twice if some of the places mirror them. Nodes have the names of
/// the database, in which characters other than letters, digits and `_` became `_`, and each name stands
/// once.
class VELLOREADER_API FltVrmlWriter
{
public:
    /// Gives the address at which a reader of the file finds what stands for another database; none if
    /// nothing may stand there.
    using AddressOf = std::function<std::optional<std::string>(std::string const& database)>;

    /// @param root     lives, and stays as it is, as long as this object
    /// @param textures that meshes name. They have to outlive this object.
    FltVrmlWriter(std::shared_ptr<FltVisualNode const> root, std::vector<FltTexture> const& textures);
    ~FltVrmlWriter();
    FltVrmlWriter(FltVrmlWriter const&) = delete;
    FltVrmlWriter& operator=(FltVrmlWriter const&) = delete;

    /// The pictures that the file needs, each once. Those that are given no address have their pixels in the
    /// file.
    std::vector<FltVrmlPicture>& pictures();

    /// Writes the file. Whether the stream took everything its error flag tells.
    /// @param addressOf of the files that the visual leads to; without it they are left out
    void write(FILE* stream, AddressOf const& addressOf = {});

    /// What VRML97 has no form for, by kind, once the file is written.
    std::vector<FltOmission> omissions() const;

private:
    class Walk;

    std::shared_ptr<FltVisualNode const> root;
    std::unique_ptr<FltVrmlPictures> allPictures;
    std::map<std::string, std::uint64_t, std::less<>> lost;
};
