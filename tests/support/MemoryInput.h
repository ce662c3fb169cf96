#pragma once

#include "parser/FltInput.h"
#include "parser/FltParser.h"
#include "parser/Flt_15_7_CreationVisitor.h"
#include "records/FltRecord.h"

#include <algorithm>
#include <string>
#include <utility>

/// A database in memory as the input of a parser.
class MemoryInput : public FltInput
{
public:
    /// @param name of the file that it is taken for; what it has of a directory is the input's
    explicit MemoryInput(std::string content, std::string name = "memory.flt")
        : bytes(std::move(content)), fileName(std::move(name)),
          directory(fileName.substr(0, fileName.rfind('/') + 1))
    {
    }

    virtual ~MemoryInput() = default;

    char* getBuffer() override { return bytes.data(); }
    long getSize() const override { return static_cast<long>(bytes.size()); }
    bool isInFlowCreated() const override { return true; }
    char const* getFileName() const override { return fileName.c_str(); }
    char const* getDirName() const override { return directory.empty() ? nullptr : directory.c_str(); }

private:
    std::string bytes;
    std::string fileName;
    std::string directory;
};

/// Destroys the records of a parser, each once, and has the factory forget them.
inline void destroyRecords(FltParser& parser)
{
    Flt_15_7_CreationVisitor::forgetPrevious();
    auto& records = parser.getFltRecords();
    records.erase(std::unique(records.begin(), records.end()), records.end());
    for (FltRecord* record : records)
        delete record;
    records.clear();
}

/// Destroys the records of a parser at the end of a scope, also if an exception ended it.
class RecordsDestroyed
{
public:
    explicit RecordsDestroyed(FltParser& parser) : parser(parser) {}
    ~RecordsDestroyed() { destroyRecords(parser); }

    RecordsDestroyed(RecordsDestroyed const&) = delete;
    RecordsDestroyed& operator=(RecordsDestroyed const&) = delete;

private:
    FltParser& parser;
};
