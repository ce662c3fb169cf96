#include "view/ViewMenu.h"

#include "view/SceneView.h"
#include "view/TimeMenu.h"
#include "view/ViewKeys.h"

#include <QActionGroup>
#include <QColorDialog>
#include <QToolBar>

ViewMenu::ViewMenu(SceneView& view, QToolBar& bar, FltLoader const& loader, QWidget* parent)
    : QMenu(tr("&View"), parent), view(view)
{
    addSides(bar);
    addSeparator();
    addParts();
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
    addLooks();
    bar.addSeparator();
    bar.addAction(normals);
}

void ViewMenu::addParts()
{
    add(tr("Show &only the selection"), "showOnly", [this] { emit showOnlyWanted(); });
    add(tr("Show a&gain what is hidden"), "showAll", [this] { emit showAllWanted(); });
    connect(addSwitch(tr("&Measure"), "measure"), &QAction::toggled, this, &ViewMenu::measuringChanged);
    connect(addSwitch(tr("Wal&k"), "walk"), &QAction::toggled, &view, &SceneView::setWalking);
}

void ViewMenu::addLooks()
{
    QAction* const headlight = addSwitch(tr("Li&ght from the eye"), "headlight");
    headlight->setChecked(true);
    connect(headlight, &QAction::toggled, &view, &SceneView::setHeadlight);
    addFieldsOfView();
    addBackgrounds();
    darkAction = addSwitch(tr("&Dark style"), "dark");
}

void ViewMenu::addFieldsOfView()
{
    constexpr int usual = 45;
    QMenu* const menu = addMenu(tr("Field of &view"));
    auto* const angles = new QActionGroup(this);
    for (int const degrees : {10, 20, 30, usual, 60, 90, 120}) {
        QAction* const action =
            menu->addAction(tr("&%1°").arg(degrees), this, [this, degrees] { view.setFieldOfView(degrees); });
        action->setCheckable(true);
        action->setChecked(degrees == usual);
        angles->addAction(action);
    }
}

void ViewMenu::addBackgrounds()
{
    QMenu* const menu = addMenu(tr("&Background"));
    auto const offer = [&](QString const& name, QColor const& color) {
        menu->addAction(name, this, [this, color] { view.setBackground(color); });
    };
    offer(tr("&Sky"), QColor(194, 209, 224));
    offer(tr("&White"), Qt::white);
    offer(tr("&Grey"), QColor(96, 96, 96));
    offer(tr("&Black"), Qt::black);
    menu->addAction(tr("&Choose…"), this, [this] {
        QColor const chosen = QColorDialog::getColor(Qt::gray, parentWidget(), tr("Background"));
        if (chosen.isValid())
            view.setBackground(chosen);
    });
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
        bool hasButton;
    };
    using Sides = SceneView::Side;
    for (Side const& side :
         {Side{tr("&Corner"), "corner", Sides::corner, true}, Side{tr("&Front"), "front", Sides::front, true},
          Side{tr("&Right"), "right", Sides::right, true}, Side{tr("&Top"), "top", Sides::top, true},
          Side{tr("Back"), "back", Sides::back, false}, Side{tr("Left"), "left", Sides::left, false},
          Side{tr("Below"), "bottom", Sides::bottom, false}}) {
        QAction* const action =
            add(side.name, side.command, [this, which = side.side] { view.lookFrom(which); });
        if (side.hasButton)
            bar.addAction(action);
    }
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
