#pragma once

#include "parser/FltObserver.h"

class FltParser;

/// Turns the records of a parser into an @p Object.
template <class Object>
class FltToObject : public FltRecordObserver
{
public:
    virtual void setResult(Object* object) = 0;
    virtual Object* getResult() const = 0;
    virtual void setFltParser(FltParser* parser) = 0;
    virtual void deleteCurrentFltParser() = 0;
};
