#include "view/SectionBar.h"

#include "view/SectionPlane.h"

#include <Inventor/nodes/SoClipPlane.h>
#include <Inventor/nodes/SoSeparator.h>
#include <QCheckBox>
#include <QComboBox>
#include <QSlider>
#include <gtest/gtest.h>

namespace
{

TEST(SectionBarTest, CutsWhileItIsTickedAlongItsAxisAtItsSlider)
{
    auto* const content = new SoSeparator;
    content->ref();
    {
        SectionPlane section(*content);
        section.setBox(SbBox3f(0, 0, 0, 10, 20, 30));
        SectionBar const bar(section);
        auto const& plane = static_cast<SoClipPlane&>(*content->getChild(0));
        EXPECT_FALSE(plane.on.getValue());
        EXPECT_FALSE(bar.findChild<QSlider*>("sectionPlace")->isEnabled());
        bar.findChild<QCheckBox*>("section")->setChecked(true);
        bar.findChild<QComboBox*>("sectionAxis")->setCurrentIndex(2);
        bar.findChild<QSlider*>("sectionPlace")->setValue(100);
        EXPECT_TRUE(plane.on.getValue());
        EXPECT_EQ(SbVec3f(0, 0, -1), plane.plane.getValue().getNormal());
        EXPECT_FLOAT_EQ(-3, plane.plane.getValue().getDistanceFromOrigin());
        bar.findChild<QCheckBox*>("section")->setChecked(false);
        EXPECT_FALSE(plane.on.getValue());
    }
    content->unref();
}

} // namespace
