#include "view/ViewFooter.h"

#include "view/AxesCross.h"
#include "view/ScaleBar.h"
#include "view/SceneView.h"
#include "view/ShownText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace
{

constexpr int linesOfPlace = 4;
constexpr char separator[] = "  |  "; ///< Of the parts of a place.

} // namespace

ViewFooter::ViewFooter(SceneView& view, QWidget* parent)
    : QWidget(parent), view(view), axes(new AxesCross), scale(new ScaleBar), label(ShownText::label()),
      size(ShownText::label())
{
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 0, 8, 0);
    layout->addWidget(axes);
    auto* const lengths = new QVBoxLayout;
    lengths->addWidget(scale);
    lengths->addWidget(size);
    layout->addLayout(lengths);
    layout->addWidget(label, 1);
    label->setObjectName("place");
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAccessibleName(tr("The place that was clicked"));
    label->setMinimumWidth(60);
    label->setMinimumHeight(linesOfPlace *
                            label->fontMetrics().lineSpacing()); // so that the picture keeps its size
    size->setObjectName("size");
    size->setToolTip(tr("Size of what is drawn, along x, y and z"));
    connect(&view, &SceneView::cameraChanged, this, &ViewFooter::followCamera);
}

void ViewFooter::setUnit(QString const& newUnit)
{
    unit = newUnit;
    label->clear();
    refreshSize();
    followCamera();
}

void ViewFooter::refreshSize()
{
    SbBox3f const box = view.box();
    QStringList lengths;
    for (int axis = 0; axis < 3 && !unit.isEmpty() && !box.isEmpty(); ++axis)
        lengths << QString::number(static_cast<double>(box.getMax()[axis] - box.getMin()[axis]), 'g', 5);
    size->setText(lengths.isEmpty() ? QString() : lengths.join(" × ") + " " + unit);
}

void ViewFooter::say(QString const& text)
{
    label->setText(QString(text).replace(separator, "\n"));
}

QString ViewFooter::sizeText() const
{
    return size->text();
}

void ViewFooter::followCamera()
{
    axes->show(view.turn());
    scale->show(unit.isEmpty() ? 0 : view.lengthOfPixel(), unit);
}
