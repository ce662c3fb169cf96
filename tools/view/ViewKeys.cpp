#include "view/ViewKeys.h"

#include <QAction>
#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace
{

struct Row {
    std::string_view command; ///< Empty for what no action does.
    char const* keys;         ///< Several are separated by "; ".
    char const* purpose;
};

constexpr Row rows[] = {
    {"", "Drag", "turn the model"},
    {"", "Drag with the middle button", "move it"},
    {"", "Wheel", "zoom"},
    {"", "Click", "select what is there, in the picture or in the tree"},
    {"", "Double click", "bring the selection into the picture"},
    {"open", "Ctrl+O", "open another database; one can be dropped on the window, too"},
    {"reload", "F5", "load it again: camera and selection stay"},
    {"next", "Ctrl+PgDown", "open the next database of the folder"},
    {"previous", "Ctrl+PgUp", "open the previous database of the folder"},
    {"cancel", "Esc", "end a load that takes too long"},
    {"saveModel", "Ctrl+Shift+S", "save the model in another form: glTF, a page, OBJ, Open Inventor, VRML97"},
    {"saveSelection", "Ctrl+E", "save the selection alone so"},
    {"savePicture", "Ctrl+S", "save the picture"},
    {"copyPicture", "Ctrl+Shift+C", "copy the picture"},
    {"copyCommand", "Ctrl+Alt+C", "copy the command line that draws this picture"},
    {"check", "Ctrl+K", "say what is damaged in the file, and what won't be seen"},
    {"newWindow", "Ctrl+Shift+N", "show the same database in one more window"},
    {"quit", "Ctrl+Q", "end"},
    {"find", "Ctrl+F", "search by name; Enter goes on to the next"},
    {"findNext", "F3", "go on to the next node of that name"},
    {"corner", "Ctrl+1", "look from a corner"},
    {"front", "Ctrl+2", "look from the front"},
    {"right", "Ctrl+3", "look from the right"},
    {"top", "Ctrl+4", "look from the top"},
    {"back", "Ctrl+Alt+2", "look from the back"},
    {"left", "Ctrl+Alt+3", "look from the left"},
    {"bottom", "Ctrl+Alt+4", "look from below"},
    {"frameAll", "Ctrl+0", "bring everything into the picture"},
    {"frameSelection", "Ctrl+.", "bring the selection into the picture"},
    {"showOnly", "Ctrl+I", "hide everything but the selection"},
    {"showAll", "Ctrl+Shift+I", "show again what is hidden"},
    {"measure", "Ctrl+M", "measure between two places that are clicked"},
    {"walk", "F2", "walk through the model instead of turning it: drag to look around"},
    {"", "W, S, A, D", "walking: ahead, back, left, right; with Shift five times as far"},
    {"", "E, Q", "walking: up, down"},
    {"shaded", "Ctrl+5", "draw faces as usual"},
    {"edges", "Ctrl+6", "draw their edges, too"},
    {"wireframe", "Ctrl+7", "draw edges alone"},
    {"points", "Ctrl+8", "draw vertices alone"},
    {"untextured", "Ctrl+9", "draw faces without textures"},
    {"normals", "Ctrl+N", "show the normals"},
    {"lightAll", "Ctrl+L", "light all faces, also those that the database doesn't have lit"},
    {"headlight", "Ctrl+H", "switch the light from the eye on or off"},
    {"dark", "Ctrl+D", "have the window be dark, or as the desktop is"},
    {"play", "Ctrl+P", "have flip-books play or stand still"},
    {"help", "F1; ?", "show these keys"},
};

Row const& rowOf(std::string_view command)
{
    auto const* const row = std::find_if(std::begin(rows), std::end(rows),
                                         [&](Row const& each) { return each.command == command; });
    if (row == std::end(rows))
        throw std::invalid_argument("no keys for " + std::string(command));
    return *row;
}

} // namespace

std::vector<ProgramKey> const& ViewKeys::all()
{
    static std::vector<ProgramKey> const keys = [] {
        std::vector<ProgramKey> list;
        for (Row const& row : rows) {
            std::string shown = row.keys;
            if (std::size_t const separator = shown.find("; "); separator != std::string::npos)
                shown.replace(separator, 2, " or ");
            list.push_back({shown, row.purpose});
        }
        return list;
    }();
    return keys;
}

QList<QKeySequence> ViewKeys::keysOf(std::string_view command)
{
    return QKeySequence::listFromString(rowOf(command).keys);
}

void ViewKeys::assign(QAction& action, std::string_view command)
{
    Row const& row = rowOf(command);
    QList<QKeySequence> const keys = keysOf(command);
    QString purpose = QString::fromUtf8(row.purpose);
    purpose[0] = purpose[0].toUpper();
    action.setShortcuts(keys);
    action.setStatusTip(purpose);
    action.setToolTip(purpose + " (" + keys.front().toString(QKeySequence::NativeText) + ")");
}
