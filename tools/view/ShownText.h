#pragma once

#include <QMessageBox>
#include <QString>

class QLabel;
class QWidget;

/// Texts of databases and files in the window. Qt takes text that looks like HTML for it, and opens the
/// images that it names.
namespace ShownText
{

/// A tool tip that says a text, in lines that aren't too long.
QString toolTip(QString const& text);

/// A title of a window or a dialog, without control characters, and not longer than anybody reads.
QString title(QString const& text);

/// A line on a terminal, without control characters.
QString printable(QString const& text);

/// A label that shows any text as it is.
QLabel* label(QString const& text = {});

/// Says something in a box until it is closed.
void tell(QWidget* parent, QMessageBox::Icon icon, QString const& text);

} // namespace ShownText
