// Shows an OpenFlight database in a window.

#include "support/OutputFile.h"
#include "support/SceneMessages.h"
#include "support/ToolError.h"
#include "view/MainWindow.h"
#include "view/ViewOptions.h"

#include <Inventor/Qt/SoQt.h>
#include <QApplication>
#include <QBuffer>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{

/// Qt ends the program without a display, with a core file.
bool hasDisplay()
{
    for (char const* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (char const* const value = std::getenv(name); value != nullptr && *value != '\0')
            return true;
    return false;
}

/// Who says what Qt has to say, which may name files of a database.
Program const* speaker = nullptr;

void takeQtMessage(QtMsgType /*type*/, QMessageLogContext const& /*context*/, QString const& text)
{
    speaker->warn(text.toStdString());
}

/// The picture as the bytes of a file whose name ends so.
/// @throw ToolError if there is no such kind of picture
QByteArray encoded(QImage const& picture, std::string const& path)
{
    QByteArray const ending = QByteArray::fromStdString(path.substr(path.rfind('.') + 1)).toUpper();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, ending.constData()))
        throw ToolError(path + ": this program can't write such a picture. Choose another ending.",
                        ExitCode::wrongUsage);
    return bytes;
}

/// Lets the window come up, then saves it.
void saveScreenshot(MainWindow& window, ViewOptions const& options)
{
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    QByteArray const bytes = encoded(window.screenshot(), options.screenshot);
    OutputFile output(options.screenshot, {{options.input(), "the input"}}, options.existing);
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), output.stream());
    output.commit();
}

ExitCode show(Program const& program, MainWindow& window, ViewOptions const& options)
{
    window.setPrinting(options.prints);
    window.setPrintingWidgets(options.printsWidgets);
    window.setPlaying(options.screenshot.empty()); // a picture shows first frames
    window.setListingRecent(options.screenshot.empty());
    if (options.hasSize || !options.screenshot.empty())
        window.resize(options.width, options.height);
    else
        window.rememberPlaces();
    window.show();
    QApplication::processEvents(); // the picture gets its size, which the camera is fitted to
    bool const isOpen = options.input().empty() || window.open(QString::fromStdString(options.input()));
    if (!isOpen)
        program.error(window.problem().toStdString());
    bool const isFound =
        !isOpen || options.select.empty() || window.find(QString::fromStdString(options.select));
    if (!isFound)
        program.error("nothing is named " + options.select + ".");
    window.setWatching(options.watches);
    window.setLightingAll(options.lightsAll);
    if (options.screenshot.empty())
        return QApplication::exec() == 0 ? ExitCode::success : ExitCode::failed;
    if (!isOpen || !isFound)
        return ExitCode::failed;
    saveScreenshot(window, options);
    return ExitCode::success;
}

ExitCode view(Program const& program, ViewOptions& options, int argc, char** argv)
{
    options.check();
    if (!hasDisplay()) {
        program.error("there is no display. Start it on a desktop, or with xvfb-run; fltshot draws pictures "
                      "without one.");
        return ExitCode::failed;
    }
    // The toolkit has its contexts from X.
    if (std::getenv("QT_QPA_PLATFORM") == nullptr && std::getenv("DISPLAY") != nullptr)
        ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    speaker = &program;
    qInstallMessageHandler(takeQtMessage);
    QApplication application(argc, argv);
    QApplication::setApplicationName("fltview");
    QApplication::setApplicationVersion(Program::version());
    QApplication::setOrganizationName("VelloReader");
    QApplication::setDesktopFileName("fltview");
    SoQt::init(static_cast<QWidget*>(nullptr));
    ExitCode exitCode = ExitCode::failed;
    {
        SceneMessages const messages(program);
        MainWindow window(options.makeLoader());
        exitCode = show(program, window, options);
    }
    SoQt::done();
    qInstallMessageHandler(nullptr);
    return exitCode;
}

} // namespace

int main(int argc, char** argv)
{
    Program program(ViewOptions::description());
    ViewOptions options(program);
    return program.run(argc, argv, [&] { return view(program, options, argc, argv); });
}
