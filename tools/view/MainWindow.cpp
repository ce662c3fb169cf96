#include "view/MainWindow.h"

#include "view/Banner.h"
#include "view/CheckSheet.h"
#include "view/ControlPanel.h"
#include "view/FileWatch.h"
#include "view/HelpSheet.h"
#include "view/ListColumns.h"
#include "view/LoadProgress.h"
#include "view/LoadedScene.h"
#include "view/LoaderWords.h"
#include "view/LodBar.h"
#include "view/Measure.h"
#include "view/MessagePanel.h"
#include "view/ModelExport.h"
#include "view/ModelSaver.h"
#include "view/PlaceReadout.h"
#include "view/RecentFiles.h"
#include "view/RecordPanel.h"
#include "view/SceneTreeModel.h"
#include "view/SceneView.h"
#include "view/SectionBar.h"
#include "view/SectionPlane.h"
#include "view/SelectionStatistics.h"
#include "view/ShownCommand.h"
#include "view/ShownText.h"
#include "view/SiblingFiles.h"
#include "view/TexturePanel.h"
#include "view/TreeOpening.h"
#include "view/ViewFooter.h"
#include "view/ViewKeys.h"
#include "view/ViewMenu.h"
#include "view/WindowMemory.h"

#include <Inventor/nodes/SoSeparator.h>
#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPainter>
#include <QProcess>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace
{

/// Of one record, in the panel.
constexpr std::size_t mostFaces = 100;

constexpr char darkKey[] = "darkStyle"; ///< In settings.

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
    : loader(std::move(loader)), printer(*this), view(new SceneView), footer(new ViewFooter(*view)),
      section(std::make_unique<SectionPlane>(view->content())), sectionBar(new SectionBar(*section)),
      measure(std::make_unique<Measure>(view->marks())), banner(new Banner), progress(new LoadProgress),
      saver(std::make_unique<ModelSaver>(*this, *progress)), model(new SceneTreeModel(this)),
      tree(new QTreeView), search(new QLineEdit), records(new RecordPanel), controls(new ControlPanel),
      textures(new TexturePanel), messages(new MessagePanel), lodBar(new LodBar),
      statistics(ShownText::label()), recent(new RecentFiles(this)), fileWatch(new FileWatch(this))
{
    setWindowTitle("fltview");
    setObjectName("fltview");
    setAcceptDrops(true);
    resize(1280, 800);
    setCentralWidget(makeCentre());
    makeDocks();
    makeMenus();
    statusBar()->addPermanentWidget(statistics, 1);
    statistics->setObjectName("statistics");
    statistics->setText(tr("Open a database, or drop one here."));
    connectParts();
}

QWidget* MainWindow::makeCentre()
{
    auto* const centre = new QWidget;
    auto* const layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(banner);
    layout->addWidget(progress);
    layout->addWidget(view, 1);
    layout->addWidget(footer);
    return centre;
}

void MainWindow::connectParts()
{
    connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](QModelIndex const& index) { takeTreeSelection(index); });
    connect(tree, &QTreeView::doubleClicked, this, &MainWindow::frameSelection);
    connectView();
    connect(search, &QLineEdit::returnPressed, this, [this] { find(search->text()); });
    connect(controls, &ControlPanel::changed, this, &MainWindow::takeChange);
    connect(lodBar, &LodBar::changed, this, &MainWindow::takeChange);
    connect(model, &QAbstractItemModel::dataChanged, this, [this] {
        view->select(model->path(tree->currentIndex()));
        printer.printBox(view->selectionBox());
    });
    connect(recent, &RecentFiles::chosen, this, &MainWindow::open);
    connect(fileWatch, &FileWatch::changed, this, &MainWindow::reload);
    connect(textures, &TexturePanel::found, this, [this](QString const& directory) {
        this->loader.texturePath.push_back(directory.toStdString());
        statistics->setText(QString::fromStdString(scene->describe()));
        printer.print("statistics " + statistics->text());
    });
    connect(banner, &Banner::messagesWanted, this, [this] {
        messageDock->show();
        messageDock->raise();
    });
    connect(banner, &Banner::checkWanted, this, &MainWindow::check);
    connect(progress, &LoadProgress::shown, this, [this] {
        printer.print("loading " + ShownText::printable(path));
        printer.printWidgetsSoon();
    });
}

void MainWindow::connectView()
{
    connect(view, &SceneView::picked, this, [this](SoPath* picked) { takePick(picked, false); });
    connect(view, &SceneView::pickedTwice, this, [this](SoPath* picked) { takePick(picked, true); });
    connect(view, &SceneView::pointed, this, &MainWindow::takePlace);
    connect(viewMenu, &ViewMenu::showOnlyWanted, this, [this] { model->showOnly(tree->currentIndex()); });
    connect(viewMenu, &ViewMenu::showAllWanted, this, [this] { model->showAll(); });
    connect(viewMenu->dark(), &QAction::toggled, this, &MainWindow::setDark);
    viewMenu->dark()->setChecked(QSettings().value(darkKey).toBool());
    connect(viewMenu, &ViewMenu::measuringChanged, this, [this](bool isOn) {
        isMeasuring = isOn;
        measure->clear();
        footer->say(isOn ? tr("Click the first place to measure from.") : QString());
    });
}

void MainWindow::takePlace(SbVec3f const& place)
{
    if (places == nullptr)
        return;
    QString const text = isMeasuring ? measure->take(place, places->unitName()) : places->textOf(place);
    footer->say(text);
    printer.print("place " + text);
}

MainWindow::~MainWindow()
{
    clear();
}

/// Shows nothing.
void MainWindow::clear()
{
    controls->clear();
    records->show({}, nullptr);
    lodBar->show(nullptr);
    textures->show(nullptr, {});
    messages->show({});
    view->setScene(nullptr, false);
    model->setScene(nullptr, nullptr, nullptr);
    viewMenu->play()->setEnabled(false);
    statistics->clear();
    measure->clear();
    places.reset();
    selectionStatistics.reset();
    footer->setUnit({});
    scene.reset();
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
    tree->setTextElideMode(Qt::ElideMiddle); // names begin alike, and differ at their ends
    tree->setAccessibleName(tr("The scene"));
    ListColumns::fit(*tree, SceneTreeModel::nameColumn);
    search->setAccessibleName(tr("Search by name"));
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

void MainWindow::makeFileMenu()
{
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    auto const add = [&](QString const& text, std::string_view command, auto slot) {
        QAction* const action = file->addAction(text, this, slot);
        ViewKeys::assign(*action, command);
    };
    add(tr("&Open…"), "open", &MainWindow::askForFile);
    file->addMenu(recent);
    add(tr("&Next in the folder"), "next", [this] { openBeside(1); });
    add(tr("Pre&vious in the folder"), "previous", [this] { openBeside(-1); });
    add(tr("&Reload"), "reload", &MainWindow::reload);
    watchAction = file->addAction(tr("Reload on &changes"), this, &MainWindow::setWatching);
    watchAction->setCheckable(true);
    add(tr("Chec&k this file"), "check", &MainWindow::check);
    file->addSeparator();
    add(tr("Save &model as…"), "saveModel", [this] { saveModel(); });
    add(tr("Save se&lection as…"), "saveSelection", &MainWindow::saveSelection);
    add(tr("&Save picture…"), "savePicture", &MainWindow::savePicture);
    add(tr("Copy &picture"), "copyPicture", &MainWindow::copyPicture);
    add(tr("Copy &as command"), "copyCommand", &MainWindow::copyCommand);
    file->addSeparator();
    add(tr("New &window"), "newWindow", &MainWindow::openWindow);
    add(tr("&Quit"), "quit", &QWidget::close);
}

void MainWindow::makeMenus()
{
    makeFileMenu();
    QMenu* const edit = menuBar()->addMenu(tr("&Edit"));
    QAction* const findFirst = edit->addAction(tr("&Find…"), this, [this] {
        search->setFocus();
        search->selectAll();
    });
    ViewKeys::assign(*findFirst, "find");
    QAction* const findNext = edit->addAction(tr("Find &next"), this, [this] { find(search->text()); });
    ViewKeys::assign(*findNext, "findNext");

    QToolBar* const bar = addToolBar(tr("View"));
    bar->setObjectName("viewBar");
    viewMenu = new ViewMenu(*view, *bar, loader, this);
    menuBar()->addMenu(viewMenu);
    connect(viewMenu, &ViewMenu::frameSelectionWanted, this, &MainWindow::frameSelection);
    connect(viewMenu, &ViewMenu::timeChosen, this, &MainWindow::setTime);
    connect(viewMenu->play(), &QAction::triggered, this, &MainWindow::setPlaying);
    bar->addSeparator();
    bar->addWidget(lodBar);
    QToolBar* const sectionTools = addToolBar(tr("Section"));
    sectionTools->setObjectName("sectionTools");
    sectionTools->addWidget(sectionBar);
    viewMenu->addSeparator();
    viewMenu->addAction(sectionTools->toggleViewAction());
    for (QDockWidget* dock : findChildren<QDockWidget*>())
        viewMenu->addAction(dock->toggleViewAction());

    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    QAction* const keys = help->addAction(tr("&Keys and mouse"), this, [this] {
        auto* const sheet = new HelpSheet(this);
        sheet->setAttribute(Qt::WA_DeleteOnClose);
        sheet->show();
        printer.printWidgetsSoon();
    });
    ViewKeys::assign(*keys, "help");
    help->addAction(tr("&About fltview"), this, &MainWindow::about);
}

bool MainWindow::open(QString const& newPath)
{
    return load(newPath, false);
}

bool MainWindow::reload()
{
    return !path.isEmpty() && load(path, scene != nullptr);
}

bool MainWindow::load(QString newPath, bool isSameAgain)
{
    if (progress->isLoading())
        return false;
    QString const former = std::exchange(path, std::move(newPath));
    std::unique_ptr<LoadedScene> loaded;
    lastProblem.clear();
    try {
        LoadProgress::Run const run(*progress, path);
        FltLoader telling = loader;
        telling.progress = [this](std::string const& file, std::uint64_t done, std::uint64_t inAll) {
            return progress->goOn(file, done, inAll);
        };
        loaded = std::make_unique<LoadedScene>(telling, path.toStdString());
    } catch (FltLoadError const& error) {
        lastProblem = QString::fromUtf8(error.what());
        if (error.kind() != FltLoadError::Kind::cancelled) {
            takeFailure(error, isSameAgain);
            return false;
        }
        statusBar()->showMessage(lastProblem);
        printer.print("cancelled " + ShownText::printable(path));
        path = former;
    }
    if (progress->isCloseWanted())
        QTimer::singleShot(0, this, &QWidget::close);
    if (loaded == nullptr)
        return false;
    take(std::move(loaded), isSameAgain);
    return true;
}

void MainWindow::takeFailure(FltLoadError const& error, bool isSameAgain)
{
    if (!isSameAgain) {
        clear();
        setWindowTitle(ShownText::title(QFileInfo(path).fileName()) + tr(" (not loaded)") + " - fltview");
    }
    std::vector<FltMessage> list = {{FltMessage::Level::error, error.what(), error.file(), error.offset()}};
    if (scene != nullptr)
        list.insert(list.end(), scene->scene.messages().begin(), scene->scene.messages().end());
    messages->show(std::move(list));
    banner->tell(
        lastProblem,
        isSameAgain
            ? tr("Still shown: %1 as it was loaded before.").arg(ShownText::title(QFileInfo(path).fileName()))
            : QString());
    watchFiles();
    printer.print("failed " + ShownText::printable(lastProblem));
    printer.printWidgetsSoon();
}

void MainWindow::check()
{
    if (path.isEmpty())
        return;
    auto* const sheet = new CheckSheet(path, this);
    connect(sheet, &CheckSheet::finished, this,
            [this](QString const& report) { printer.print("checked " + ShownText::printable(report)); });
    sheet->show();
}

void MainWindow::take(std::unique_ptr<LoadedScene> loaded, bool isSameAgain)
{
    QString const selected = model->address(tree->currentIndex());
    controls->clear();
    records->show({}, nullptr);
    view->setScene(loaded->scene.root(), isSameAgain);
    model->setScene(loaded->scene.root(), &loaded->scene, &loaded->records);
    std::swap(scene, loaded); // the old one goes at the end, when nobody looks at it
    banner->hide();
    measure->clear();
    places = std::make_unique<PlaceReadout>(scene->scene.info(), loader.units == FltLoader::Units::metres);
    selectionStatistics = std::make_unique<SelectionStatistics>(scene->scene);
    footer->setUnit(places->unitName());
    section->setBox(view->box());
    sectionBar->apply();
    printer.print((isSameAgain ? "reloaded " : "loaded ") + ShownText::printable(path));
    printer.print("size " + footer->sizeText());
    textures->show(&scene->textures, QFileInfo(path).absolutePath());
    messages->show(scene->scene.messages());
    lodBar->show(&scene->levelsOfDetail);
    statistics->setText(QString::fromStdString(scene->describe()));
    setWindowTitle(ShownText::title(QFileInfo(path).fileName()) + " - fltview");
    TreeOpening::open(*tree);
    if (isSameAgain && !selected.isEmpty())
        tree->setCurrentIndex(model->indexOfAddress(selected));
    if (!isSameAgain && isListingRecent)
        recent->add(path);
    statusBar()->clearMessage();
    (scene->textures.missingCount() == 0 && !scene->scene.messages().empty() ? messageDock : textureDock)
        ->raise();
    watchFiles();
    viewMenu->play()->setEnabled(!scene->scene.flipBooks().empty());
    setPlaying(viewMenu->play()->isChecked());
}

void MainWindow::setPlaying(bool isOn)
{
    viewMenu->play()->setChecked(isOn);
    if (scene != nullptr && scene->scene.play(isOn))
        printer.print(isOn ? "flip-books play" : "flip-books stand still");
}

void MainWindow::setTime(FltLoader::TimeOfDay time)
{
    loader.time = time;
    reload();
}

void MainWindow::setLightingAll(bool isOn)
{
    viewMenu->lightAll()->setChecked(isOn);
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
    if (isWatching)
        files << path;
    if (isWatching && scene != nullptr) {
        for (FltReference const& reference : scene->scene.references())
            files << QString::fromStdString(reference.path);
        for (FltTexture const& texture : scene->scene.textures())
            files << QString::fromStdString(texture.path);
    }
    files.removeAll(QString());
    fileWatch->watch(files);
}

void MainWindow::askForFile()
{
    QString const directory = path.isEmpty() ? QString() : QFileInfo(path).path();
    QString const chosen = QFileDialog::getOpenFileName(this, tr("Open a database"), directory, fileFilter);
    if (!chosen.isEmpty())
        open(chosen);
}

void MainWindow::savePicture()
{
    QString const file =
        QFileDialog::getSaveFileName(this, tr("Save the picture"), "", tr("Pictures (*.png *.jpg)"));
    if (!file.isEmpty() && !view->picture().save(file))
        ShownText::tell(this, QMessageBox::Warning, tr("The picture can't be written to %1.").arg(file));
}

void MainWindow::openBeside(int step)
{
    QString const other = SiblingFiles::beside(path, step);
    if (!other.isEmpty())
        open(other);
    else if (!path.isEmpty())
        tell(tr("This is the %1 database of its folder.").arg(step > 0 ? tr("last") : tr("first")));
}

void MainWindow::saveModel()
{
    saveModel(std::nullopt, QFileInfo(path).completeBaseName());
}

void MainWindow::saveSelection()
{
    QModelIndex selected = tree->currentIndex();
    std::optional<FltRecordPlace> place = model->record(selected);
    while (place && !place->isOwn) {
        selected = selected.parent();
        place = model->record(selected);
    }
    if (place)
        saveModel(place, selected.sibling(selected.row(), SceneTreeModel::nameColumn).data().toString());
    else
        tell(tr("Nothing is selected that stands for a record."));
}

void MainWindow::saveModel(std::optional<FltRecordPlace> const& part, QString const& name)
{
    if (scene == nullptr)
        return;
    QString const said = saver->save({loader, scene->path(), part}, name);
    if (!said.isEmpty())
        tell(said);
}

void MainWindow::copyPicture()
{
    QImage const picture = view->picture();
    QApplication::clipboard()->setImage(picture);
    tell(tr("Copied the picture, %1 by %2 pixels.").arg(picture.width()).arg(picture.height()));
}

void MainWindow::copyCommand()
{
    if (scene == nullptr)
        return;
    SceneView::Look const look = view->look();
    double const* const offset = scene->scene.info().offset;
    auto const stored = [offset](SbVec3f const& place) { return SbVec3d(place) + SbVec3d(offset); };
    ShownCommand command;
    command.database = path;
    command.loaderWords = LoaderWords::of(loader);
    command.size = look.size;
    command.eye = stored(look.eye);
    command.lookAt = stored(look.target);
    command.fieldOfView = look.fieldOfView;
    command.background = look.background;
    command.lightsAll = viewMenu->lightAll()->isChecked();
    command.isWireframe = look.style == SceneView::Style::lines;
    QApplication::clipboard()->setText(command.text());
    tell(tr("Copied the command line: %1").arg(command.text()));
}

/// Shows the same database again, from elsewhere or with other settings.
void MainWindow::openWindow()
{
    QStringList words = LoaderWords::of(loader);
    if (!path.isEmpty())
        words << "--" << QFileInfo(path).absoluteFilePath();
    if (!QProcess::startDetached(QApplication::applicationFilePath(), words))
        tell(tr("%1 can't be started.").arg(QApplication::applicationFilePath()));
}

/// Says in the line at the bottom what was done.
void MainWindow::tell(QString const& text)
{
    constexpr int milliseconds = 15000;
    statusBar()->showMessage(ShownText::printable(text), milliseconds);
    printer.print("told " + ShownText::printable(text));
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
    if (SoNode* const node = model->node(index); node != nullptr) {
        QString const numbers =
            QString::fromStdString(selectionStatistics->of(*node, model->record(index)).describe());
        records->setSummary(numbers);
        printer.print("selection " + numbers);
    }
    printer.printSelection(*model, index, scene->path());
    printer.printBox(view->selectionBox());
    printer.printWidgetsSoon();
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
    bool const isOfDatabase = place && place->file == scene->path();
    QString const unit = isOfDatabase ? FltDatabaseInfo::nameOf(scene->scene.info().unit) : tr("units");
    records->show(shown, model->node(index), notes.join('\n'), unit);
}

void MainWindow::takeChange()
{
    view->refreshSelection();
    printer.printBox(view->selectionBox());
}

void MainWindow::takePick(SoPath* picked, bool frames)
{
    if (picked == nullptr)
        return;
    QModelIndex const index = model->indexOf(*picked);
    tree->setCurrentIndex(index);
    tree->scrollTo(index);
    if (frames)
        frameSelection();
}

void MainWindow::frameSelection()
{
    SoPath* const selected = model->path(tree->currentIndex());
    if (selected == nullptr)
        return;
    selected->ref();
    view->frame(selected);
    selected->unref();
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
    QString const file = draggedFile(*event->mimeData());
    if (file.isEmpty())
        return;
    event->acceptProposedAction();
    open(file);
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    printer.printWidgetsSoon();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (isRemembering)
        WindowMemory::save(*this);
    QMainWindow::closeEvent(event);
}

void MainWindow::rememberPlaces()
{
    isRemembering = true;
    WindowMemory::restore(*this);
}

void MainWindow::setDark(bool isDark)
{
    style.setDark(isDark);
    QSettings().setValue(darkKey, isDark);
}

void MainWindow::about()
{
    QMessageBox::about(
        this, tr("About fltview"),
        tr("fltview %1\n\nShows OpenFlight scene databases: the scene, its records and textures.")
            .arg(QApplication::applicationVersion()));
}
