#include "view/ModelSaver.h"

#include "view/LoadProgress.h"
#include "view/ModelExport.h"
#include "view/ShownText.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QSettings>

namespace
{

/// In settings: the form that was chosen last.
constexpr char key[] = "saveAs";

} // namespace

QString ModelSaver::save(ModelExport const& model, QString const& name)
{
    if (progress.isLoading())
        return {};
    QString const folder = QFileInfo(QString::fromStdString(model.database)).absolutePath();
    QFileDialog dialog(&parent, QObject::tr("Save the model"), folder, ModelExport::filters());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.selectNameFilter(QSettings().value(key).toString());
    auto const follow = [&dialog](QString const& file) {
        QString const filter = dialog.selectedNameFilter();
        dialog.setDefaultSuffix(ModelExport::withEnding({}, filter));
        dialog.selectFile(ModelExport::withEnding(file, filter));
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, [&] { follow(dialog.selectedFiles().value(0)); });
    follow(QString(name).replace('/', '_'));
    if (dialog.exec() != QDialog::Accepted)
        return {};
    QSettings().setValue(key, dialog.selectedNameFilter());
    return write(model, dialog.selectedFiles().value(0));
}

QString ModelSaver::write(ModelExport const& model, QString const& path)
{
    try {
        LoadProgress::Run const run(progress, QString::fromStdString(model.database));
        ModelExport telling = model;
        telling.loader.progress = [this](std::string const& file, std::uint64_t done, std::uint64_t inAll) {
            return progress.goOn(file, done, inAll);
        };
        QString const lost = telling.write(path.toStdString());
        return QObject::tr("Saved as %1. %2").arg(path, lost).trimmed();
    } catch (FltLoadError const& error) {
        if (error.kind() == FltLoadError::Kind::cancelled)
            return QObject::tr("Nothing was saved.");
        ShownText::tell(&parent, QMessageBox::Warning, QString::fromUtf8(error.what()));
    } catch (std::runtime_error const& problem) { // of the writer or the file
        ShownText::tell(&parent, QMessageBox::Warning, QString::fromUtf8(problem.what()));
    }
    return {};
}
