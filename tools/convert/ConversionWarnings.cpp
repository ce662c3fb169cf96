#include "convert/ConversionWarnings.h"

#include "support/Numbers.h"

#include <utility>

ConversionWarnings::ConversionWarnings(Program const& program, std::string input)
    : program(program), input(std::move(input))
{
}

void ConversionWarnings::ofReferencesLeftOut(std::size_t count) const
{
    if (count != 0)
        program.warn(input + ": " + Numbers::counted(count, "reference is", "references are") +
                     " left out: a reader of the converted files would never come to an end, or they aren't "
                     "converted themselves");
}

void ConversionWarnings::ofLosses(std::string const& form, std::vector<FltOmission> const& losses) const
{
    std::string list;
    for (FltOmission const& loss : losses)
        list += (list.empty() ? "" : "; ") + loss.kind + " (" + std::to_string(loss.count) + ")";
    if (!list.empty())
        program.warn(input + ": " + form + " has no form for some of it: " + list);
}
