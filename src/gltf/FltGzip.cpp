#include "gltf/FltGzip.h"

#include <algorithm>
#include <limits>
#include <new>
#include <zlib.h>

namespace
{

constexpr int gzipFormat = 16; // Added to the bits of the window.
constexpr int usualMemory = 8;

/// A stream of zlib that is ended in any case.
class Deflation
{
public:
    Deflation()
    {
        if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, MAX_WBITS + gzipFormat, usualMemory,
                         Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::bad_alloc();
    }
    ~Deflation() { deflateEnd(&stream); }
    Deflation(Deflation const&) = delete;
    Deflation& operator=(Deflation const&) = delete;

    z_stream stream{};
};

} // namespace

std::string FltGzip::packed(std::string_view bytes)
{
    Deflation deflation;
    z_stream& stream = deflation.stream;
    std::string result;
    std::string part(1 << 18, '\0');
    int state = Z_OK;
    while (state != Z_STREAM_END) {
        // zlib counts in 32 bits, and reads only.
        if (stream.avail_in == 0 && !bytes.empty()) {
            std::size_t const count = std::min<std::size_t>(bytes.size(), std::numeric_limits<uInt>::max());
            stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
            stream.avail_in = static_cast<uInt>(count);
            bytes.remove_prefix(count);
        }
        stream.next_out = reinterpret_cast<Bytef*>(part.data());
        stream.avail_out = static_cast<uInt>(part.size());
        state = deflate(&stream, bytes.empty() ? Z_FINISH : Z_NO_FLUSH);
        result.append(part.data(), part.size() - stream.avail_out);
    }
    return result;
}
