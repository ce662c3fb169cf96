#pragma once

#include "view/EventPrinter.h"
#include "view/WindowStyle.h"

#include "loader/FltLoader.h"

#include <QMainWindow>
#include <QModelIndex>
#include <memory>

class Banner;
class ControlPanel;
class FileWatch;
class LoadProgress;
class LoadedScene;
class LodBar;
class Measure;
class MessagePanel;
class ModelSaver;
class PlaceReadout;
class QLabel;
class QLineEdit;
class QTreeView;
class RecentFiles;
class RecordPanel;
class SceneTreeModel;
class SectionBar;
class SectionPlane;
class SelectionStatistics;
class SceneView;
class SoPath;
class TexturePanel;
class ViewFooter;
class ViewMenu;

/// The window: the tree beside the picture, the selected record, controls, textures and messages around it.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(FltLoader loader);
    ~MainWindow() override;

    /// Shows a database instead of the one before. If that can't be loaded, the window is empty and a banner
    /// says why; if somebody cancels the load, the one before stays. @return whether it was loaded
    bool open(QString const& path);

    /// Loads the database again and keeps the camera, the selection and what was found. If that can't be
    /// done, what was loaded before stays, and the banner says so.
    bool reload();

    /// Reloads whenever a file of the database changes.
    void setWatching(bool isOn);

    /// Lights all faces, also those that the database doesn't have lit.
    void setLightingAll(bool isOn);

    /// Selects the next node whose name holds a text. @return whether there is one
    bool find(QString const& text);

    /// Prints a line on standard output for whatever gets loaded or selected, and for the box around the
    /// selection when it changes.
    void setPrinting(bool isOn) { printer.setOn(isOn); }

    /// Prints the places of the widgets on the screen too, for tests that click.
    void setPrintingWidgets(bool isOn) { printer.setWithWidgets(isOn); }

    /// Has size and docks of the last time, and keeps those that it is going to have.
    void rememberPlaces();

    /// Whether what is opened goes into the lists of recent files. It does at first.
    void setListingRecent(bool isOn) { isListingRecent = isOn; }

    /// Has flip-books play, or stand still.
    void setPlaying(bool isOn);

    /// Why the latest database couldn't be loaded.
    QString const& problem() const { return lastProblem; }

    /// The whole window with what the picture shows.
    QImage screenshot();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void makeDocks();
    void makeMenus();
    QWidget* makeCentre();
    void makeFileMenu();
    void connectParts();
    QDockWidget* addDock(QString const& title, QWidget* widget, Qt::DockWidgetArea area, char const* name);
    bool load(QString newPath, bool isSameAgain);
    void take(std::unique_ptr<LoadedScene> scene, bool isSameAgain);
    void clear();
    void takeFailure(FltLoadError const& error, bool isSameAgain);
    void watchFiles();
    void askForFile();
    void openBeside(int step);
    void saveModel();
    void saveSelection();
    void saveModel(std::optional<FltRecordPlace> const& part, QString const& name);
    void savePicture();
    void copyPicture();
    void copyCommand();
    void openWindow();
    void tell(QString const& text);
    void takeTreeSelection(QModelIndex const& index);
    void showRecords(QModelIndex const& index);
    void takePick(SoPath* picked, bool frames);
    void frameSelection();
    void takeChange();
    void takePlace(SbVec3f const& place);
    void connectView();
    void setDark(bool isDark);
    void check();
    void setTime(FltLoader::TimeOfDay time);
    void about();

    FltLoader loader;
    std::unique_ptr<LoadedScene> scene;
    EventPrinter printer;
    QString path; ///< Of the database that was asked for last.
    QString lastProblem;
    bool isWatching = false;
    bool isRemembering = false;
    bool isListingRecent = true;
    WindowStyle style;

    SceneView* view;
    ViewFooter* footer;
    std::unique_ptr<SectionPlane> section;
    SectionBar* sectionBar;
    std::unique_ptr<Measure> measure;
    bool isMeasuring = false;
    std::unique_ptr<PlaceReadout> places;                     ///< Of the scene.
    std::unique_ptr<SelectionStatistics> selectionStatistics; ///< Of the scene.
    Banner* banner;
    LoadProgress* progress;
    std::unique_ptr<ModelSaver> saver;
    SceneTreeModel* model;
    QTreeView* tree;
    QLineEdit* search;
    RecordPanel* records;
    ControlPanel* controls;
    TexturePanel* textures;
    MessagePanel* messages;
    LodBar* lodBar;
    QLabel* statistics;
    RecentFiles* recent;
    FileWatch* fileWatch;
    QAction* watchAction = nullptr;
    ViewMenu* viewMenu = nullptr;
    QDockWidget* recordDock = nullptr;
    QDockWidget* controlDock = nullptr;
    QDockWidget* textureDock = nullptr;
    QDockWidget* messageDock = nullptr;
};
