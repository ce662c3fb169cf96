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
    void renew();
    QString state() const;

    QFileSystemWatcher watcher;
    QTimer quiet;
    QStringList files;
    QString knownState; ///< Of the files, when they were first watched or last reported.
};
