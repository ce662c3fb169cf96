#include "view/TimeMenu.h"

#include <QActionGroup>
#include <utility>

TimeMenu::TimeMenu(FltLoader::TimeOfDay time, QWidget* parent) : QMenu(tr("Time of da&y"), parent)
{
    using Time = FltLoader::TimeOfDay;
    auto* const times = new QActionGroup(this);
    for (auto const& [name, each] :
         {std::pair(tr("&Day"), Time::day), {tr("D&usk"), Time::dusk}, {tr("&Night"), Time::night}}) {
        QAction* const action = addAction(name);
        action->setCheckable(true);
        action->setChecked(each == time);
        times->addAction(action);
        connect(action, &QAction::triggered, this, [this, which = each] { emit chosen(which); });
    }
}
