#pragma once

#include <QFileSystemWatcher>
#include <QTimer>

/// Notices when one of some files changes, also if a new one takes its place, and says so once when it has
/// been quiet for a moment.
class FileWatch : public QObject
{
    Q_OBJECT

public:
    explicit FileWatch(QObject* parent = nullptr);

    /// Watches these files and no others.
    void watch(QStringList const& files);

signals:
    void changed();

private:
    void takeChange();

    QFileSystemWatcher watcher;
    QTimer quiet;
    QStringList files;
};
