#pragma once

#include "view/SwitchMasks.h"

#include <QWidget>
#include <memory>
#include <vector>

class QComboBox;
class QListWidget;
class QListWidgetItem;

/// The masks of a switch to choose from, and its children to show or hide one by one.
class SwitchControl : public QWidget
{
    Q_OBJECT

public:
    explicit SwitchControl(QWidget* parent = nullptr);

    /// @param children of the switch; they belong to the scene @param names of the children
    void show(SwitchMasks const& masks, std::vector<SoSwitch*> const& children, QStringList const& names);
    void clear();

signals:
    void changed();

private:
    void takeMask(int mask);
    void takeChild(QListWidgetItem* item);

    /// The mask that shows what is shown; -1 if there is none.
    int shownMask() const;

    std::unique_ptr<SwitchMasks> masks;
    std::vector<SoSwitch*> children;
    QComboBox* maskChoice;
    QListWidget* childList;
};
