#pragma once

#include "support/MessageGroups.h"

#include <QTreeWidget>
#include <vector>

/// What the loader had to say, the worst first. Messages of one cause are one line, and each stands below it.
class MessagePanel : public QTreeWidget
{
    Q_OBJECT

public:
    explicit MessagePanel(QWidget* parent = nullptr);

    void show(std::vector<FltMessage> messages);
};
