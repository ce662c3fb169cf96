#include "view/SiblingFiles.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>

QString SiblingFiles::beside(QString const& path, int step)
{
    QFileInfo const info(path);
    QStringList names = info.dir().entryList({"*.flt"}, QDir::Files);
    if (!names.contains(info.fileName()))
        names << info.fileName();               // one of another ending, or one that is gone
    QCollator order{QLocale(QLocale::English)}; // that of the "C" locale knows no numbers
    order.setNumericMode(true);
    std::sort(names.begin(), names.end(),
              [&](QString const& a, QString const& b) { return order.compare(a, b) < 0; });
    int const place = names.indexOf(info.fileName()) + step;
    return place >= 0 && place < names.size() ? info.dir().filePath(names[place]) : QString();
}
