#pragma once

#include "parser/FltObserver.h"

class FltParser;

/// Turns the records of a parser into an @p Object.
template <class Object>
class FltToObject : public FltRecordObserver
{
public:
    virtual void setResult(Object* object) = 0;       ///< Sets the object to build.
    virtual Object* getResult() const = 0;            ///< The object as far as it is built.
    virtual void setFltParser(FltParser* parser) = 0; ///< Sets whose records are turned into it.
    virtual void deleteCurrentFltParser() = 0;        ///< Lets go of the parser.
};
