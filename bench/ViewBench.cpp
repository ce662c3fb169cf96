// The viewer with databases of 300,000 faces: the processor time of opening one, beside that of flt2iv, and
// of a frame while the mouse turns it, beside that of the toolkit alone. It needs a display.

#include "BenchDatabase.h"
#include "BenchOptions.h"
#include "BenchTime.h"
#include "DrawnFrames.h"
#include "support/ScratchFolder.h"
#include "view/LoadedScene.h"
#include "view/SceneView.h"

#include <Inventor/Qt/SoQt.h>
#include <Inventor/nodes/SoSeparator.h>
#include <QApplication>
#include <QGLWidget>
#include <QMouseEvent>
#include <QWindow>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

namespace
{

using Json = nlohmann::ordered_json;

constexpr double milliseconds = 1e3;
constexpr int buildings = 6000;
constexpr int terrainVertices = 300'000;
constexpr int warmUp = 10;
constexpr int measured = 60;
constexpr int side = 512; ///< Of the picture, as of that which DrawnFrames draws.

/// A window with the picture of a database in it, and a mouse that turns that.
class TurnedView
{
public:
    explicit TurnedView(std::string const& path)
    {
        static int count = 1;
        static char name[] = "view_bench";
        static char* names[] = {name, nullptr};
        application = std::make_unique<QApplication>(count, names);
        SoQt::init(static_cast<QWidget*>(nullptr));
        loaded = std::make_unique<LoadedScene>(FltLoader(), path);
        view = std::make_unique<SceneView>();
        view->resize(side, side);
        view->show();
        QApplication::processEvents();
        view->setScene(loaded->scene.root(), false);
        picture = view->findChild<QGLWidget*>();
        send(QEvent::MouseButtonPress);
    }

    void draw(int frames)
    {
        for (int frame = 0; frame < frames; ++frame) {
            ++place.rx();
            send(QEvent::MouseMove);
            QApplication::processEvents();
        }
    }

private:
    void send(QEvent::Type type)
    {
        QMouseEvent event(type, place, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(picture, &event);
    }

    std::unique_ptr<QApplication> application;
    std::unique_ptr<LoadedScene> loaded;
    std::unique_ptr<SceneView> view;
    QWidget* picture = nullptr;
    QPoint place{side / 4, side / 2};
};

double frameOfView(std::string const& path, int runs)
{
    double least = HUGE_VAL;
    for (int run = 0; run < runs; ++run) {
        TurnedView* view = nullptr; // as long as the process lives
        std::vector<BenchTime> const times = BenchTime::stepsApart({
            [&] { view = new TurnedView(path); },
            [&] { view->draw(warmUp); },
            [&] { view->draw(measured); },
        });
        least = std::min(least, times[2].cpu);
    }
    return least * milliseconds / measured;
}

double frameOfToolkit(std::string const& path, int runs)
{
    double least = HUGE_VAL;
    for (int run = 0; run < runs; ++run) {
        std::unique_ptr<FltScene> scene;
        std::unique_ptr<DrawnFrames> frames;
        std::vector<BenchTime> const times = BenchTime::stepsApart({
            [&] {
                DrawnFrames::open(false);
                scene = std::make_unique<FltScene>(FltLoader().load(path));
                frames = std::make_unique<DrawnFrames>(scene->root());
            },
            [&] { frames->draw(warmUp, DrawnFrames::Way::outside); },
            [&] { frames->draw(measured, DrawnFrames::Way::outside); },
        });
        least = std::min(least, times[2].cpu);
    }
    return least * milliseconds / measured;
}

Json measure(char const* name, std::string const& path, std::string const& programs, int runs)
{
    std::string const quiet = " 2> /dev/null";
    Json row = {{"name", name}};
    row["openCpuSeconds"] =
        BenchTime::ofCommand(runs, programs + "fltview -o " + path + ".ppm " + path + quiet).cpu;
    row["flt2ivCpuSeconds"] =
        BenchTime::ofCommand(runs, programs + "flt2iv --quiet -o " + path + ".iv " + path + quiet).cpu;
    row["frameCpuMs"] = frameOfView(path, runs);
    row["toolkitFrameCpuMs"] = frameOfToolkit(path, runs);
    return row;
}

} // namespace

int main(int argc, char** argv)
{
    BenchOptions const options(argc, argv, false);
    if (std::getenv("DISPLAY") == nullptr) {
        std::fputs("view_bench: there is no display. Start it with xvfb-run -a.\n", stderr);
        return 1;
    }
    try {
        ScratchFolder const folder;
        std::string const programs = std::filesystem::path(argv[0]).parent_path().string() + "/";
        std::string const town = folder / "town.flt";
        std::string const terrain = folder / "terrain.flt";
        BenchDatabase::writeTown(town, buildings, BenchDatabase::Windows::opaque);
        BenchDatabase::writeTerrain(terrain, terrainVertices, BenchDatabase::Vertices::shared);
        Json const rows = {measure("town", town, programs, options.runs),
                           measure("terrain", terrain, programs, options.runs)};
        if (options.json) {
            std::puts(rows.dump(2).c_str());
            return 0;
        }
        std::printf("%-10s %12s %12s %12s %12s\n", "", "open, s", "flt2iv, s", "frame, ms", "toolkit, ms");
        for (Json const& row : rows)
            std::printf("%-10s %12.2f %12.2f %12.2f %12.2f\n", row["name"].get<std::string>().c_str(),
                        row["openCpuSeconds"].get<double>(), row["flt2ivCpuSeconds"].get<double>(),
                        row["frameCpuMs"].get<double>(), row["toolkitFrameCpuMs"].get<double>());
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "view_bench: %s\n", problem.what());
        return 1;
    }
    return 0;
}
