#include "FltHost.h"

#include "plugin/Plugin.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/nodes/SoSeparator.h>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <streambuf>
#include <system_error>

namespace
{

/// A buffer that drops all output.
class SilentBuffer : public std::streambuf
{
protected:
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    std::streamsize xsputn(char const*, std::streamsize count) override { return count; }
};

/// Turns the library's messages, of the form "text", "(Warning Level: n)" and an empty line, into one line
/// each.
class MessageBuffer : public std::streambuf
{
public:
    explicit MessageBuffer(FltHost const& host) : host(host) {}

    /// Shows what is left, and how much was left out.
    void finish()
    {
        endLine();
        show(3);
        if (shown > mostShown)
            host.warn(std::to_string(shown - mostShown) + " more messages left out");
    }

protected:
    int_type overflow(int_type character) override
    {
        if (traits_type::eq_int_type(character, traits_type::eof()))
            return traits_type::not_eof(character);
        if (traits_type::to_char_type(character) == '\n')
            endLine();
        else if (line.size() < longestLine)
            line += traits_type::to_char_type(character);
        return character;
    }

private:
    static constexpr int mostShown = 20;
    static constexpr std::size_t longestLine = 1000;

    void endLine()
    {
        static constexpr std::string_view levelMark = "(Warning Level: ";
        if (line.compare(0, levelMark.size(), levelMark) == 0)
            show(std::atoi(line.c_str() + levelMark.size()));
        else if (!line.empty() && text.size() < longestLine)
            text += (text.empty() ? "" : " ") + line;
        line.clear();
    }

    void show(int level)
    {
        if (text.empty())
            return;
        if (++shown <= mostShown) {
            if (level >= 3)
                host.error(text);
            else
                host.warn(text);
        }
        text.clear();
    }

    FltHost const& host;
    std::string line;
    std::string text;
    int shown = 0;
};

/// Gives a stream another buffer for a while.
class BufferGuard
{
public:
    BufferGuard(std::ostream& stream, std::streambuf* buffer) : stream(stream), before(stream.rdbuf(buffer))
    {
    }
    ~BufferGuard()
    {
        stream.rdbuf(before);
        stream.clear();
    }
    BufferGuard(BufferGuard const&) = delete;
    BufferGuard& operator=(BufferGuard const&) = delete;

private:
    std::ostream& stream;
    std::streambuf* before;
};

/// Throws an error that explains why a file can't be opened.
void checkReadable(std::string const& path)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        throw FltHostError(path + ": this is a directory. Give the name of an OpenFlight file (*.flt).");
    errno = 0;
    if (!std::ifstream(path, std::ios::binary))
        throw FltHostError(path + ": cannot open: " + std::strerror(errno) +
                           ". Check the name and its permissions.");
    if (!std::filesystem::is_regular_file(path, ignored))
        throw FltHostError(path + ": not a regular file. Save the database into a file first.");
}

/// Why the library couldn't convert a file.
std::string whyNotOpenFlight(std::string const& path)
{
    unsigned char head[16] = {};
    std::ifstream file(path, std::ios::binary);
    file.read(reinterpret_cast<char*>(head), sizeof head);
    if (file.gcount() == 0)
        return "the file is empty. Fetch or export it again.";
    if (file.gcount() < static_cast<std::streamsize>(sizeof head))
        return "the file breaks off within its header. Fetch or export it again.";
    if (head[0] != 0 || head[1] != 1)
        return "not an OpenFlight database: it doesn't begin with a header record. Check that this is the "
               "right file.";
    if (head[2] == 0 && head[3] == 0)
        return "the header record is damaged: its length is zero. Fetch or export the file again.";
    auto const revision =
        static_cast<int>(static_cast<unsigned>(head[12]) << 24 | static_cast<unsigned>(head[13]) << 16 |
                         static_cast<unsigned>(head[14]) << 8 | head[15]);
    if (revision < 11)
        return "OpenFlight revision " + std::to_string(revision) +
               " isn't supported. Export the database at revision 11 or newer (1570 is a good choice).";
    return "the database can't be read.";
}

} // namespace

FltHost::FltHost(std::string programName, bool quiet) : programName(std::move(programName)), quiet(quiet)
{
    SoDB::init();
    SoInteraction::init();
    SoDebugError::setHandlerCallback(takeToolkitMessage, this);
    SoReadError::setHandlerCallback(takeToolkitMessage, this);
}

FltHost::~FltHost()
{
    SoDebugError::setHandlerCallback(nullptr, nullptr);
    SoReadError::setHandlerCallback(nullptr, nullptr);
}

void FltHost::error(std::string const& text) const
{
    std::fprintf(stderr, "%s: %s\n", programName.c_str(), text.c_str());
}

void FltHost::warn(std::string const& text) const
{
    if (!quiet)
        std::fprintf(stderr, "%s: warning: %s\n", programName.c_str(), text.c_str());
}

void FltHost::takeToolkitMessage(SoError const* message, void* host)
{
    std::string text = message->getDebugString().getString();
    // With an off-screen context and no X server the toolkit posts this once; it has no consequences.
    if (text.find("glxglue_isdirect") != std::string::npos)
        return;
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    static_cast<FltHost const*>(host)->warn(text);
}

std::string FltHost::withDirectory(std::string const& path)
{
    return path.find('/') == std::string::npos ? "./" + path : path;
}

SoSeparator* FltHost::load(std::string const& path)
{
    checkReadable(path);
    std::string const name = withDirectory(path);
    SoInput::addDirectoryFirst(name.substr(0, name.rfind('/') + 1).c_str());

    SoSeparator* root;
    {
        SilentBuffer silence;
        MessageBuffer messages(*this);
        BufferGuard const outputGuard(std::cout, &silence);
        BufferGuard const errorGuard(std::cerr, &messages);
        root = convertFrom(name.c_str());
        messages.finish();
    }

    // The separator of a file that wasn't converted has no reference.
    if (root != nullptr && root->getRefCount() == 0) {
        root->ref();
        root->unref();
        root = nullptr;
    }
    if (root == nullptr)
        throw FltHostError(path + ": " + whyNotOpenFlight(path));
    return root;
}
