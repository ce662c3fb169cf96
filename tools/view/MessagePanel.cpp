#include "view/MessagePanel.h"

#include "view/ListColumns.h"
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

QTreeWidgetItem* makeItem(FltMessage const& message)
{
    QString const text = QString::fromStdString(message.text);
    auto* const item =
        new QTreeWidgetItem({nameOf(message.level), text, placeOf(message), QString::number(message.count)});
    item->setToolTip(1, ShownText::toolTip(text));
    return item;
}

} // namespace

MessagePanel::MessagePanel(QWidget* parent) : QTreeWidget(parent)
{
    setHeaderLabels({tr("Level"), tr("Message"), tr("Place"), tr("Times")});
    ListColumns::fit(*this, 1);
    setObjectName("messages");
    setAccessibleName(tr("Messages"));
}

void MessagePanel::show(std::vector<FltMessage> messages)
{
    clear();
    std::stable_sort(messages.begin(), messages.end(),
                     [](FltMessage const& a, FltMessage const& b) { return a.level > b.level; });
    QList<QTreeWidgetItem*> items;
    for (MessageGroups::Group const& group : MessageGroups::of(messages)) {
        items << makeItem(MessageGroups::summaryOf(group));
        if (group.size() > 1)
            for (FltMessage const& message : group)
                items.back()->addChild(makeItem(message));
    }
    addTopLevelItems(items);
}
