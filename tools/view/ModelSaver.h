#pragma once

#include <QString>

class LoadProgress;
class QWidget;
struct ModelExport;

/// Asks where to save a model, and saves it.
class ModelSaver
{
public:
    /// @param parent   of dialogs
    /// @param progress shows how far the load is, and cancels it
    ModelSaver(QWidget& parent, LoadProgress& progress) : parent(parent), progress(progress) {}

    /// @param name of what is saved, for the file
    /// @return what was done, a sentence or two; empty if nothing was
    QString save(ModelExport const& model, QString const& name);

private:
    QString write(ModelExport const& model, QString const& path);

    QWidget& parent;
    LoadProgress& progress;
};
