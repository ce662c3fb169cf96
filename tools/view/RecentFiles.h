#pragma once

#include <QMenu>

/// The files that were opened last, the latest first, kept from one start to the next.
class RecentFiles : public QMenu
{
    Q_OBJECT

public:
    explicit RecentFiles(QWidget* parent = nullptr);

    /// Puts a file at the top.
    void add(QString const& path);

signals:
    void chosen(QString const& path);

private:
    void fill();
};
