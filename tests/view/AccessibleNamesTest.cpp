// Whoever hears the window instead of seeing it is told what each of its parts is.

#include "view/DofControl.h"
#include "view/HelpSheet.h"
#include "view/LodBar.h"
#include "view/LodControl.h"
#include "view/MessagePanel.h"
#include "view/RecordPanel.h"
#include "view/SectionBar.h"
#include "view/SectionPlane.h"
#include "view/SwitchControl.h"
#include "view/TexturePanel.h"

#include <Inventor/nodes/SoSeparator.h>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <gtest/gtest.h>

namespace
{

template <class Kind>
void expectNames(QWidget& panel)
{
    QList<Kind*> widgets = panel.findChildren<Kind*>();
    if (auto* const own = qobject_cast<Kind*>(&panel))
        widgets << own;
    for (Kind* const widget : widgets) {
        QWidget const* const parent = widget->parentWidget();
        bool const isPartOfAnother = parent != nullptr && parent->inherits("QComboBoxPrivateContainer");
        if ((widget->focusPolicy() & Qt::TabFocus) == 0 || isPartOfAnother)
            continue;
        QAccessibleInterface* const heard = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(nullptr, heard);
        EXPECT_NE("", heard->text(QAccessible::Name).toStdString())
            << panel.metaObject()->className() << ", " << widget->metaObject()->className() << " "
            << widget->objectName().toStdString();
    }
}

void expectAllNames(QWidget& panel)
{
    expectNames<QAbstractItemView>(panel);
    expectNames<QAbstractSlider>(panel);
    expectNames<QAbstractSpinBox>(panel);
    expectNames<QComboBox>(panel);
}

TEST(AccessibleNamesTest, AreThereForEverythingThatTakesTheKeyboard)
{
    auto* const root = new SoSeparator;
    root->ref();
    {
        SectionPlane plane(*root);
        RecordPanel records;
        MessagePanel messages;
        TexturePanel textures;
        DofControl joint;
        SwitchControl choice;
        LodControl level;
        LodBar levels;
        SectionBar section(plane);
        HelpSheet help;
        for (QWidget* panel :
             {static_cast<QWidget*>(&records), static_cast<QWidget*>(&messages),
              static_cast<QWidget*>(&textures), static_cast<QWidget*>(&joint), static_cast<QWidget*>(&choice),
              static_cast<QWidget*>(&level), static_cast<QWidget*>(&levels), static_cast<QWidget*>(&section),
              static_cast<QWidget*>(&help)})
            expectAllNames(*panel);
    }
    root->unref();
}

} // namespace
