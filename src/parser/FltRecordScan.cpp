#include "parser/FltRecordScan.h"

#include "dump/FltDumpOutput.h"
#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltFileInput.h"
#include "parser/FltStoredRecord.h"
#include "records/FltOpcode.h"
#include "records/FltRecord.h"
#include "records/FltRecordHeader.h"
#include "records/FltRecordTable.h"
#include "records/FltRevision.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace
{

/// Takes the library's messages while it lives, once it is told to; before, nobody gets them.
class Listening : private FltWarningMessageConsole::Listener
{
public:
    explicit Listening(std::vector<std::string>& texts)
        : texts(texts), before(FltWarningMessageConsole::setListener(this))
    {
    }
    ~Listening() override { FltWarningMessageConsole::setListener(before); }

    Listening(Listening const&) = delete;
    Listening& operator=(Listening const&) = delete;

    void begin() { isListening = true; }

private:
    void take(char const* text, int /*level*/, FltWarningMessageConsole::Place const* /*place*/) override
    {
        if (!isListening)
            return;
        static constexpr std::string_view mark = "WARNING ! ";
        std::string_view const message = text;
        texts.emplace_back(message.substr(0, mark.size()) == mark ? message.substr(mark.size()) : message);
    }
    void takeCount(std::string const& kind, int more) override
    {
        if (isListening)
            texts.push_back(kind + ": " + std::to_string(more) + " more");
    }

    FltWarningMessageConsole::Session session;
    std::vector<std::string>& texts;
    Listener* before;
    bool isListening = false;
};

std::unique_ptr<FltFileInput> open(std::string const& path)
{
    FltDumpOutput::Redirect const noDump(nullptr);
    std::vector<std::string> messages;
    Listening listening(messages);
    listening.begin();
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        throw std::runtime_error(path +
                                 ": this is a directory. Give the name of an OpenFlight file (*.flt).");
    errno = 0;
    auto input = std::make_unique<FltFileInput>(path.c_str());
    if (!input->isInFlowCreated())
        throw std::runtime_error(
            path + ": cannot open: " + (errno != 0 ? std::strerror(errno) : "not a regular file") +
            ". Check the name and its permissions.");
    return input;
}

} // namespace

FltRecordScan::FltRecordScan(std::string const& path)
    : input(open(path)), content(input->getBuffer(), static_cast<std::size_t>(input->getSize())),
      framing(content.data(), content.size()), shortRecordBytesLeft(bytesOfShortRecords())
{
    FltFraming first(content.data(), content.size());
    if (!first.next() || first.getOpcode() != FltOpcode::header)
        throw std::runtime_error(path + ": not an OpenFlight database: it doesn't begin with a whole header "
                                        "record. Check that this is the right file.");
    // The revision of every record is that of the header.
    FltStoredRecord const stored{first.data(), content.data() + content.size(), FltOpcode::header,
                                 first.getLength(), 0};
    formatRevision = static_cast<FltRecordHeader const&>(*stored.decode()).formatRevisionLevel;
    if (formatRevision < FltRevision::oldest)
        throw std::runtime_error(path + ": OpenFlight revision " + std::to_string(formatRevision) +
                                 " isn't supported. Export the database at revision 11 or newer.");
}

FltRecordScan::~FltRecordScan() = default;

bool FltRecordScan::next()
{
    looked = {};
    return framing.next();
}

void FltRecordScan::goTo(std::uint64_t offset)
{
    looked = {};
    framing.goTo(static_cast<std::size_t>(offset));
    shortRecordBytesLeft = bytesOfShortRecords();
    toldOfTooManyShortRecords = false;
}

std::size_t FltRecordScan::countOf(int opcode) const
{
    std::size_t count = 0;
    for (FltFraming ahead = framing; ahead.next();)
        count += ahead.getOpcode() == opcode ? 1 : 0;
    return count;
}

std::size_t FltRecordScan::bytesOfShortRecords() const
{
    return FltLimits::shortRecordBytes + FltLimits::shortRecordBytesPerFileByte * content.size();
}

FltRecordScan::Look const& FltRecordScan::look() const
{
    if (!looked.isDone && framing.getLength() != 0 && fault() == FltFraming::Fault::none)
        decode();
    looked.isDone = true;
    return looked;
}

void FltRecordScan::decode() const
{
    FltStoredRecord const stored{framing.data(), content.data() + content.size(), opcode(), length(),
                                 formatRevision};
    std::size_t const cost = stored.borrowedBytes();
    if (cost > shortRecordBytesLeft) {
        if (!std::exchange(toldOfTooManyShortRecords, true))
            looked.said.emplace_back(
                "Too many records are shorter than their layout: this one and further ones are left out");
        return;
    }
    shortRecordBytesLeft -= cost;

    try {
        Listening listening(looked.said);
        std::unique_ptr<FltRecord> record = stored.make();
        listening.begin(); // what records say of their length when they are made leastLength() tells
        stored.decodeTo(*record, block);
        looked.decoded = std::move(record);
    } catch (std::bad_alloc const&) { // of which a negative count is one
        looked.said.emplace_back("A count is negative, or larger than the memory: the record is left out");
    }
}

std::size_t FltRecordScan::leastLength() const
{
    return FltRecordTable::leastOf(opcode(), formatRevision);
}
