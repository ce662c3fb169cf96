#include "view/MessagePanel.h"

#include "view/ShownText.h"

#include <algorithm>

namespace
{

QString nameOf(FltMessage::Level level)
{
    switch (level) {
    case FltMessage::Level::remark:
        return QStringLiteral("remark");
    case FltMessage::Level::warning:
        return QStringLiteral("warning");
    case FltMessage::Level::error:
        return QStringLiteral("error");
    }
    return {};
}

QString placeOf(FltMessage const& message)
{
    return message.offset >= 0 ? QString("byte %1").arg(message.offset) : QString();
}

} // namespace

MessagePanel::MessagePanel(QWidget* parent) : QTreeWidget(parent)
{
    setHeaderLabels({tr("Level"), tr("Message"), tr("Place"), tr("Times")});
    setRootIsDecorated(false);
    setColumnWidth(1, 600);
    setObjectName("messages");
}

void MessagePanel::show(std::vector<FltMessage> messages)
{
    clear();
    std::stable_sort(messages.begin(), messages.end(),
                     [](FltMessage const& a, FltMessage const& b) { return a.level > b.level; });
    QList<QTreeWidgetItem*> items;
    for (FltMessage const& message : messages) {
        QString const text = QString::fromStdString(message.text);
        items << new QTreeWidgetItem(
            {nameOf(message.level), text, placeOf(message), QString::number(message.count)});
        items.back()->setToolTip(1, ShownText::toolTip(text));
    }
    addTopLevelItems(items);
}
