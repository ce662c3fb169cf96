#include "view/Banner.h"

#include "view/ShownText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

Banner::Banner(QWidget* parent) : QFrame(parent), label(ShownText::label())
{
    setObjectName("banner");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    auto* const icon = new QLabel;
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(24, 24));
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setAccessibleName(tr("Why the database can't be shown"));
    auto* const layout = new QHBoxLayout(this);
    layout->addWidget(icon, 0, Qt::AlignTop);
    layout->addWidget(label, 1);
    auto* const buttons = new QVBoxLayout;
    layout->addLayout(buttons);
    auto const add = [&](QString const& text, char const* name, auto slot) {
        auto* const button = new QPushButton(text);
        button->setObjectName(name);
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this, slot);
    };
    add(tr("Show &messages"), "showMessages", &Banner::messagesWanted);
    add(tr("&Check this file"), "checkFile", &Banner::checkWanted);
    add(tr("Close"), "closeBanner", &QWidget::hide);
    hide();
}

void Banner::tell(QString const& problem, QString const& stillSeen)
{
    label->setText(stillSeen.isEmpty() ? problem : problem + "\n\n" + stillSeen);
    show();
}

QString Banner::text() const
{
    return label->text();
}
