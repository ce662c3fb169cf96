#include "dump/FltLogBuffer.h"

#include <cerrno>
#include <unistd.h>

SideFile::Outcome FltLogBuffer::open(char const* path, char const* database)
{
    close();
    failed = false;
    block.reset(new char[blockSize]);
    SideFile opened(path, database, SideFile::Content::emptied);
    file = opened.release();
    if (file < 0) {
        block.reset();
        return opened.getOutcome();
    }
    setp(block.get(), block.get() + blockSize);
    current = this;
    return SideFile::Outcome::opened;
}

void FltLogBuffer::write()
{
    char const* from = pbase();
    if (file >= 0)
        room.keepFor(file, size, pptr() - from);
    while (from != pptr() && !failed) {
        auto const written = ::write(file, from, static_cast<std::size_t>(pptr() - from));
        if (written > 0) {
            from += written;
            size += written;
        } else if (written == 0 || errno != EINTR) {
            failed = true;
        }
    }
    setp(block.get(), block.get() + (block ? blockSize : 0));
}

bool FltLogBuffer::close()
{
    if (file < 0)
        return false;
    FltLogBuffer::write();
    room.giveBack(file, size);
    size = 0;
    if (::close(file) != 0)
        failed = true;
    file = -1;
    block.reset();
    setp(nullptr, nullptr);
    if (current == this)
        current = nullptr;
    return !failed;
}

void FltLogBuffer::writeCurrent()
{
    if (current != nullptr)
        current->write();
}

FltLogBuffer::~FltLogBuffer()
{
    close();
}

FltLogBuffer::int_type FltLogBuffer::overflow(int_type character)
{
    if (file < 0)
        return traits_type::not_eof(character);
    write();
    return traits_type::eq_int_type(character, traits_type::eof())
               ? traits_type::not_eof(character)
               : sputc(traits_type::to_char_type(character));
}

std::streamsize FltLogBuffer::xsputn(char const* text, std::streamsize size)
{
    return file < 0 ? size : FltDumpBuffer::xsputn(text, size);
}
