#include "iv/SceneStream.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <new>
#include <zlib.h>

/// Takes what is written.
struct SceneStream::Output {
    virtual ~Output() = default;

    /// @return false if the target doesn't take it
    virtual bool write(char const* data, std::size_t count) = 0;

    virtual void finish() = 0;

    std::uint64_t bytes = 0; ///< That went into the target.
};

class SceneStream::Plain : public SceneStream::Output
{
public:
    explicit Plain(FILE* target) : target(target) {}

    bool write(char const* data, std::size_t count) override
    {
        bytes += count;
        return std::fwrite(data, 1, count, target) == count;
    }
    void finish() override {}

private:
    FILE* target;
};

class SceneStream::Compressed : public SceneStream::Output
{
public:
    explicit Compressed(FILE* target) : target(target)
    {
        constexpr int gzipForm = 15 + 16; // the largest window, with the head and the sum of gzip
        constexpr int memory = 8;
        if (::deflateInit2(&state, Z_DEFAULT_COMPRESSION, Z_DEFLATED, gzipForm, memory, Z_DEFAULT_STRATEGY) !=
            Z_OK)
            throw std::bad_alloc();
    }
    ~Compressed() override { ::deflateEnd(&state); }

    Compressed(Compressed const&) = delete;
    Compressed& operator=(Compressed const&) = delete;

    bool write(char const* data, std::size_t count) override
    {
        constexpr std::size_t most = std::numeric_limits<uInt>::max();
        for (std::size_t done = 0; done < count;) {
            std::size_t const part = std::min(count - done, most);
            state.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data + done)); // zlib only reads it
            state.avail_in = static_cast<uInt>(part);
            if (!deflateAll(Z_NO_FLUSH))
                return false;
            done += part;
        }
        return true;
    }
    void finish() override
    {
        state.avail_in = 0;
        deflateAll(Z_FINISH);
    }

private:
    bool deflateAll(int flush)
    {
        do {
            state.next_out = buffer.data();
            state.avail_out = static_cast<uInt>(buffer.size());
            ::deflate(&state, flush);
            std::size_t const made = buffer.size() - state.avail_out;
            bytes += made;
            if (std::fwrite(buffer.data(), 1, made, target) != made)
                return false;
        } while (state.avail_out == 0);
        return true;
    }

    FILE* target;
    z_stream state = {};
    std::array<unsigned char, 65536> buffer{};
};

SceneStream::SceneStream(FILE* target, bool compresses)
{
    if (compresses)
        output = std::make_unique<Compressed>(target);
    else
        output = std::make_unique<Plain>(target);
    cookie_io_functions_t functions = {};
    functions.write = write;
    functions.seek = seek;
    input = ::fopencookie(this, "w", functions);
    if (input == nullptr)
        throw std::bad_alloc();
}

SceneStream::~SceneStream()
{
    std::fclose(input);
}

ssize_t SceneStream::write(void* stream, char const* bytes, std::size_t count)
{
    auto& self = *static_cast<SceneStream*>(stream);
    self.isBroken = self.isBroken || !self.output->write(bytes, count);
    self.position += static_cast<off64_t>(count);
    return static_cast<ssize_t>(count); // in any case: the target's error flag is what counts
}

/// Tells the position; there is no other way than on.
int SceneStream::seek(void* stream, off64_t* offset, int whence)
{
    if (whence != SEEK_CUR || *offset != 0) {
        errno = ESPIPE;
        return -1;
    }
    *offset = static_cast<SceneStream*>(stream)->position;
    return 0;
}

std::uint64_t SceneStream::finish()
{
    std::fflush(input);
    if (!isBroken)
        output->finish();
    return output->bytes;
}
