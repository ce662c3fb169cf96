#include "view/ShownCommand.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <cmath>

namespace
{

constexpr double usualFieldOfView = 45;

/// As a shell reads it as one word.
QString quoted(QString const& word)
{
    static QRegularExpression const plain("^[-\\w./=,+:@%]+$");
    if (plain.match(word).hasMatch())
        return word;
    return "'" + QString(word).replace("'", "'\\''") + "'";
}

QString placeOf(SbVec3d const& place)
{
    constexpr int digits = 12;
    QStringList numbers;
    for (int axis = 0; axis < 3; ++axis)
        numbers << QString::number(place[axis], 'g', digits);
    return numbers.join(',');
}

double slope(double degrees)
{
    return std::tan(degrees / 2 * M_PI / 180);
}

} // namespace

QString ShownCommand::text() const
{
    constexpr double sameZoom = 1e-4;
    QStringList words{"fltshot", "--size", QString("%1x%2").arg(size.width()).arg(size.height()),
                      "--eye=" + placeOf(eye), "--look-at=" + placeOf(lookAt)};
    double const zoom = slope(usualFieldOfView) / slope(fieldOfView);
    if (std::abs(zoom - 1) > sameZoom)
        words << "--zoom" << QString::number(zoom);
    words << "--background" << background.name();
    if (lightsAll)
        words << "--light";
    if (isWireframe)
        words << "--wireframe";
    words << loaderWords << "--output=" + QFileInfo(database).completeBaseName() + ".png"
          << QFileInfo(database).absoluteFilePath();
    for (QString& word : words)
        word = quoted(word);
    return words.join(' ');
}
