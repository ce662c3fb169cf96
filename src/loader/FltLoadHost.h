#pragma once

#include "convert/FltConversionHost.h"
#include "loader/FltLoadReport.h"
#include "loader/FltLoader.h"
#include "loader/FltMessageCollector.h"
#include "loader/FltSceneTextures.h"
#include "records/FltRecordHeader.h"

#include <exception>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// What a load does for a conversion, whichever it is: it fills the lists of the result, asks the callback
/// whether to go on, and decides about textures and external files.
class FltLoadHost : public FltConversionHost
{
public:
    /// An exception of the callback on its way through the conversion.
    struct CallbackFailure {
        std::exception_ptr reason;
    };

    /// All of them have to outlive this object.
    FltLoadHost(FltLoader const& options, std::string const& path, FltLoadReport& told,
                FltMessageCollector& messages);

    /// @name For a conversion that has no records of its own to hand over
    /// @{
    void takeHeader(FltRecordHeader const& header);
    void report(std::string const& file, std::uint64_t bytesDone, std::uint64_t bytesInAll) const;

    /// Opens an external file.
    /// @return nothing if the options don't let it be read, which is reported; a file that isn't open if it
    ///         can't be opened
    std::optional<OpenFile> openReferenced(std::string const& path);
    /// @}

    /// Finds the textures of a finished visual, and lists each.
    void findTextures(std::vector<FltTexture>& textures);

    /// Gives the nodes of textures of a finished exact scene their pictures, and completes the lists.
    void finishScene();

    void beginFile(FltInput const& file) override;
    void takeRecord(FltInput const& file, FltRecord const& record, std::size_t offset) override;
    void takeConverted(FltInput const& file, std::size_t records, std::size_t inAll) override;
    void endFile(FltInput const& file) override;
    SoNodeRef<SoTexture2> makeTexture(FltInput const& file, std::string const& name) override;
    bool beginReference(FltInput const& file, std::string const& name, std::string const& path,
                        bool isThere) override;
    OpenFile takeReferencedFile() override;
    void endReference(bool isLoaded) override;

private:
    /// A reference that is being followed.
    struct OpenReference {
        std::size_t position; ///< In the list of the scene.
        std::string file;     ///< That messages were about before.
        OpenFile opened;      ///< What is going to be read.
    };

    void reportNowAndThen(FltInput const& file, std::uint64_t bytesDone);
    void reportLeftOut(std::string const& why, std::string const& path);
    void reportPicture(std::string const& path) const;
    void addTexture(FltTexture const& texture);
    void reportTexture(FltTexture const& texture);
    void addOmissionsOfTextures();

    FltLoader const& options;
    std::string path;
    FltLoadReport& told;
    FltMessageCollector& messages;
    FltReadableTree readable;
    FltTextureFiles textureFiles;
    FltSceneTextures textureNodes;                      ///< Of the exact conversion.
    std::map<std::string, FltMessage> reportedTextures; ///< By where each is or should be.
    FltInput const* database = nullptr;                 ///< The top-level file, once it is read.
    std::map<int, std::uint64_t> records;               ///< How many there are of each opcode, in all files.
    std::vector<OpenReference> openReferences;
    FltInput const* reportedFile = nullptr;
    std::uint64_t nextReport = 0; ///< Bytes of that file.
};
