#pragma once

#include "support/MemoryInput.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <cstddef>
#include <string>

/// A parse of a database in memory, with its records and what it wrote.
class Parse
{
public:
    explicit Parse(std::string const& bytes) : input(bytes), parser(&input)
    {
        StreamCapture const out(std::cout);
        StreamCapture const err(std::cerr);
        result = parser.run();
        log = out.str();
        messages = err.str();
    }
    explicit Parse(FltWriter const& flt) : Parse(flt.bytes()) {}
    ~Parse() { destroyRecords(parser); }

    Parse(Parse const&) = delete;
    Parse& operator=(Parse const&) = delete;

    FltRecord* operator[](std::size_t i) { return parser.getFltRecords().at(i); }
    std::size_t size() { return parser.getFltRecords().size(); }

    MemoryInput input;
    FltParser parser;
    int result = -1; ///< What FltParser::run() returned.
    std::string log;
    std::string messages;
};
