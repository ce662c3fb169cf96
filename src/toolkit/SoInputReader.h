#pragma once

#include "toolkit/SoRefCounter.h"
#include "toolkit/VelloReaderExport.h"

#include <Inventor/SoType.h>

class SoInput;
class SoSeparator;

/// The base of the classes that turn an input of a foreign format into a scene graph. Each is registered with
/// the toolkit as a type below "InputReader", so a host finds it by name, or by asking all of them with
/// createReaderFor().
class VELLOREADER_API SoInputReader : public SoRefCounter
{
public:
    ~SoInputReader() override;

    /// The type of the object's own class.
    virtual SoType getTypeId() const = 0;

    /// Whether the reader can convert what the input holds. A "no" is not reported anywhere.
    virtual bool canConvert(SoInput* in) = 0;

    /// Converts the input's current file.
    /// @return the root of the scene graph; may be null
    virtual SoSeparator* convert(SoInput* in) = 0;

    /// Registers the class with the toolkit, which is initialised first if the host hasn't done so. A second
    /// call does nothing.
    static void initClass();

    /// The type of this class, or SoType::badType() before initClass().
    static SoType getClassTypeId();

    /// Makes a reader of the first registered class that can convert the input.
    /// @return the reader, without a reference: ref() it and unref() it when done, or delete it; null if no
    ///         class can
    static SoInputReader* createReaderFor(SoInput* in);

protected:
    SoInputReader() = default;

private:
    static SoType m_classTypeId;
};
