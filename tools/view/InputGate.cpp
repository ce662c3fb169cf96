#include "view/InputGate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace
{

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        return true;
    default:
        return false;
    }
}

bool isEscape(QEvent const& event)
{
    return event.type() == QEvent::KeyPress && static_cast<QKeyEvent const&>(event).key() == Qt::Key_Escape;
}

} // namespace

InputGate::InputGate(QWidget& open) : open(open)
{
    qApp->installEventFilter(this);
}

bool InputGate::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Shortcut)
        return true;
    // Windows of the system hand input on to a widget, where it comes by again.
    auto const* const widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr)
        return false;
    if (event->type() == QEvent::Close) {
        event->ignore();
        closeWanted = true;
        emit escaped();
        return true;
    }
    if (!isInput(event->type()))
        return false;
    if (isEscape(*event))
        emit escaped();
    return isEscape(*event) || (widget != &open && !open.isAncestorOf(widget));
}
