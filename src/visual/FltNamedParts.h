#pragma once

#include "model/FltNodeNumbers.h"
#include "parser/FltFileInput.h"
#include "visual/FltVisualBuilder.h"

#include <cstdint>
#include <memory>
#include <string>

/// A file of which single nodes are shown, by their names. It stays in memory meanwhile, so that it is read
/// once, however many of them are asked for.
class FltNamedParts
{
public:
    using Number = FltModelTree::Number;

    /// @param input whose bytes the model holds
    /// @param model that was read
    FltNamedParts(std::unique_ptr<FltFileInput> input, std::unique_ptr<FltModel> model,
                  FltVisualSetting& setting, double worldPerUnit);

    FltModel const& getModel() const { return *model; }

    /// The first node of a name in the order of the file; FltModelTree::none if there is none.
    Number find(std::string const& name) const { return numbers.find(name); }

    /// The bytes of the records from a node on to the last one below it.
    std::int64_t bytesOf(Number number) const;

    /// The visual of a node, with what stands below it and without those above it.
    FltVisualPart build(Number number) { return builder.buildAlone(number); }

private:
    std::unique_ptr<FltFileInput> input;
    std::unique_ptr<FltModel> model;
    FltVisualBuilder builder;
    FltNodeNumbers numbers;
};
