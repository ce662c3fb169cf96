#pragma once

#include <memory>
#include <vector>

class FltInput;
class FltParser;

/// The parser of a conversion: one that the caller made, or one that this object made itself. The latter live
/// until this object is destroyed, also after another one took their place.
///
/// A conversion that fails leaves its records alive, unless keepNothing() was called. Those of the last such
/// parser that was made here stay in memory until others replace them or the process ends.
class FltParserHolder
{
public:
    FltParserHolder() = default;
    ~FltParserHolder();

    FltParserHolder(FltParserHolder const&) = delete;
    FltParserHolder& operator=(FltParserHolder const&) = delete;

    /// Takes a parser that stays the caller's. May be null.
    void take(FltParser* parser);

    /// Makes a parser for an input that stays the caller's.
    void make(FltInput* input);

    /// Lets go of a parser that was made here; a caller's stays in use.
    void retire();

    /// The parser in use, or null.
    FltParser* get() const { return fltParser; }

    /// Deletes the records of a conversion that fails, too.
    void keepNothing() { keepsAbandonedRecords = false; }

    /// Whether there are records to look at, as far as destroyRecords() knows.
    bool holdsRecords() const { return fltParser != nullptr && !recordsDestroyed; }

    /// Deletes the parser's records, each once. The vector keeps its size and its entries, which then dangle.
    void destroyRecords();

private:
    struct GiveInputBackAndDelete {
        void operator()(FltParser* parser) const;
    };

    using OwnParser = std::unique_ptr<FltParser, GiveInputBackAndDelete>;

    void abandonRecords();

    FltParser* fltParser = nullptr;
    bool ownsFltParser = false;
    bool recordsDestroyed = false;
    bool keepsAbandonedRecords = true;
    std::vector<OwnParser> made;
};
