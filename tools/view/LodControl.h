#pragma once

#include <QWidget>

class LevelsOfDetail;
class QComboBox;
class QLabel;
class SoLOD;

/// Which part of one level of detail is drawn.
class LodControl : public QWidget
{
    Q_OBJECT

public:
    explicit LodControl(QWidget* parent = nullptr);

    /// Both stay the caller's and have to live until the next call.
    void show(LevelsOfDetail* levels, SoLOD* lod);
    void clear() { show(nullptr, nullptr); }

signals:
    void changed();

private:
    void take(int choice);

    LevelsOfDetail* levels = nullptr;
    SoLOD* lod = nullptr;
    QComboBox* choice;
    QLabel* ranges;
};
