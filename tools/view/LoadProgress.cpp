#include "view/LoadProgress.h"

#include "view/InputGate.h"
#include "view/ShownText.h"

#include <QApplication>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

namespace
{

constexpr int timeBetweenLooks = 50; ///< Milliseconds.
constexpr int steps = 1000;          ///< Of the bar.

} // namespace

LoadProgress::LoadProgress(QWidget* parent)
    : QWidget(parent), label(ShownText::label()), bar(new QProgressBar), button(new QPushButton(tr("Cancel")))
{
    setObjectName("loadProgress");
    bar->setRange(0, steps);
    bar->setAccessibleName(tr("How far the load is"));
    button->setObjectName("cancel");
    button->setToolTip(tr("End the load (Esc)"));
    connect(button, &QPushButton::clicked, this, &LoadProgress::cancel);
    auto* const layout = new QHBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(bar, 1);
    layout->addWidget(button);
    hide();
}

LoadProgress::~LoadProgress() = default;

LoadProgress::Run::Run(LoadProgress& progress, QString const& path) : progress(progress)
{
    progress.isCancelled = false;
    progress.label->setText(tr("Loading %1").arg(ShownText::title(QFileInfo(path).fileName())));
    progress.bar->setValue(0);
    progress.gate = std::make_unique<InputGate>(*progress.button);
    connect(progress.gate.get(), &InputGate::escaped, &progress, &LoadProgress::cancel);
    progress.sinceLook.start();
    QApplication::setOverrideCursor(Qt::BusyCursor);
}

LoadProgress::Run::~Run()
{
    QApplication::restoreOverrideCursor();
    progress.closeWanted = progress.gate->isCloseWanted();
    progress.gate.reset();
    progress.hide();
}

bool LoadProgress::goOn(std::string const& file, std::uint64_t bytesDone, std::uint64_t bytesInAll)
{
    if (!sinceLook.hasExpired(timeBetweenLooks))
        return !isCancelled;
    double const part =
        bytesInAll == 0 ? 1 : std::min(1.0, static_cast<double>(bytesDone) / static_cast<double>(bytesInAll));
    label->setText(
        tr("Loading %1").arg(ShownText::title(QFileInfo(QString::fromStdString(file)).fileName())));
    bar->setValue(static_cast<int>(part * steps));
    if (isHidden()) {
        show();
        emit shown();
    }
    QApplication::processEvents();
    sinceLook.start();
    return !isCancelled;
}
