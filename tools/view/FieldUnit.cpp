#include "view/FieldUnit.h"

#include <QSet>
#include <QStringList>

namespace
{

/// The words that a name such as "switchInDistance" is made of, in small letters.
QStringList wordsOf(QString const& name)
{
    QString parted;
    for (QChar const letter : name)
        parted += letter.isUpper() ? QString(' ') + letter.toLower() : QString(letter);
    return parted.split(' ', Qt::SkipEmptyParts);
}

bool hasWord(QStringList const& words, QSet<QString> const& meant)
{
    return std::any_of(words.begin(), words.end(), [&](QString const& word) { return meant.contains(word); });
}

/// Whether it is along an axis: "XOrigin…", "Ycoordinate", but not "XMaxScale".
bool isAlongAxis(QString const& name, QStringList const& words)
{
    return name.size() > 1 && QString("XYZ").contains(name[0]) && !hasWord(words, {"scale"});
}

} // namespace

QString FieldUnit::of(QString const& field, QString const& lengthUnit)
{
    static QSet<QString> const lengths = {"x",
                                          "y",
                                          "z",
                                          "centerX",
                                          "centerY",
                                          "centerZ",
                                          "deltaX",
                                          "deltaY",
                                          "deltaZ",
                                          "originX",
                                          "originY",
                                          "originZ",
                                          "eyePointX",
                                          "eyePointY",
                                          "eyePointZ",
                                          "radius",
                                          "heitght",
                                          "transitionRange",
                                          "lowerLeftCorner",
                                          "upperRightCorner",
                                          "position",
                                          "center",
                                          "endPoint1",
                                          "endPoint2",
                                          "geometryOrigin",
                                          "clipRegion1",
                                          "clipRegion2",
                                          "clipRegion3",
                                          "clipRegion4",
                                          "nearClippingPlane",
                                          "farClippingPlane"};
    QStringList const words = wordsOf(field);
    if (hasWord(words, {"angle", "latitude", "longitude", "pitch", "roll", "yaw", "lobe"}))
        return QStringLiteral("°");
    if (hasWord(words, {"duration", "period", "delay"}))
        return QStringLiteral(" s");
    if (field == "earthMajorAxis" || field == "earthMinorAxis")
        return QStringLiteral(" m");
    bool const isLength =
        lengths.contains(field) || isAlongAxis(field, words) || hasWord(words, {"distance", "coordinate"});
    return isLength && !lengthUnit.isEmpty() ? " " + lengthUnit : QString();
}
