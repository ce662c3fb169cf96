#pragma once

struct FltFaceInput;

/// Gets the faces that are read from a database.
class FltFaceReceiver
{
public:
    virtual ~FltFaceReceiver() = default;

    virtual void add(FltFaceInput const& input) = 0;
};
