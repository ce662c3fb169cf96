#include "view/ShownText.h"

#include "messages/FltText.h"

#include <QLabel>

QString ShownText::toolTip(QString const& text)
{
    return text.isEmpty() ? text : "<span>" + text.toHtmlEscaped().replace('\n', "<br>") + "</span>";
}

QString ShownText::title(QString const& text)
{
    constexpr int longest = 200;
    QString shown = printable(text);
    if (shown.size() > longest)
        shown = shown.left(longest) + "…";
    return shown.replace("[*]", "[**]"); // else the place of a mark for changes
}

QString ShownText::printable(QString const& text)
{
    return QString::fromStdString(FltText::printable(text.toStdString()));
}

QLabel* ShownText::label(QString const& text)
{
    auto* const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

void ShownText::tell(QWidget* parent, QMessageBox::Icon icon, QString const& text)
{
    QMessageBox box(icon, "fltview", "", QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.exec();
}
