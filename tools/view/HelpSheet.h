#pragma once

#include <QDialog>

/// The keys and what the mouse does, in one sheet.
class HelpSheet : public QDialog
{
    Q_OBJECT

public:
    explicit HelpSheet(QWidget* parent = nullptr);
};
