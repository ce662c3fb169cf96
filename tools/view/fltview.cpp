// Shows an OpenFlight database in a window.

#include "view/MainWindow.h"
#include "view/ViewOptions.h"

#include <Inventor/Qt/SoQt.h>
#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{

constexpr int success = 0;
constexpr int failed = 1;

void complain(std::string const& text)
{
    std::fprintf(stderr, "fltview: %s\n", text.c_str());
}

/// Qt ends the program without a display, with a core file.
bool hasDisplay()
{
    for (char const* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (char const* const value = std::getenv(name); value != nullptr && *value != '\0')
            return true;
    return false;
}

/// Lets the window come up, then saves it.
int saveScreenshot(MainWindow& window, std::string const& path)
{
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    if (window.screenshot().save(QString::fromStdString(path)))
        return success;
    complain(path +
             ": cannot write. Check the directory, its permissions, and that the name ends in .png or .jpg.");
    return failed;
}

int show(MainWindow& window, ViewOptions const& options)
{
    window.setPrinting(options.prints);
    window.setPrintingWidgets(options.printsWidgets);
    window.resize(options.width, options.height);
    window.show();
    QApplication::processEvents(); // the picture gets its size, which the camera is fitted to
    bool const isOpen = options.input.empty() || window.open(QString::fromStdString(options.input));
    if (!isOpen)
        complain(window.problem().toStdString());
    bool const isFound =
        !isOpen || options.select.empty() || window.find(QString::fromStdString(options.select));
    if (!isFound)
        complain("nothing is named " + options.select + ".");
    window.setWatching(options.watches);
    if (options.screenshot.empty())
        return QApplication::exec();
    return isOpen && isFound ? saveScreenshot(window, options.screenshot) : failed;
}

} // namespace

int main(int argc, char** argv)
{
    ViewOptions options;
    if (int const exitCode = options.parse(argc, argv); exitCode >= 0)
        return exitCode;
    if (!hasDisplay()) {
        complain("there is no display. Start it on a desktop, or with xvfb-run; fltshot draws pictures "
                 "without one.");
        return failed;
    }
    // The toolkit has its contexts from X.
    if (std::getenv("QT_QPA_PLATFORM") == nullptr && std::getenv("DISPLAY") != nullptr)
        ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    QApplication application(argc, argv);
    QApplication::setApplicationName("fltview");
    QApplication::setApplicationVersion(VELLOREADER_VERSION);
    QApplication::setOrganizationName("VelloReader");
    QApplication::setDesktopFileName("fltview");
    FltLoader loader;
    loader.texturePath = options.texturePath;
    loader.exact = options.exact;

    SoQt::init(static_cast<QWidget*>(nullptr));
    int exitCode = failed;
    {
        MainWindow window(loader);
        exitCode = show(window, options);
    }
    SoQt::done();
    return exitCode;
}
