#pragma once

#include "parser/FltCreationVisitor.h"

/// The factory of all record classes of the format up to 15.8: looks the class up by opcode, builds the
/// object, gives it the revision if its layout depends on it, decodes it and dumps it to std::cout.
class Flt_15_7_CreationVisitor : public FltCreationVisitor
{
public:
    void visitFltRawData(FltRecord*& result, FltRawData const* raw) override;
    std::size_t getReach(int opcode, unsigned int length) const override;

    /// The records of a parse are about to go: the factory must not look back at them.
    static void forgetPrevious();

private:
    static FltRecord*
        previous; ///< The record made last, of whatever file. Two sound palettes in a row share one.
};
