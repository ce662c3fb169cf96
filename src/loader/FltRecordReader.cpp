#include "loader/FltRecordReader.h"

#include "dump/FltDumpOutput.h"
#include "loader/FltDatabaseFile.h"
#include "loader/FltLoadLock.h"
#include "loader/FltMessageCollector.h"
#include "parser/FltFileInput.h"
#include "parser/FltFraming.h"
#include "parser/FltRawData.h"
#include "parser/Flt_15_7_CreationVisitor.h"
#include "records/FltRecord.h"
#include "records/FltRecordHeader.h"
#include "records/FltRecordJson.h"

#include <limits>
#include <new>
#include <nlohmann/json.hpp>

namespace
{

/// Keeps the library silent, and away from what another thread loads.
struct QuietWork {
    FltLoadLock lock;
    FltMessageCollector messages;
    FltDumpOutput::Redirect noDump{nullptr};
    Flt_15_7_CreationVisitor::Session factory;
};

} // namespace

struct FltRecordReader::State {
    explicit State(std::string const& path)
        : path(path), input(path.c_str()),
          framing(input.getBuffer(), static_cast<std::size_t>(input.getSize()))
    {
    }

    /// Decodes the record that the framing stands on.
    void decode()
    {
        char const* const end = input.getBuffer() + input.getSize();
        raw.assign(framing.data(), end, framing.getLength(),
                   factory.getReach(framing.getOpcode(), framing.getLength()));
        FltRecord* made = nullptr;
        factory.visitFltRawData(made, &raw);
        record.reset(made);
        auto const* const header =
            framing.getOffset() == 0 ? dynamic_cast<FltRecordHeader const*>(made) : nullptr;
        if (header != nullptr)
            factory.revision = header->formatRevisionLevel;
    }

    std::string path;
    FltFileInput input;
    FltFraming framing;
    FltRawData raw;
    Flt_15_7_CreationVisitor factory;
    std::unique_ptr<FltRecord> record; ///< Null if it can't be made.
};

FltRecordReader::FltRecordReader(std::string const& path)
{
    FltDatabaseFile::checkReadable(path, std::numeric_limits<std::uint64_t>::max());
    if (!FltDatabaseFile::canConvert(path))
        throw FltDatabaseFile::whyNotConverted(path);
    try {
        QuietWork const quiet;
        state = std::make_unique<State>(path);
    } catch (std::bad_alloc const&) {
        throw FltDatabaseFile::outOfMemory(path);
    }
}

FltRecordReader::~FltRecordReader() = default;
FltRecordReader::FltRecordReader(FltRecordReader&& other) noexcept = default;
FltRecordReader& FltRecordReader::operator=(FltRecordReader&& other) noexcept = default;

bool FltRecordReader::next()
{
    state->record.reset();
    if (!state->framing.next())
        return false;
    try {
        QuietWork const quiet;
        state->decode();
    } catch (std::bad_array_new_length const&) {
        state->record.reset(); // it counts fewer than nothing
    } catch (std::bad_alloc const&) {
        throw FltDatabaseFile::outOfMemory(state->path);
    }
    return true;
}

int FltRecordReader::opcode() const
{
    return state->framing.getOpcode();
}

std::uint64_t FltRecordReader::offset() const
{
    return state->framing.getOffset();
}

unsigned FltRecordReader::length() const
{
    return state->framing.getLength();
}

std::string FltRecordReader::json() const
{
    nlohmann::ordered_json json;
    if (state->record != nullptr) {
        json = FltRecordJson::of(*state->record, offset());
    } else {
        json["opcode"] = opcode();
        json["length"] = length();
        json["offset"] = offset();
        json["error"] = "the record counts fewer than nothing";
    }
    return json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

std::string FltRecordReader::fault() const
{
    return state->framing.getFault() != FltFraming::Fault::none
               ? state->framing.faultText() + state->framing.costText()
               : "";
}
