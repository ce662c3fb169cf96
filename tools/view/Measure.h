#pragma once

#include <Inventor/SbVec3f.h>
#include <QString>
#include <optional>

class SoSeparator;

/// The distance between two places that are clicked one after the other, with a line between them.
class Measure
{
public:
    /// @param lines gets the line; it is referenced
    explicit Measure(SoSeparator& lines);
    ~Measure();
    Measure(Measure const&) = delete;
    Measure& operator=(Measure const&) = delete;

    /// Begins with a place, ends with the next one, and begins anew with the one after that.
    /// @return what there is to say: "10.5 m from …" or that a second place is wanted
    QString take(SbVec3f const& place, QString const& unit);

    /// Forgets the places, and removes the line.
    void clear();

private:
    SoSeparator& lines;
    std::optional<SbVec3f> begin;
};
