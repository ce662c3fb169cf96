#include "toolkit/JpegImage.h"

#include "toolkit/ImageFile.h"

#include <algorithm>
#include <cstdio>
#include <jpeglib.h>
#include <memory>
#include <string>

namespace
{

/// Encoders make about ten, and one for each bit of each channel would be fewer than these.
constexpr int mostScans = 100;

struct NoPicture {
};

[[noreturn]] void fail(j_common_ptr)
{
    throw NoPicture();
}

void saySilently(j_common_ptr, int) {}

/// What stands in front of the first scan, as the library reads it.
class Head
{
public:
    explicit Head(std::string const& path) : file(std::fopen(path.c_str(), "rb"), std::fclose)
    {
        state.err = jpeg_std_error(&errors);
        errors.error_exit = fail;
        errors.emit_message = saySilently;
        try {
            jpeg_create_decompress(&state);
            if (file == nullptr)
                return;
            jpeg_stdio_src(&state, file.get());
            jpeg_read_header(&state, TRUE);
            isRead = true;
        } catch (NoPicture const&) {
            isRead = false; // the library finds no picture either
        }
    }
    ~Head() { jpeg_destroy_decompress(&state); }
    Head(Head const&) = delete;
    Head& operator=(Head const&) = delete;

    ImageClaim claim() const
    {
        if (!isRead)
            return {};
        return {state.image_width, state.image_height, static_cast<std::uint64_t>(state.num_components)};
    }

    bool hasSeveralScans() { return isRead && jpeg_has_multiple_scans(&state) == TRUE; }

private:
    std::unique_ptr<FILE, int (*)(FILE*)> file;
    jpeg_error_mgr errors{};
    jpeg_decompress_struct state{};
    bool isRead = false;
};

bool hasFewScans(ImageFile& file)
{
    constexpr unsigned startOfScan = 0xda;
    constexpr std::uint64_t block = 64U << 10;
    int scans = 0;
    bool isMarker = false;
    for (std::uint64_t at = 0; at < file.size() && scans <= mostScans; at += block) {
        ImageFile::Bytes const bytes = file.read(at, block);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            scans += isMarker && bytes.byte(i) == startOfScan ? 1 : 0;
            isMarker = bytes.byte(i) == 0xff;
        }
    }
    return scans <= mostScans;
}

} // namespace

ImageClaim JpegImage::claimOf(ImageFile& file)
{
    return Head(file.path()).claim();
}

bool JpegImage::isSound(ImageFile& file)
{
    return !Head(file.path()).hasSeveralScans() || hasFewScans(file);
}
