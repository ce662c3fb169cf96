#pragma once

#include "model/FltRecordView.h"
#include "parser/FltFraming.h"

#include <functional>
#include <memory>
#include <vector>

/// Goes through a database record by record. Continuations are joined with the record before them, and after
/// a framing fault the next run of plausible records is looked for, if that is wanted.
class FltModelRecordReader
{
public:
    /// @param begin the first byte of the file. The bytes belong to the caller, and have to outlive the
    ///              records.
    FltModelRecordReader(char const* begin, std::size_t size, bool salvages);

    /// Goes on to the next record. @return whether there is one
    bool next(FltRecordView& record);

    /// Bytes of the file up to the end of the last record.
    std::size_t getPosition() const { return position; }

private:
    bool advance();
    bool salvage();
    bool isRunAt(std::size_t at) const;
    void join(FltRecordView& record);
    bool isContinuedAt(std::size_t at) const;

    char const* begin;
    std::size_t size;
    bool salvages;
    FltFraming framing;
    std::size_t base = 0; ///< Where the framing began.
    std::size_t position = 0;
    std::vector<std::unique_ptr<char[]>> joined;
};
