#pragma once

#include <Inventor/SbBox3f.h>
#include <QString>

class QModelIndex;
class QWidget;
class SceneTreeModel;

/// Prints on standard output what happens in the window, a line each: for scripts, and for tests that click.
class EventPrinter
{
public:
    /// @param window whose widgets are told of; it lives longer than this
    explicit EventPrinter(QWidget& window) : window(window) {}

    void setOn(bool isOn) { isPrinting = isOn; }

    /// Tells the places of the widgets on the screen, too.
    void setWithWidgets(bool isOn) { isPrintingWidgets = isOn; }

    void print(QString const& line) const;
    void printSelection(SceneTreeModel const& model, QModelIndex const& index,
                        std::string const& database) const;
    void printBox(SbBox3f const& box) const;

    /// Prints where the widgets are, once they have their places.
    void printWidgetsSoon() const;

private:
    void printWidgets() const;

    QWidget& window;
    bool isPrinting = false;
    bool isPrintingWidgets = false;
};
