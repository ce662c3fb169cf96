#include "view/TimeMenu.h"

#include <gtest/gtest.h>
#include <vector>

namespace
{

using Time = FltLoader::TimeOfDay;

TEST(TimeMenuTest, ChecksTheTimeThatIsShownAndTellsWhatIsChosen)
{
    TimeMenu menu(Time::dusk);
    std::vector<Time> chosen;
    QObject::connect(&menu, &TimeMenu::chosen, [&chosen](Time time) { chosen.push_back(time); });
    QList<QAction*> const actions = menu.actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_FALSE(actions[0]->isChecked());
    EXPECT_TRUE(actions[1]->isChecked());
    EXPECT_FALSE(actions[2]->isChecked());
    for (QAction* const action : actions)
        action->trigger();
    EXPECT_EQ(chosen, (std::vector<Time>{Time::day, Time::dusk, Time::night}));
    EXPECT_TRUE(actions[2]->isChecked());
    EXPECT_FALSE(actions[1]->isChecked());
}

} // namespace
