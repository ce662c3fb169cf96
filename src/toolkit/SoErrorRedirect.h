#pragma once

#include <Inventor/errors/SoError.h>

/// Sends the toolkit's errors of one class to a function as long as this object lives. Several may stand in
/// one another.
template <class Error>
class SoErrorRedirect
{
public:
    SoErrorRedirect(SoErrorCB* function, void* data)
        : functionBefore(Error::getHandlerCallback()), dataBefore(Error::getHandlerData())
    {
        Error::setHandlerCallback(function, data);
    }
    ~SoErrorRedirect() { Error::setHandlerCallback(functionBefore, dataBefore); }

    SoErrorRedirect(SoErrorRedirect const&) = delete;
    SoErrorRedirect& operator=(SoErrorRedirect const&) = delete;

private:
    SoErrorCB* functionBefore;
    void* dataBefore;
};
