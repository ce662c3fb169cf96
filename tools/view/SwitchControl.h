#pragma once

#include "loader/FltScene.h"

#include <QWidget>
#include <cstddef>
#include <vector>

class QComboBox;
class QListWidget;
class QListWidgetItem;
class SoGroup;
class SoSwitch;

/// The masks of a switch to choose from, and its children to show or hide one by one.
class SwitchControl : public QWidget
{
    Q_OBJECT

public:
    explicit SwitchControl(QWidget* parent = nullptr);

    /// @param scene  is changed, and stays the caller's
    /// @param index  of the switch in the scene's list
    /// @param node   that stands for it
    /// @param stored the mask that the file has it show
    void show(FltScene& scene, std::size_t index, SoGroup& node, int stored);
    void clear();

signals:
    void changed();

private:
    void takeMask(int mask);
    void takeChild(QListWidgetItem* item);

    bool showsWhatIsShown(int mask) const;

    /// The mask that shows what is shown; -1 if there is none.
    int shownMask() const;

    FltScene* scene = nullptr;
    std::size_t index = 0;
    FltSwitch masks;
    std::vector<SoSwitch*> children; ///< The nodes that show a child or nothing.
    QComboBox* maskChoice;
    QListWidget* childList;
};
