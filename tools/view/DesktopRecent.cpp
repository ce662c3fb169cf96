#include "view/DesktopRecent.h"

#include <QDateTime>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>

namespace
{

constexpr char bookmarkSpace[] = "http://www.freedesktop.org/standards/desktop-bookmarks";
constexpr char mimeSpace[] = "http://www.freedesktop.org/standards/shared-mime-info";
constexpr char owner[] = "http://freedesktop.org";

QDomElement addChild(QDomNode& parent, QString const& name)
{
    QDomElement child = parent.ownerDocument().createElement(name);
    return parent.appendChild(child).toElement();
}

/// @return false if there is a list that can't be read
bool read(QString const& path, QDomDocument& list)
{
    QFile file(path);
    if (file.exists())
        return file.open(QIODevice::ReadOnly) && list.setContent(&file) &&
               list.documentElement().tagName() == "xbel";
    list.appendChild(list.createProcessingInstruction("xml", "version=\"1.0\" encoding=\"UTF-8\""));
    QDomElement root = list.createElement("xbel");
    root.setAttribute("version", "1.0");
    root.setAttribute("xmlns:bookmark", bookmarkSpace);
    root.setAttribute("xmlns:mime", mimeSpace);
    list.appendChild(root);
    return true;
}

void remove(QDomElement& root, QString const& address)
{
    for (QDomElement mark = root.firstChildElement("bookmark"); !mark.isNull();) {
        QDomElement const next = mark.nextSiblingElement("bookmark");
        if (mark.attribute("href") == address)
            root.removeChild(mark);
        mark = next;
    }
}

void append(QDomElement& root, QString const& address)
{
    QString const now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    QDomElement mark = addChild(root, "bookmark");
    mark.setAttribute("href", address);
    for (char const* when : {"added", "modified", "visited"})
        mark.setAttribute(when, now);
    QDomElement info = addChild(mark, "info");
    QDomElement data = addChild(info, "metadata");
    data.setAttribute("owner", owner);
    addChild(data, "mime:mime-type").setAttribute("type", "model/x-openflight");
    QDomElement applications = addChild(data, "bookmark:applications");
    QDomElement application = addChild(applications, "bookmark:application");
    application.setAttribute("name", "fltview");
    application.setAttribute("exec", "'fltview %f'");
    application.setAttribute("modified", now);
    application.setAttribute("count", 1);
}

} // namespace

void DesktopRecent::add(QString const& path)
{
    constexpr int patience = 500; // milliseconds
    QString const folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    QString const file = folder + "/recently-used.xbel";
    if (!QDir().mkpath(folder))
        return;
    QLockFile lock(file + ".lock");
    QDomDocument list;
    if (!lock.tryLock(patience) || !read(file, list))
        return;
    QString const address =
        QString::fromUtf8(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toEncoded());
    QDomElement root = list.documentElement();
    remove(root, address);
    append(root, address);
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly))
        return;
    output.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    output.write(list.toByteArray(2));
    output.commit();
}
