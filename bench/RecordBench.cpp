// Reading numbers, and records of each family: decoding, decoding with the dump onto a log, and the plain
// writing of that dump.

#include "BenchOptions.h"
#include "LogTarget.h"
#include "parser/FltRawData.h"
#include "parser/Flt_15_7_CreationVisitor.h"
#include "records/FltRecord.h"
#include "records/FltUtils.h"
#include "writer/FltWriter.h"

#include <iostream>
#include <memory>
#include <string>

namespace
{

constexpr int revision = 1570;

/// The bytes of a record, as the parser hands them to the factory.
void assign(FltRawData& raw, std::string const& bytes, Flt_15_7_CreationVisitor const& visitor)
{
    int const opcode = FltUtils::word16At(bytes.data());
    auto const length = static_cast<unsigned>(bytes.size());
    raw.assign(bytes.data(), bytes.data() + bytes.size(), bytes.size(), visitor.getReach(opcode, length));
}

/// The dump of a record.
std::string dumpOf(std::string const& bytes)
{
    std::ostringstream os;
    std::streambuf* const before = std::cout.rdbuf(os.rdbuf());
    Flt_15_7_CreationVisitor visitor;
    visitor.revision = revision;
    Flt_15_7_CreationVisitor::forgetPrevious();
    FltRawData raw;
    assign(raw, bytes, visitor);
    FltRecord* record = nullptr;
    visitor.visitFltRawData(record, &raw);
    Flt_15_7_CreationVisitor::forgetPrevious();
    delete record;
    std::cout.rdbuf(before);
    return os.str();
}

/// Runs the factory over the record: one made, decoded, dumped and deleted.
void make(benchmark::State& state, std::string const& bytes)
{
    LogTarget log;
    std::streambuf* const before = std::cout.rdbuf(&log.stream.buffer);
    Flt_15_7_CreationVisitor visitor;
    visitor.revision = revision;
    FltRawData raw;
    for ([[maybe_unused]] auto _ : state) {
        assign(raw, bytes, visitor);
        FltRecord* record = nullptr;
        visitor.visitFltRawData(record, &raw);
        Flt_15_7_CreationVisitor::forgetPrevious();
        delete record;
    }
    std::cout.rdbuf(before);
    state.SetItemsProcessed(state.iterations());
}

/// Decodes into one record again and again.
void decode(benchmark::State& state, std::string const& bytes)
{
    Flt_15_7_CreationVisitor visitor;
    visitor.revision = revision;
    FltRawData raw;
    assign(raw, bytes, visitor);
    std::ostringstream nowhere;
    std::streambuf* const before = std::cout.rdbuf(nowhere.rdbuf());
    Flt_15_7_CreationVisitor::forgetPrevious();
    FltRecord* made = nullptr;
    visitor.visitFltRawData(made, &raw);
    Flt_15_7_CreationVisitor::forgetPrevious();
    std::unique_ptr<FltRecord> const record(made);
    std::cout.rdbuf(before);
    for ([[maybe_unused]] auto _ : state) {
        record->getPropertiesFromData(raw.data);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}

template <class Read>
void addRead(std::string const& name, int size, Read read)
{
    benchmark::RegisterBenchmark(("FltUtils/" + name).c_str(), [size, read](benchmark::State& state) {
        std::string bytes(4096, '\x3f');
        for ([[maybe_unused]] auto _ : state) {
            char* cursor = bytes.data();
            char* const end = cursor + bytes.size();
            while (cursor != end)
                read(cursor);
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(state.iterations() * (4096 / size));
        state.SetBytesProcessed(state.iterations() * 4096);
    });
}

template <class Value>
void addRead(std::string const& name, void (*read)(Value*, char*&))
{
    addRead(name, sizeof(Value), [read](char*& cursor) {
        Value value;
        read(&value, cursor);
        benchmark::DoNotOptimize(value);
    });
}

void addRecord(std::string const& name, FltWriter::Fields const& fields = {}, bool canDecodeAgain = true)
{
    std::string const bytes = FltWriter(revision).add(name, fields).lastRecord();
    if (canDecodeAgain) // a list that is decoded again goes on after its entries
        benchmark::RegisterBenchmark((name + "/decode").c_str(),
                                     [bytes](benchmark::State& state) { decode(state, bytes); });
    benchmark::RegisterBenchmark((name + "/make").c_str(),
                                 [bytes](benchmark::State& state) { make(state, bytes); });
    benchmark::RegisterBenchmark((name + "/plain").c_str(),
                                 [bytes](benchmark::State& state) { writePlainly(state, dumpOf(bytes)); });
}

void addAll()
{
    addRead("int16", &FltUtils::getInt16ValueThenDecal);
    addRead("int32", &FltUtils::getInt32ValueThenDecal);
    addRead("float32", &FltUtils::getFloat32ValueThenDecal);
    addRead("double64", &FltUtils::getDouble64ValueThenDecal);

    FltWriter::Fields const place = {
        {"Xcoordinate", 1234.567}, {"Ycoordinate", -0.123456}, {"Zcoordinate", 88}};
    addRecord("Header", {{"formatRevisionLevel", revision}});
    addRecord("Group", {{"idASCII", "tower"}});
    addRecord("Object", {{"idASCII", "walls"}});
    addRecord("Face", {{"packedColor", {255, 64, 128, 32}}});
    addRecord("VertexColor", place);
    addRecord("VertexColorNormal", place);
    addRecord("VertexColorNormalUv", place);
    addRecord("VertexColorUv", place);
    addRecord("OldVertexColor");
    addRecord("VertexList", {{"offsets", {8, 60, 112, 164}}}, false);
    addRecord("MorphVertexList", {{"offsets", {8, 60, 112, 164}}}, false);
    addRecord("PushLevel");
    addRecord("Comment", {{"textDescription", "Surveyed in spring."}});
    addRecord("LongID", {{"idASCII", "the_tower_of_the_airfield"}});
    addRecord("Matrix", {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1}}});
    addRecord("Translate", {{"deltaX", 0.1}});
    addRecord("BoundingBox");
    addRecord("LOD", {{"switchInDistance", 1500}});
    addRecord("DOF", {{"ZMaxScale", 1}});
    addRecord("Switch", {{"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1}}}, false);
    addRecord("LightSource");
    addRecord("LightPoint");
    addRecord("LightSourcePalette");
    addRecord("Sound");
    addRecord("Text");
    addRecord("ClipRegion");
    addRecord("ExternalReference", {{"asciiPath", "tower.flt"}});
    addRecord("TexturePattern", {{"fileName", "grass.rgb"}});
    addRecord("Material", {{"ambient", {0.2, 0.2, 0.2}}});
    addRecord("ColorPalette", {}, false);
    addRecord("SphericalTextureMapping", {{"type", 3}}, false);
    addRecord("EyePointTrackPlane", {}, false);
}

} // namespace

int main(int argc, char** argv)
{
    BenchOptions options(argc, argv, true);
    int count = static_cast<int>(options.rest.size());
    addAll();
    benchmark::Initialize(&count, options.rest.data());
    benchmark::RunSpecifiedBenchmarks();
}
