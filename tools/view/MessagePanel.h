#pragma once

#include "loader/FltMessage.h"

#include <QTreeWidget>
#include <vector>

/// What the loader had to say, the worst first.
class MessagePanel : public QTreeWidget
{
    Q_OBJECT

public:
    explicit MessagePanel(QWidget* parent = nullptr);

    void show(std::vector<FltMessage> messages);
};
