#include "view/MainWindow.h"

#include "view/ControlPanel.h"
#include "view/FileWatch.h"
#include "view/LoadedScene.h"
#include "view/LodBar.h"
#include "view/MessagePanel.h"
#include "view/RecentFiles.h"
#include "view/RecordPanel.h"
#include "view/SceneTreeModel.h"
#include "view/SceneView.h"
#include "view/ShownText.h"
#include "view/TexturePanel.h"
#include "view/TimeMenu.h"

#include <Inventor/nodes/SoSeparator.h>
#include <QActionGroup>
#include <QApplication>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPainter>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <utility>

namespace
{

/// Of one record, in the panel.
constexpr std::size_t mostFaces = 100;

QString const fileFilter = QObject::tr("OpenFlight databases (*.flt *.FLT);;All files (*)");

/// The first local file of what is dragged.
QString draggedFile(QMimeData const& data)
{
    for (QUrl const& url : data.urls())
        if (url.isLocalFile())
            return url.toLocalFile();
    return {};
}

} // namespace

MainWindow::MainWindow(FltLoader loader)
    : loader(std::move(loader)), view(new SceneView), model(new SceneTreeModel(this)), tree(new QTreeView),
      search(new QLineEdit), records(new RecordPanel), controls(new ControlPanel), textures(new TexturePanel),
      messages(new MessagePanel), lodBar(new LodBar), statistics(ShownText::label()),
      recent(new RecentFiles(this)), fileWatch(new FileWatch(this))
{
    setWindowTitle("fltview");
    setObjectName("fltview");
    setAcceptDrops(true);
    resize(1280, 800);
    setCentralWidget(view);
    makeDocks();
    makeMenus();
    statusBar()->addPermanentWidget(statistics, 1);
    statistics->setObjectName("statistics");
    statistics->setText(tr("Open a database, or drop one here."));

    connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](QModelIndex const& index) { takeTreeSelection(index); });
    connect(tree, &QTreeView::doubleClicked, this, &MainWindow::frameSelection);
    connect(view, &SceneView::picked, this, [this](SoPath* path) { takePick(path, false); });
    connect(view, &SceneView::pickedTwice, this, [this](SoPath* path) { takePick(path, true); });
    connect(search, &QLineEdit::returnPressed, this, [this] { find(search->text()); });
    connect(controls, &ControlPanel::changed, this, &MainWindow::takeChange);
    connect(lodBar, &LodBar::changed, this, &MainWindow::takeChange);
    connect(model, &QAbstractItemModel::dataChanged, this, [this] {
        view->select(model->path(tree->currentIndex()));
        printBox();
    });
    connect(recent, &RecentFiles::chosen, this, &MainWindow::open);
    connect(fileWatch, &FileWatch::changed, this, &MainWindow::reload);
    connect(textures, &TexturePanel::found, this, [this](QString const& directory) {
        this->loader.texturePath.push_back(directory.toStdString());
        statistics->setText(QString::fromStdString(scene->describe()));
        print("statistics " + statistics->text());
    });
}

MainWindow::~MainWindow()
{
    controls->clear();
    lodBar->show(nullptr);
    textures->show(nullptr, {});
    view->setScene(nullptr, false);
    model->setScene(nullptr, nullptr, nullptr);
}

QDockWidget* MainWindow::addDock(QString const& title, QWidget* widget, Qt::DockWidgetArea area,
                                 char const* name)
{
    auto* const dock = new QDockWidget(title, this);
    dock->setObjectName(name);
    dock->setWidget(widget);
    addDockWidget(area, dock);
    return dock;
}

void MainWindow::makeDocks()
{
    tree->setModel(model);
    tree->setObjectName("tree");
    tree->setUniformRowHeights(true);
    tree->setExpandsOnDoubleClick(false);
    tree->header()->setStretchLastSection(true);
    tree->setColumnWidth(0, 190);
    search->setPlaceholderText(tr("Search by name (Ctrl+F), Enter for the next"));
    search->setClearButtonEnabled(true);
    search->setObjectName("search");
    auto* const left = new QWidget;
    auto* const layout = new QVBoxLayout(left);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(search);
    layout->addWidget(tree);
    left->setMinimumWidth(300);

    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    addDock(tr("Scene"), left, Qt::LeftDockWidgetArea, "sceneDock");
    recordDock = addDock(tr("Record"), records, Qt::RightDockWidgetArea, "recordDock");
    controlDock = addDock(tr("Controls"), controls, Qt::RightDockWidgetArea, "controlDock");
    textureDock = addDock(tr("Textures"), textures, Qt::BottomDockWidgetArea, "textureDock");
    messageDock = addDock(tr("Messages"), messages, Qt::BottomDockWidgetArea, "messageDock");
    tabifyDockWidget(textureDock, messageDock);
    textureDock->raise();
    resizeDocks({recordDock}, {360}, Qt::Horizontal);
    resizeDocks({recordDock, controlDock}, {430, 330}, Qt::Vertical);
    resizeDocks({textureDock}, {150}, Qt::Vertical);
}

void MainWindow::makeMenus()
{
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open…"), this, &MainWindow::askForFile, QKeySequence::Open);
    file->addMenu(recent);
    file->addAction(tr("&Reload"), this, &MainWindow::reload, QKeySequence(Qt::Key_F5));
    watchAction = file->addAction(tr("Reload on &changes"), this, &MainWindow::setWatching);
    watchAction->setCheckable(true);
    file->addAction(tr("&Save picture…"), this, &MainWindow::savePicture, QKeySequence::Save);
    file->addSeparator();
    file->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);

    QMenu* const edit = menuBar()->addMenu(tr("&Edit"));
    edit->addAction(
        tr("&Find…"), this,
        [this] {
            search->setFocus();
            search->selectAll();
        },
        QKeySequence::Find);
    edit->addAction(
        tr("Find &next"), this, [this] { find(search->text()); }, QKeySequence::FindNext);
    makeViewMenu();
    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About fltview"), this, &MainWindow::about);
}

void MainWindow::makeViewMenu()
{
    QMenu* const menu = menuBar()->addMenu(tr("&View"));
    QToolBar* const bar = addToolBar(tr("View"));
    bar->setObjectName("viewBar");
    auto const addSide = [&](QString const& name, SceneView::Side side, QKeySequence const& key) {
        bar->addAction(menu->addAction(
            name, this, [this, side] { view->lookFrom(side); }, key));
    };
    addSide(tr("&Corner"), SceneView::Side::corner, Qt::CTRL + Qt::Key_1);
    addSide(tr("&Front"), SceneView::Side::front, Qt::CTRL + Qt::Key_2);
    addSide(tr("&Right"), SceneView::Side::right, Qt::CTRL + Qt::Key_3);
    addSide(tr("&Top"), SceneView::Side::top, Qt::CTRL + Qt::Key_4);
    bar->addSeparator();
    bar->addAction(menu->addAction(tr("Frame &all"), view, &SceneView::frameAll, Qt::CTRL + Qt::Key_0));
    bar->addAction(menu->addAction(tr("Frame &selection"), this, &MainWindow::frameSelection,
                                   Qt::CTRL + Qt::Key_Period));
    menu->addSeparator();
    makeStyleMenu(*menu);
    auto* const times = new TimeMenu(loader.time, this);
    times->setEnabled(!loader.exact);
    connect(times, &TimeMenu::chosen, this, &MainWindow::setTime);
    menu->addMenu(times);
    playAction = menu->addAction(tr("P&lay flip-books"), this, &MainWindow::setPlaying, Qt::CTRL + Qt::Key_P);
    playAction->setCheckable(true);
    playAction->setChecked(true);
    playAction->setEnabled(false);
    menu->addSeparator();
    QAction* const normals =
        menu->addAction(tr("&Normals"), view, &SceneView::showNormals, Qt::CTRL + Qt::Key_N);
    normals->setCheckable(true);
    lightAction = menu->addAction(tr("&Light all faces"));
    lightAction->setShortcut(Qt::CTRL + Qt::Key_L);
    lightAction->setCheckable(true);
    connect(lightAction, &QAction::toggled, view, &SceneView::lightAll);
    bar->addSeparator();
    bar->addAction(normals);
    bar->addSeparator();
    bar->addWidget(lodBar);
    menu->addSeparator();
    for (QDockWidget* dock : findChildren<QDockWidget*>())
        menu->addAction(dock->toggleViewAction());
}

void MainWindow::makeStyleMenu(QMenu& menu)
{
    struct Style {
        QString name;
        SceneView::Style style;
        int key;
    };
    auto* const styles = new QActionGroup(this);
    for (Style const& style : {Style{tr("S&haded"), SceneView::Style::shaded, Qt::Key_5},
                               Style{tr("Shaded with &edges"), SceneView::Style::edges, Qt::Key_6},
                               Style{tr("&Wireframe"), SceneView::Style::lines, Qt::Key_7},
                               Style{tr("&Points"), SceneView::Style::points, Qt::Key_8},
                               Style{tr("Without te&xtures"), SceneView::Style::untextured, Qt::Key_9}}) {
        QAction* const action = menu.addAction(
            style.name, this, [this, which = style.style] { view->setStyle(which); }, Qt::CTRL + style.key);
        action->setCheckable(true);
        action->setChecked(style.style == SceneView::Style::shaded);
        styles->addAction(action);
    }
    menu.addSeparator();
}

bool MainWindow::open(QString const& path)
{
    return load(path, false);
}

bool MainWindow::reload()
{
    return scene != nullptr && load(QString::fromStdString(scene->path()), true);
}

bool MainWindow::load(QString const& path, bool isSameAgain)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    std::unique_ptr<LoadedScene> loaded;
    try {
        loaded = std::make_unique<LoadedScene>(loader, path.toStdString());
        lastProblem.clear();
    } catch (FltLoadError const& error) {
        lastProblem = QString::fromUtf8(error.what());
    }
    QApplication::restoreOverrideCursor();
    if (loaded == nullptr) {
        showProblem(lastProblem);
        return false;
    }
    take(std::move(loaded), isSameAgain);
    return true;
}

void MainWindow::take(std::unique_ptr<LoadedScene> loaded, bool isSameAgain)
{
    QString const selected = model->address(tree->currentIndex());
    controls->clear();
    records->show({}, nullptr);
    view->setScene(loaded->scene.root(), isSameAgain);
    model->setScene(loaded->scene.root(), &loaded->scene, &loaded->records);
    std::swap(scene, loaded); // the old one goes at the end, when nobody looks at it
    QString const path = QString::fromStdString(scene->path());
    print((isSameAgain ? "reloaded " : "loaded ") + ShownText::printable(path));
    textures->show(&scene->textures, QFileInfo(path).absolutePath());
    messages->show(scene->scene.messages());
    lodBar->show(&scene->levelsOfDetail);
    statistics->setText(QString::fromStdString(scene->describe()));
    setWindowTitle(ShownText::title(QFileInfo(path).fileName()) + " - fltview");
    tree->expandToDepth(1);
    if (isSameAgain && !selected.isEmpty())
        tree->setCurrentIndex(model->indexOfAddress(selected));
    if (!isSameAgain)
        recent->add(path);
    statusBar()->clearMessage();
    (scene->textures.missingCount() == 0 && !scene->scene.messages().empty() ? messageDock : textureDock)
        ->raise();
    watchFiles();
    playAction->setEnabled(!scene->scene.flipBooks().empty());
    setPlaying(playAction->isChecked());
}

void MainWindow::setPlaying(bool isOn)
{
    playAction->setChecked(isOn);
    if (scene != nullptr && scene->scene.play(isOn))
        print(isOn ? "flip-books play" : "flip-books stand still");
}

void MainWindow::setTime(FltLoader::TimeOfDay time)
{
    loader.time = time;
    reload();
}

void MainWindow::showProblem(QString const& text)
{
    statusBar()->showMessage(text);
    print("failed " + ShownText::printable(text));
}

void MainWindow::setLightingAll(bool isOn)
{
    lightAction->setChecked(isOn);
}

void MainWindow::setWatching(bool isOn)
{
    isWatching = isOn;
    watchAction->setChecked(isOn);
    watchFiles();
}

void MainWindow::watchFiles()
{
    QStringList files;
    if (isWatching && scene != nullptr) {
        files << QString::fromStdString(scene->path());
        for (FltReference const& reference : scene->scene.references())
            files << QString::fromStdString(reference.path);
        for (FltTexture const& texture : scene->scene.textures())
            files << QString::fromStdString(texture.path);
        files.removeAll(QString());
    }
    fileWatch->watch(files);
}

void MainWindow::askForFile()
{
    QString const directory = scene != nullptr ? QFileInfo(QString::fromStdString(scene->path())).path() : "";
    QString const path = QFileDialog::getOpenFileName(this, tr("Open a database"), directory, fileFilter);
    if (!path.isEmpty())
        open(path);
}

void MainWindow::savePicture()
{
    QString const path =
        QFileDialog::getSaveFileName(this, tr("Save the picture"), "", tr("Pictures (*.png *.jpg)"));
    if (!path.isEmpty() && !view->picture().save(path))
        ShownText::tell(this, QMessageBox::Warning, tr("The picture can't be written to %1.").arg(path));
}

bool MainWindow::find(QString const& text)
{
    QModelIndex const found = model->findNext(text, tree->currentIndex());
    if (!found.isValid()) {
        statusBar()->showMessage(tr("Nothing is named %1.").arg(text), 5000);
        return false;
    }
    statusBar()->clearMessage();
    tree->setCurrentIndex(found);
    tree->scrollTo(found, QAbstractItemView::PositionAtCenter);
    return true;
}

void MainWindow::takeTreeSelection(QModelIndex const& index)
{
    if (scene == nullptr)
        return;
    view->select(model->path(index));
    showRecords(index);
    controls->show(*scene, *model, index);
    printSelection(index);
    printBox();
    if (isPrintingWidgets)
        QTimer::singleShot(200, this, &MainWindow::printWidgets); // when they have their places
}

void MainWindow::showRecords(QModelIndex const& index)
{
    std::optional<FltRecordPlace> const place = model->record(index);
    std::vector<nlohmann::ordered_json> shown;
    QStringList notes;
    if (scene->isExact)
        notes << tr("The exact conversion doesn't know which record a node comes from.");
    if (place) {
        shown = scene->records.fieldsOf(*place);
        QString const file = QString::fromStdString(place->file);
        if (shown.empty())
            notes << tr("%1 can't be read any more.").arg(ShownText::title(file));
        else if (place->file != scene->path())
            notes << tr("In %1:").arg(ShownText::title(file));
        if (!place->isOwn)
            for (auto& face : scene->records.facesOf(*place, mostFaces))
                shown.push_back(std::move(face));
    }
    records->show(shown, model->node(index), notes.join('\n'));
}

void MainWindow::takeChange()
{
    view->refreshSelection();
    printBox();
}

void MainWindow::print(QString const& line) const
{
    if (!isPrinting)
        return;
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

void MainWindow::printSelection(QModelIndex const& index) const
{
    std::optional<FltRecordPlace> const record = model->record(index);
    QString const kind = index.sibling(index.row(), SceneTreeModel::kindColumn).data().toString();
    QString place = record ? "\t" + QString::number(record->offset) : QString();
    if (record && record->file != scene->path())
        place += "\t" + ShownText::printable(QString::fromStdString(record->file));
    print("selected " + ShownText::printable(model->address(index)) + "\t" + kind + place);
}

void MainWindow::printBox() const
{
    SbBox3f const box = view->selectionBox();
    if (box.isEmpty())
        return;
    SbVec3f const& low = box.getMin();
    SbVec3f const& high = box.getMax();
    print(QString("box %1 %2 %3  %4 %5 %6")
              .arg(low[0])
              .arg(low[1])
              .arg(low[2])
              .arg(high[0])
              .arg(high[1])
              .arg(high[2]));
}

void MainWindow::printWidgets() const
{
    for (QWidget const* widget : findChildren<QWidget*>()) {
        if (widget->objectName().isEmpty() || !widget->isVisible())
            continue;
        QPoint const corner = widget->mapToGlobal(QPoint(0, 0));
        print(QString("widget %1\t%2 %3 %4 %5")
                  .arg(widget->objectName())
                  .arg(corner.x())
                  .arg(corner.y())
                  .arg(widget->width())
                  .arg(widget->height()));
    }
    print("widgets end");
}

void MainWindow::takePick(SoPath* path, bool frames)
{
    if (path == nullptr)
        return;
    QModelIndex const index = model->indexOf(*path);
    tree->setCurrentIndex(index);
    tree->scrollTo(index);
    if (frames)
        frameSelection();
}

void MainWindow::frameSelection()
{
    SoPath* const path = model->path(tree->currentIndex());
    if (path == nullptr)
        return;
    path->ref();
    view->frame(path);
    path->unref();
}

QImage MainWindow::screenshot()
{
    QImage image = grab().toImage();
    QImage picture = view->picture();
    picture.setDevicePixelRatio(view->devicePixelRatioF());
    QPainter(&image).drawImage(view->pictureOrigin(), picture);
    return image;
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!draggedFile(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    QString const path = draggedFile(*event->mimeData());
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    open(path);
}

void MainWindow::about()
{
    QMessageBox::about(
        this, tr("About fltview"),
        tr("fltview %1\n\nShows OpenFlight scene databases: the scene, its records and textures.")
            .arg(QApplication::applicationVersion()));
}
