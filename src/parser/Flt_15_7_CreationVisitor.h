#pragma once

#include "parser/FltCreationVisitor.h"

#include <utility>

/// The factory of all record classes of the format up to 15.8: looks the class up by opcode, builds the
/// object, gives it the revision if its layout depends on it, decodes it and dumps it to std::cout.
class Flt_15_7_CreationVisitor : public FltCreationVisitor
{
public:
    void visitFltRawData(FltRecord*& result, FltRawData const* raw) override;
    std::size_t getReach(int opcode, unsigned int length) const override;

    /// Makes the factory forget the record made last, before the records of a parse are destroyed.
    static void forgetPrevious();

    /// Begins without such a record for as long as this object lives, for a parse in the middle of another
    /// one.
    class Session
    {
    public:
        Session() : before(std::exchange(previous, nullptr)) {}
        ~Session() { previous = before; }
        Session(Session const&) = delete;
        Session& operator=(Session const&) = delete;

    private:
        FltRecord* before;
    };

private:
    /// The record made last, of any file. Two sound palettes in a row share one object.
    static FltRecord* previous;
};
