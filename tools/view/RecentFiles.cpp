#include "view/RecentFiles.h"

#include "view/DesktopRecent.h"

#include <QFileInfo>
#include <QSettings>

namespace
{

constexpr int most = 10;
constexpr char key[] = "recentFiles";

} // namespace

RecentFiles::RecentFiles(QWidget* parent) : QMenu(tr("Open &recent"), parent)
{
    connect(this, &QMenu::aboutToShow, this, &RecentFiles::fill);
    fill();
}

void RecentFiles::add(QString const& path)
{
    QSettings settings;
    QStringList files = settings.value(key).toStringList();
    QString const whole = QFileInfo(path).absoluteFilePath();
    files.removeAll(whole);
    files.prepend(whole);
    settings.setValue(key, QStringList(files.mid(0, most)));
    fill();
    DesktopRecent::add(whole);
}

void RecentFiles::fill()
{
    clear();
    for (QString const& file : QSettings().value(key).toStringList())
        connect(addAction(QString(file).replace("&", "&&")), &QAction::triggered, this,
                [this, file] { emit chosen(file); });
    setEnabled(!isEmpty());
}
