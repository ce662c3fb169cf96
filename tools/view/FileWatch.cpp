#include "view/FileWatch.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSet>

namespace
{

constexpr int quietMilliseconds = 300; ///< A writer may take some pieces.

} // namespace

FileWatch::FileWatch(QObject* parent) : QObject(parent)
{
    quiet.setSingleShot(true);
    quiet.setInterval(quietMilliseconds);
    connect(&watcher, &QFileSystemWatcher::fileChanged, this, &FileWatch::takeChange);
    connect(&watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        // A file that was away has come back.
        for (QString const& file : files)
            if (!watcher.files().contains(file) && QFileInfo::exists(file) && watcher.addPath(file))
                takeChange();
    });
    connect(&quiet, &QTimer::timeout, this, [this] {
        knownState = state();
        emit changed();
        renew();
    });
}

void FileWatch::watch(QStringList const& newFiles)
{
    if (newFiles != files) {
        files = newFiles;
        knownState = state();
    }
    renew();
}

void FileWatch::renew()
{
    QStringList const before = watcher.files() + watcher.directories();
    if (!before.isEmpty())
        watcher.removePaths(before);
    QSet<QString> paths;
    for (QString const& file : files) {
        paths.insert(QFileInfo(file).absolutePath());
        if (QFileInfo::exists(file))
            paths.insert(file);
    }
    if (!paths.isEmpty())
        watcher.addPaths(paths.values());
    // A change between two watches would go unnoticed.
    if (state() != knownState)
        takeChange();
}

QString FileWatch::state() const
{
    QString text;
    for (QString const& file : files) {
        QFileInfo const info(file);
        text += QString("%1 %2;").arg(info.lastModified().toMSecsSinceEpoch()).arg(info.size());
    }
    return text;
}

void FileWatch::takeChange()
{
    quiet.start();
}
