#pragma once

#include <memory>
#include <vector>

class FltInput;
class FltParser;

/// The parser of a conversion: one that the caller made, or one of its own. Those of its own live until this
/// object goes, so that whoever knows them may look at them.
///
/// A conversion that fails leaves its records alive. Of the parsers of its own the last such records stay in
/// memory until the process ends or others follow them.
class FltParserHolder
{
public:
    FltParserHolder() = default;
    ~FltParserHolder();

    FltParserHolder(FltParserHolder const&) = delete;
    FltParserHolder& operator=(FltParserHolder const&) = delete;

    /// Takes a parser that stays the caller's. Null is fine.
    void take(FltParser* parser);

    /// Makes a parser of its own for an input that stays the caller's.
    void make(FltInput* input);

    /// Lets go of a parser of its own.
    void retire();

    /// The parser in use, or null.
    FltParser* get() const { return fltParser; }

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
    std::vector<OwnParser> made;
};
