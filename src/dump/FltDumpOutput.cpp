#include "dump/FltDumpOutput.h"

#include "dump/FltDump.h"

#include <iostream>
#include <utility>

namespace
{

std::ostream* output = &std::cout;

} // namespace

std::ostream* FltDumpOutput::current()
{
    return output;
}

void FltDumpOutput::line(std::string_view text)
{
    if (output != nullptr)
        (FltDump(*output) << text).endLine();
}

FltDumpOutput::Redirect::Redirect(std::ostream* os) : before(std::exchange(output, os)) {}

FltDumpOutput::Redirect::~Redirect()
{
    output = before;
}
