#include "view/ViewMenu.h"

#include "view/SceneView.h"
#include "view/TimeMenu.h"
#include "view/ViewKeys.h"

#include <QActionGroup>
#include <QToolBar>

ViewMenu::ViewMenu(SceneView& view, QToolBar& bar, FltLoader const& loader, QWidget* parent)
    : QMenu(tr("&View"), parent), view(view)
{
    addSides(bar);
    addSeparator();
    addStyles();
    addSeparator();
    auto* const times = new TimeMenu(loader.time, this);
    times->setEnabled(!loader.exact);
    connect(times, &TimeMenu::chosen, this, &ViewMenu::timeChosen);
    addMenu(times);
    playAction = addSwitch(tr("P&lay flip-books"), "play");
    playAction->setChecked(true);
    playAction->setEnabled(false);
    addSeparator();
    QAction* const normals = addSwitch(tr("&Normals"), "normals");
    connect(normals, &QAction::toggled, &view, &SceneView::showNormals);
    lightAction = addSwitch(tr("&Light all faces"), "lightAll");
    connect(lightAction, &QAction::toggled, &view, &SceneView::lightAll);
    bar.addSeparator();
    bar.addAction(normals);
}

template <class Slot>
QAction* ViewMenu::add(QString const& text, std::string_view command, Slot slot)
{
    QAction* const action = addAction(text, this, slot);
    ViewKeys::assign(*action, command);
    return action;
}

QAction* ViewMenu::addSwitch(QString const& text, std::string_view command)
{
    QAction* const action = addAction(text);
    action->setCheckable(true);
    ViewKeys::assign(*action, command);
    return action;
}

void ViewMenu::addSides(QToolBar& bar)
{
    struct Side {
        QString name;
        std::string_view command;
        SceneView::Side side;
    };
    for (Side const& side :
         {Side{tr("&Corner"), "corner", SceneView::Side::corner},
          Side{tr("&Front"), "front", SceneView::Side::front},
          Side{tr("&Right"), "right", SceneView::Side::right}, Side{tr("&Top"), "top", SceneView::Side::top}})
        bar.addAction(add(side.name, side.command, [this, which = side.side] { view.lookFrom(which); }));
    bar.addSeparator();
    bar.addAction(add(tr("Frame &all"), "frameAll", [this] { view.frameAll(); }));
    bar.addAction(add(tr("Frame &selection"), "frameSelection", [this] { emit frameSelectionWanted(); }));
}

void ViewMenu::addStyles()
{
    struct Style {
        QString name;
        std::string_view command;
        SceneView::Style style;
    };
    auto* const styles = new QActionGroup(this);
    for (Style const& style : {Style{tr("S&haded"), "shaded", SceneView::Style::shaded},
                               Style{tr("Shaded with &edges"), "edges", SceneView::Style::edges},
                               Style{tr("&Wireframe"), "wireframe", SceneView::Style::lines},
                               Style{tr("&Points"), "points", SceneView::Style::points},
                               Style{tr("Without te&xtures"), "untextured", SceneView::Style::untextured}}) {
        QAction* const action =
            add(style.name, style.command, [this, which = style.style] { view.setStyle(which); });
        action->setCheckable(true);
        action->setChecked(style.style == SceneView::Style::shaded);
        styles->addAction(action);
    }
}
