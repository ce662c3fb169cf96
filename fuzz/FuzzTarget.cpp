// What all fuzzers have in common.

#include "FuzzTarget.h"

#include "RecordMutator.h"

#include "messages/FltWarningMessageConsole.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <new>

/// Changes bytes without regard to what they mean. It belongs to the fuzzer.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room); // NOLINT

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    SoDB::init();
    SoInteraction::init();
    SoDebugError::setHandlerCallback([](SoError const*, void*) {}, nullptr);
    SoReadError::setHandlerCallback([](SoError const*, void*) {}, nullptr);
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room,
                                               unsigned seed)
{
    bool const isPlain = seed % 4 == 0;
    return isPlain ? LLVMFuzzerMutate(data, size, room) : mutateRecords(data, size, room, seed);
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    try {
        useDatabase(std::string(reinterpret_cast<char const*>(data), size));
    } catch (std::bad_array_new_length const&) {
        // what a switch with a negative number of mask words is answered with
    }
    FltWarningMessageConsole::setOfMessages.clear();
    return 0;
}
