#include "view/WindowStyle.h"

#include <QApplication>
#include <QStyle>

namespace
{

constexpr int middle = 128; ///< Between dark and light.

QPalette darkPalette()
{
    QColor const ground(45, 47, 50);
    QColor const list(32, 34, 36);
    QColor const letters(222, 224, 226);
    QColor const faint(130, 132, 135);
    QPalette palette(letters, ground, ground.lighter(), list, ground.darker(), letters, Qt::white, list,
                     ground);
    palette.setColor(QPalette::AlternateBase, list.lighter(120));
    palette.setColor(QPalette::ToolTipBase, list);
    palette.setColor(QPalette::ToolTipText, letters);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Link, QColor(110, 170, 250));
    palette.setColor(QPalette::Highlight, QColor(50, 110, 190));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (QPalette::ColorRole const role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

} // namespace

WindowStyle::WindowStyle()
    : styleOfDesktop(QApplication::style()->objectName()), paletteOfDesktop(QApplication::palette())
{
}

void WindowStyle::setDark(bool isDark)
{
    // Styles of desktops may draw with colours of their own.
    QApplication::setStyle(isDark ? QStringLiteral("fusion") : styleOfDesktop);
    QApplication::setPalette(isDark ? darkPalette() : paletteOfDesktop);
}

QColor WindowStyle::warningColor(QPalette const& palette)
{
    bool const isDark = palette.color(QPalette::Base).lightness() < middle;
    return isDark ? QColor(255, 130, 120) : QColor(190, 30, 30);
}
